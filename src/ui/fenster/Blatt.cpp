#include "ui/fenster/Blatt.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schatten.h"
#include "ui/teile/Schild.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

constexpr int kOben = 150;
constexpr int kRand = 24;
constexpr int kRadius = 16;
constexpr int kAbstand = 16;
constexpr int kRing = papier::kRingRand;

Schild* zeile(const QString& text, const QFont& schrift, const QColor& farbe) {
    auto* schild = new Schild;
    schild->setText(text);
    schild->setFont(schrift);
    schild->setzeFarbe(farbe);
    return schild;
}

Knopf* knopf(const QString& beschriftung, double hoehe, const QColor& text, const QColor& grund, const QColor& rahmen,
             QFont::Weight staerke) {
    Knopf::Aussehen aussehen;
    aussehen.hoehe = hoehe;
    aussehen.radius = hoehe / 2.0;
    aussehen.rand = 16;
    aussehen.schriftgroesse = 12.5;
    aussehen.staerke = staerke;
    aussehen.textFarbe = text;
    aussehen.grund = grund;
    aussehen.ringAussen = grund == KistePapier::goldDunkel;
    aussehen.rahmen = rahmen;
    aussehen.ueberfahren = KistePapier::mitDeckkraft(KistePapier::tinte, 0.04);
    aussehen.gedrueckt = KistePapier::mitDeckkraft(KistePapier::tinte, 0.08);
    auto* neuer = new Knopf;
    neuer->setText(beschriftung);
    neuer->setzeAussehen(aussehen);
    return neuer;
}

}  // namespace

Blatt::Blatt(const QString& titel, QWidget* eltern) : QDialog(eltern), blatt_(new QWidget(this)) {
    setWindowFlags(Qt::Widget);  // the constructor would make a window of it whatever it is told
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(titel);
    setAccessibleName(titel);
}

Knopf* Blatt::leiserKnopf(const QString& text) {
    return knopf(text, kFeldHoehe, KistePapier::tinte, KistePapier::mitDeckkraft(KistePapier::kapsel, 0.72),
                 KistePapier::mitDeckkraft(KistePapier::linie, 0.72), QFont::DemiBold);
}

Knopf* Blatt::wichtigerKnopf(const QString& text) {
    return knopf(text, kFeldHoehe, Qt::white, KistePapier::goldDunkel, Qt::transparent, QFont::Bold);
}

void Blatt::legeAus(const std::vector<QWidget*>& stuecke, const std::vector<Knopf*>& knoepfe, int breite) {
    auto* ueberschrift = new QVBoxLayout;
    ueberschrift->setSpacing(6);
    ueberschrift->addWidget(
        zeile(QStringLiteral("KORVO GPX"), Schrift::mach(10.5, QFont::Bold, 2.8), KistePapier::goldDunkel));
    ueberschrift->addWidget(zeile(windowTitle(), Schrift::mach(22, QFont::Bold), KistePapier::tinte));
    ueberschrift->setContentsMargins(kRing, 0, kRing, kRing);
    auto* fuss = new QHBoxLayout;
    fuss->setSpacing(10 - 2 * kRing);
    fuss->addStretch(1);
    auto* stapel = new QVBoxLayout(blatt_);
    stapel->setContentsMargins(kRand - kRing, kRand - 1, kRand - kRing, kRand - kRing);
    stapel->setSpacing(kAbstand - 2 * kRing);
    stapel->addLayout(ueberschrift);
    for (QWidget* stueck : stuecke) {
        stapel->addWidget(stueck);
        reihe_.push_back(stueck);
    }
    for (Knopf* einer : knoepfe) {
        fuss->addWidget(einer);
        reihe_.push_back(einer);
    }
    stapel->addLayout(fuss);
    auto* seite = new QVBoxLayout(this);
    seite->setContentsMargins(0, kOben, 0, 0);
    blatt_->setFixedWidth(breite);
    seite->addWidget(blatt_, 0, Qt::AlignHCenter | Qt::AlignTop);
    std::erase_if(reihe_, [](const QWidget* stueck) { return stueck->focusPolicy() == Qt::NoFocus; });
}

void Blatt::zeigeMit(QWidget* fokus) {
    parentWidget()->installEventFilter(this);
    setGeometry(parentWidget()->rect());
    raise();
    show();
    fokus->setFocus();
}

bool Blatt::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (quelle == parent() && ereignis->type() == QEvent::Resize) {
        setGeometry(parentWidget()->rect());
    }
    return QDialog::eventFilter(quelle, ereignis);
}

/// A high sheet in a low window stands higher.
void Blatt::resizeEvent(QResizeEvent* ereignis) {
    const int hoehe = blatt_->layout()->totalHeightForWidth(blatt_->width());
    const int karte = hoehe < 0 ? blatt_->sizeHint().height() : hoehe;
    layout()->setContentsMargins(0, std::clamp((height() - karte) / 2, 0, kOben), 0, 0);
    QDialog::resizeEvent(ereignis);
}

bool Blatt::focusNextPrevChild(bool weiter) {
    // Round and round inside the sheet: what lies below it cannot be used now.
    const auto hier = std::find(reihe_.begin(), reihe_.end(), focusWidget());
    auto stelle = static_cast<std::size_t>(hier - reihe_.begin()) % reihe_.size();
    do {
        stelle = (stelle + (weiter ? 1 : reihe_.size() - 1)) % reihe_.size();
    } while (!reihe_.at(stelle)->isEnabled());
    reihe_.at(stelle)->setFocus(weiter ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

void Blatt::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.fillRect(rect(), KistePapier::mitDeckkraft(KistePapier::tinte, 0.16));
    Schatten{KistePapier::mitDeckkraft(Qt::black, 0.16), 15, 10}.zeichne(maler, blatt_->geometry(), kRadius);
    papier::form(maler, blatt_->geometry(), kRadius, KistePapier::buehne,
                 KistePapier::mitDeckkraft(KistePapier::linie, 0.78));
}

}  // namespace spurkiste
