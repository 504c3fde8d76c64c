#include "ui/detail/Kachel.h"

#include <QPainter>
#include <QVBoxLayout>
#include <cmath>

#include "base/Text.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Symbole.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kMindesthoehe = 76;
constexpr int kRand = 12;
constexpr int kAbstand = 6;
constexpr int kTitelhoehe = 14;
constexpr int kWertschrift = 19;
constexpr int kWerthoehe = 23;
constexpr double kWertgrundlinie = 17;
constexpr int kLuftOben = 6;  // above and below the line of the value, for what stands out of it in some scripts
constexpr int kLuftUnten = 4;
constexpr int kZeilenhoehe = kLuftOben + kWerthoehe + kLuftUnten;
constexpr double kRadius = 13;
constexpr double kSymbol = 14.5;

}  // namespace

Kachel::Kachel(QWidget* eltern)
    : QWidget(eltern),
      titel_(new Schild(this)),
      wert_(new Absatz(KistePapier::tinte, true, this, {kZeilenhoehe, kLuftOben + kWertgrundlinie})),
      zusatz_(new Schild(this)) {
    setMinimumHeight(kMindesthoehe);
    titel_->setzeFarbe(KistePapier::goldDunkel);
    titel_->setzeKuerzung(Qt::ElideRight);
    zusatz_->setzeFarbe(KistePapier::tinteLeise);
    zusatz_->setzeKuerzung(Qt::ElideRight);
    titel_->setFixedHeight(kTitelhoehe);
    wert_->setFixedHeight(kZeilenhoehe);
    auto* stapel = new QVBoxLayout(this);
    stapel->setContentsMargins(kRand, kRand, kRand, kRand - kLuftUnten);
    stapel->setSpacing(kAbstand - kLuftOben);
    stapel->addStretch();
    stapel->addWidget(titel_);
    stapel->addWidget(wert_);
    stapel->addWidget(zusatz_);
    stapel->addStretch();
    zusatz_->setContentsMargins(0, kLuftOben - kLuftUnten, 0, kLuftUnten);
    titel_->setContentsMargins(0, 0, static_cast<int>(kSymbol) + kAbstand, 0);
    kleide();
}

void Kachel::kleide() {
    titel_->setFont(Schrift::mach(9.5, QFont::Bold, 1.3));
    wert_->setFont(Schrift::mach(kWertschrift, QFont::DemiBold));
    zusatz_->setFont(Schrift::mach(9.5, QFont::Medium));
    kuerze();
}

void Kachel::zeige(const DetailTexte::Kachel& kachel) {
    titel_->setText(alsText(kachel.titel));
    ganzerWert_ = alsText(text::einzeilig(kachel.wert));
    zusatz_->setText(alsText(text::einzeilig(kachel.zusatz)));
    zusatz_->setVisible(!kachel.zusatz.empty());
    kuerze();
    setAccessibleName(titel_->text() + QStringLiteral(": ") + ganzerWert_);
    setAccessibleDescription(zusatz_->text());
    symbol_ = kachel.symbol;
    update();
}

void Kachel::resizeEvent(QResizeEvent* ereignis) {
    QWidget::resizeEvent(ereignis);
    kuerze();
}

void Kachel::kuerze() {
    const double platz = width() - 2 * kRand;
    const QString gekuerzt = Schriftsatz(wert_->font()).gekuerzt(ganzerWert_, platz);
    wert_->zeige(gekuerzt);
    setzeKurzhilfe(*wert_, gekuerzt == ganzerWert_ ? QString() : ganzerWert_);
    const bool passt = zusatz_->textbreite() <= platz;
    setzeKurzhilfe(*zusatz_, passt ? QString() : zusatz_->text());
}

void Kachel::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    papier::form(maler, rect(), kRadius, KistePapier::karte, KistePapier::mitDeckkraft(KistePapier::linie, 0.72));
    const double mitte = titel_->geometry().center().y() + 0.5;
    Symbole::zeichne(maler, QRectF(width() - kRand - std::ceil(kSymbol), mitte - kSymbol / 2, kSymbol, kSymbol),
                     symbol_, KistePapier::goldDunkel);
}

}  // namespace spurkiste
