#include "ui/fenster/Statusleiste.h"

#include <QHBoxLayout>
#include <QPainter>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kHoehe = 34;
constexpr int kRand = 14;
constexpr int kAbstand = 10;
constexpr int kSymbol = 17;
constexpr int kVorDemPfad = 24;

}  // namespace

Statusleiste::Statusleiste(QWidget* eltern)
    : QWidget(eltern),
      dateien_(new Schild(this)),
      summe_(new Schild(this)),
      ring_(new Ladering(this)),
      hinweis_(new Hinweiszeile(this)),
      leise_(new Leisezeile(this)),
      ordner_(new Schild(this)) {
    setFixedHeight(kHoehe);
    dateien_->setzeFarbe(KistePapier::tinte);
    summe_->setzeFarbe(KistePapier::tinteLeise);
    ring_->hide();
    ordner_->setzeFarbe(KistePapier::gravur);
    ordner_->setzeKuerzung(Qt::ElideLeft);
    ordner_->setAlignment(Qt::AlignRight);
    auto* zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(kRand + kSymbol + kAbstand, 0, kRand, 0);
    zeile->setSpacing(kAbstand);
    zeile->addWidget(dateien_);
    zeile->addWidget(summe_);
    zeile->addWidget(ring_);
    zeile->addWidget(hinweis_);
    zeile->addWidget(leise_);
    zeile->addSpacing(kVorDemPfad - kAbstand);
    zeile->addWidget(ordner_, 1);
    kleide();
}

void Statusleiste::kleide() {
    const QFont schrift = Schrift::mach(11.5, QFont::Medium);
    for (Schild* schild : {dateien_, summe_, ordner_}) {
        schild->setFont(schrift);
    }
    hinweis_->kleide(schrift);
    leise_->kleide(schrift);
}

void Statusleiste::zeigeZahlen(const QString& dateien, const QString& summe) {
    dateien_->setText(dateien);
    summe_->setText(summe);
}

void Statusleiste::zeigeLaden(bool laedt, std::size_t ausstehend) {
    ring_->setVisible(laedt);
    const QString text = QStringLiteral("Noch %1 Dateien zu lesen").arg(ausstehend);
    if (ring_->toolTip() != text) {  // else a screen reader is told of each refresh
        ring_->setToolTip(text);
        ring_->setAccessibleName(text);
    }
}

void Statusleiste::zeigeHinweis(const QString& hinweis, bool erneut) {
    hinweis_->zeige(hinweis, erneut);
}

void Statusleiste::zeigeOrdner(const QString& ordner) {
    ordner_->setText(ordner);
    setzeKurzhilfe(*ordner_, ordner);
}

void Statusleiste::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::buehne);
    maler.fillRect(rect(), KistePapier::mitDeckkraft(KistePapier::karte, 0.98));
    maler.fillRect(QRect(0, 0, width(), 1), KistePapier::linie);
    Symbole::zeichne(maler, QRectF(kRand, (kHoehe - kSymbol) / 2.0, kSymbol, kSymbol), "books.vertical",
                     KistePapier::goldDunkel);
}

}  // namespace spurkiste
