#include "ui/fenster/Kopf.h"

#include <QHBoxLayout>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 48;
constexpr int kAbstand = 18;

/// Two lines, one above the other, that end so far above the bottom.
QVBoxLayout* spalte(int abstand, int boden, QWidget* oben, QWidget* unten) {
    auto* stapel = new QVBoxLayout;
    stapel->setContentsMargins(0, 0, 0, boden + papier::kRingRand);
    stapel->setSpacing(abstand);
    stapel->addStretch();
    stapel->addWidget(oben);
    stapel->addWidget(unten);
    return stapel;
}

}  // namespace

Kopf::Kopf(QWidget* eltern)
    : QWidget(eltern),
      oben_(new Schild(this)),
      titel_(new Schild(this)),
      sport_(new SportMenue(true, this)),
      zahl_(new Schild(this)),
      summe_(new Schild(this)) {
    setFixedHeight(kHoehe + papier::kRingRand);  // below: the focus ring of the button
    oben_->setText(QStringLiteral("KORVO GPX"));
    oben_->setzeFarbe(KistePapier::goldDunkel);
    titel_->setText(QStringLiteral("Korvo GPX Library"));
    titel_->setzeFarbe(KistePapier::tinte);
    zahl_->setzeFarbe(KistePapier::tinteLeise);
    zahl_->setAlignment(Qt::AlignRight);
    summe_->setzeFarbe(KistePapier::tinte);
    summe_->setAlignment(Qt::AlignRight);
    auto* zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(4, 0, 4, 0);
    zeile->setSpacing(0);
    zeile->addLayout(spalte(2, 1, oben_, titel_));
    zeile->addStretch();
    zeile->addWidget(sport_, 0, Qt::AlignBottom);
    zeile->addSpacing(kAbstand - papier::kRingRand);
    zeile->addLayout(spalte(3, 0, zahl_, summe_));
    sport_->hide();
    connect(sport_, &SportMenue::gewaehlt, this, &Kopf::sportGewaehlt);
    kleide();
}

void Kopf::kleide() {
    oben_->setFont(Schrift::mach(11, QFont::Bold, 3));
    titel_->setFont(Schrift::mach(25, QFont::Bold));
    zahl_->setFont(Schrift::mach(10.5, QFont::Bold, 1.7));
    summe_->setFont(Schrift::mach(20, QFont::DemiBold));
    if (eintrag_) {
        sport_->zeige(eintrag_);
    }
}

void Kopf::zeigeSport(const Eintrag& eintrag) {
    if (eintrag != eintrag_) {
        eintrag_ = eintrag;
        if (eintrag_) {
            sport_->zeige(eintrag_);
        }
        sport_->setVisible(eintrag_ != nullptr);
    }
}

void Kopf::zeige(const QString& zahl, const QString& summe) {
    zahl_->setText(zahl);
    summe_->setText(summe);
}

}  // namespace spurkiste
