#include "ui/detail/DetailKarte.h"

#include <QPainter>
#include <QVBoxLayout>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kRand = 13;
constexpr int kAbstand = 9;
constexpr double kRadius = 14;
constexpr int kSchildbreite = 72;
constexpr int kBisZumWert = 8;

}  // namespace

DetailKarte::DetailKarte(std::size_t zeilen, QWidget* element, QWidget* eltern)
    : QWidget(eltern), titel_(new Schild(this)), strich_(new QWidget(this)), reihen_(new QGridLayout) {
    titel_->setzeFarbe(KistePapier::goldDunkel);
    strich_->setFixedHeight(1);
    reihen_->setHorizontalSpacing(kBisZumWert);
    reihen_->setVerticalSpacing(kAbstand);
    reihen_->setColumnMinimumWidth(0, kSchildbreite);
    reihen_->setColumnStretch(1, 1);
    if (element != nullptr) {  // before the rows, as it is read
        elementSchild_ = neuesSchild();
        element->setParent(this);
    }
    for (std::size_t i = 0; i < zeilen; ++i) {
        const int reihe = static_cast<int>(i);
        schilder_.push_back(neuesSchild());
        werte_.push_back(new Absatz(KistePapier::tinte, true, this));
        reihen_->addWidget(schilder_.back(), reihe, 0, Qt::AlignTop);
        reihen_->addWidget(werte_.back(), reihe, 1, Qt::AlignTop);
    }
    auto* stapel = new QVBoxLayout(this);
    stapel->setContentsMargins(kRand, kRand, kRand, kRand);
    stapel->setSpacing(0);
    stapel->addWidget(titel_);
    stapel->addSpacing(kAbstand);
    stapel->addWidget(strich_);
    if (element != nullptr) {
        const int ring = papier::kRingRand;  // the element keeps it free around itself
        auto* reihe = new QHBoxLayout;
        reihe->setSpacing(0);
        reihe->addWidget(elementSchild_);
        reihe->addSpacing(kBisZumWert - ring);
        reihe->addWidget(element);
        reihe->addStretch();
        stapel->addSpacing(kAbstand - ring);
        stapel->addLayout(reihe);
        stapel->addSpacing(kAbstand - ring);
    } else {
        stapel->addSpacing(kAbstand);
    }
    stapel->addLayout(reihen_);
    kleide();
}

Absatz* DetailKarte::neuesSchild() {
    auto* schild = new Absatz(KistePapier::tinteLeise, false, this);
    schild->setFixedWidth(kSchildbreite);
    return schild;
}

void DetailKarte::kleide() {
    titel_->setFont(Schrift::mach(10, QFont::Bold, 1.8));
    const QFont schrift = Schrift::mach(12.5, QFont::Medium);
    for (const auto* gruppe : {&schilder_, &werte_}) {
        for (Absatz* zeile : *gruppe) {
            zeile->setFont(schrift);
        }
    }
    if (elementSchild_ != nullptr) {
        elementSchild_->setFont(schrift);
    }
}

void DetailKarte::zeige(const QString& titel, std::span<const DetailTexte::Zeile> zeilen,
                        const QString& elementSchild) {
    titel_->setText(titel);
    setAccessibleName(titel);
    if (elementSchild_ != nullptr) {
        elementSchild_->zeige(elementSchild);
    }
    for (std::size_t i = 0; i < zeilen.size(); ++i) {
        schilder_[i]->zeige(alsText(zeilen[i].schild));
        werte_[i]->zeige(alsText(zeilen[i].wert));
        werte_[i]->setAccessibleName(alsText(zeilen[i].vorlesetext));
        werte_[i]->setAccessibleDescription(alsText(zeilen[i].schild));
    }
}

void DetailKarte::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    papier::form(maler, rect(), kRadius, KistePapier::karte, KistePapier::mitDeckkraft(KistePapier::linie, 0.72));
    maler.fillRect(strich_->geometry(), KistePapier::linie);
}

}  // namespace spurkiste
