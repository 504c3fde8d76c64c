#include "ui/teile/Knopf.h"

#include <QPainter>
#include <cmath>
#include <utility>

#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

Knopf::Knopf(QWidget* eltern) : Drueckbar(eltern) {
    setCursor(Qt::ArrowCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Knopf::setzeAussehen(const Aussehen& aussehen) {
    aussehen_ = aussehen;
    setFont(Schrift::mach(aussehen.schriftgroesse, aussehen.staerke, aussehen.sperrung));
    satz_.emplace(font());
    updateGeometry();
    update();
}

void Knopf::setzeSymbole(std::string symbol, std::string schluss) {
    symbol_ = std::move(symbol);
    schluss_ = std::move(schluss);
    updateGeometry();
    update();
}

double Knopf::inhaltsbreite() const {
    double breite = satz_ ? satz_->breite(text()) : 0.0;
    if (!symbol_.empty()) {
        breite += aussehen_.symbolKasten + (text().isEmpty() ? 0 : aussehen_.abstand);
    }
    if (!schluss_.empty()) {
        breite += aussehen_.schlussKasten + aussehen_.schlussAbstand - aussehen_.schlussUeberstand;
    }
    return breite;
}

QSize Knopf::sizeHint() const {
    const double breite = inhaltsbreite() + 2 * aussehen_.rand;
    return {static_cast<int>(std::lround(breite)) + 2 * papier::kRingRand,
            static_cast<int>(std::ceil(aussehen_.hoehe)) + 2 * papier::kRingRand};
}

void Knopf::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    const QRectF kasten = papier::ohneRing(*this);
    if (!isEnabled()) {
        maler.setOpacity(0.45);
    }
    papier::form(maler, kasten, aussehen_.radius, aussehen_.grund, aussehen_.rahmen);
    if (isDown() || istOffen()) {
        papier::form(maler, kasten, aussehen_.radius, aussehen_.gedrueckt, Qt::transparent);
    } else if (underMouse() && isEnabled()) {
        papier::form(maler, kasten, aussehen_.radius, aussehen_.ueberfahren, Qt::transparent);
    }
    double x = kasten.left() + (kasten.width() - inhaltsbreite()) / 2;
    const auto symbol = [&](const std::string& name, double seite, const QColor& farbe) {
        Symbole::zeichne(maler, QRectF(x, kasten.center().y() - seite / 2, seite, seite), name, farbe);
        x += seite;
    };
    if (!symbol_.empty()) {
        symbol(symbol_, aussehen_.symbolKasten, aussehen_.symbolFarbe);
        x += aussehen_.abstand;
    }
    if (satz_) {
        const double textbreite = satz_->breite(text());
        maler.setPen(aussehen_.textFarbe);
        satz_->zeichne(maler, QRectF(x, kasten.top(), textbreite, kasten.height()), Qt::AlignLeft, text());
        x += textbreite + aussehen_.schlussAbstand;
    }
    if (!schluss_.empty()) {
        symbol(schluss_, aussehen_.schlussKasten, aussehen_.schlussFarbe);
    }
    if (hasFocus()) {
        papier::fokusring(maler, kasten, aussehen_.radius, aussehen_.ringAussen);
    }
}

}  // namespace spurkiste
