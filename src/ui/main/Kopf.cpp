#include "ui/main/Kopf.h"

#include <QHBoxLayout>

#include "ui/detail/KistePapier.h"
#include "ui/detail/Schrift.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 48;

QVBoxLayout* spalte(int abstand, QWidget* oben, QWidget* unten) {
    auto* stapel = new QVBoxLayout;
    stapel->setContentsMargins(0, 0, 0, 0);
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
      zahl_(new Schild(this)),
      summe_(new Schild(this)) {
    setFixedHeight(kHoehe);
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
    zeile->setSpacing(18);
    zeile->addLayout(spalte(4, oben_, titel_));
    zeile->addStretch();
    zeile->addLayout(spalte(3, zahl_, summe_));
    kleide();
}

void Kopf::kleide() {
    oben_->setFont(Schrift::mach(11, QFont::Bold, 3));
    titel_->setFont(Schrift::mach(25, QFont::Bold));
    zahl_->setFont(Schrift::mach(10.5, QFont::Bold, 1.7));
    summe_->setFont(Schrift::mach(20, QFont::DemiBold));
}

void Kopf::zeige(const QString& zahl, const QString& summe) {
    zahl_->setText(zahl);
    summe_->setText(summe);
}

}  // namespace spurkiste
