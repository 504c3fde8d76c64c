#include "ui/detail/SkizzenAnsicht.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <cmath>

#include "ui/detail/KistePapier.h"
#include "ui/detail/Papier.h"
#include "ui/detail/Schatten.h"
#include "ui/detail/Schrift.h"
#include "ui/detail/SkizzenGeometrie.h"
#include "ui/detail/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kRadius = 17;
constexpr double kInnen = 10;  // from the card's edge to the drawing surface

QPointF alsPunkt(const SkizzenGeometrie::Punkt& punkt) {
    return {punkt.x, punkt.y};
}

/// All lines as one polygon with gaps would be simpler, but joining is what must not happen.
QPainterPath alsPfad(const SkizzenGeometrie& geometrie) {
    QPainterPath pfad;
    for (const auto& linie : geometrie.linien) {
        pfad.moveTo(alsPunkt(linie.front()));
        for (std::size_t i = 1; i < linie.size(); ++i) {
            pfad.lineTo(alsPunkt(linie[i]));
        }
    }
    return pfad;
}

void punkt(QPainter& maler, const SkizzenGeometrie::Punkt& mitte, double durchmesser, const QColor& farbe) {
    maler.setPen(Qt::NoPen);
    maler.setBrush(farbe);
    maler.drawEllipse(alsPunkt(mitte), durchmesser / 2, durchmesser / 2);
}

void endpunkt(QPainter& maler, const std::optional<SkizzenGeometrie::Punkt>& mitte, const QColor& farbe) {
    constexpr double durchmesser = 8;
    if (mitte) {
        maler.setPen(QPen(Qt::white, 1));
        maler.setBrush(farbe);
        maler.drawEllipse(alsPunkt(*mitte), durchmesser / 2, durchmesser / 2);
    }
}

void linie(QPainter& maler, const QPainterPath& pfad, const QColor& farbe, double breite) {
    maler.strokePath(pfad, QPen(farbe, breite, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace

SkizzenAnsicht::SkizzenAnsicht(QWidget* eltern) : QWidget(eltern) {
    setFixedHeight(kHoehe);
    setToolTip(QStringLiteral("Start grün, Ziel rot"));
}

void SkizzenAnsicht::zeige(const Eintrag& eintrag) {
    if (eintrag_ != eintrag) {
        eintrag_ = eintrag;
        setAccessibleName(eintrag && eintrag->rundkurs ? QStringLiteral("RUNDKURS") : QStringLiteral("STRECKE"));
        setAccessibleDescription(toolTip());
        bild_ = {};
        update();
    }
}

void SkizzenAnsicht::zeichneSchatten(QPainter& maler, const QRect& karte) {
    Schatten{KistePapier::mitDeckkraft(Qt::black, 0.05), 10, 3}.zeichne(maler, karte, kRadius);
}

void SkizzenAnsicht::paintEvent(QPaintEvent* /*ereignis*/) {
    const double verhaeltnis = devicePixelRatioF();
    const QSize geraet = (QSizeF(size()) * verhaeltnis).toSize();
    if (bild_.size() != geraet) {  // painting a long track takes longer than scrolling may
        bild_ = QPixmap(geraet);
        bild_.setDevicePixelRatio(verhaeltnis);
        bild_.fill(Qt::transparent);
        QPainter maler(&bild_);
        male(maler);
    }
    QPainter(this).drawPixmap(0, 0, bild_);
}

void SkizzenAnsicht::male(QPainter& maler) const {
    maler.setRenderHint(QPainter::Antialiasing);
    papier::form(maler, karte(), kRadius, KistePapier::eierschale, KistePapier::mitDeckkraft(KistePapier::gold, 0.48));
    if (!eintrag_) {
        return;
    }
    const QRectF flaeche = karte().adjusted(kInnen, kInnen, -kInnen, -kInnen);
    const auto geometrie = SkizzenGeometrie::berechne(*eintrag_, flaeche.width(), flaeche.height());
    maler.save();
    maler.setClipRect(flaeche);
    maler.translate(flaeche.topLeft());
    if (geometrie.fleck) {
        punkt(maler, *geometrie.fleck, 6, KistePapier::gold);
    } else {
        const QPainterPath pfad = alsPfad(geometrie);
        linie(maler, pfad, KistePapier::mitDeckkraft(Qt::white, 0.84), 5);
        linie(maler, pfad, KistePapier::gold, 2.4);
        for (const auto& einzelner : geometrie.einzelne) {
            punkt(maler, einzelner, 4, KistePapier::gold);
        }
        endpunkt(maler, geometrie.start, KistePapier::gruen);
        endpunkt(maler, geometrie.ende, KistePapier::rot);
    }
    maler.restore();
    maleMarke(maler);
}

void SkizzenAnsicht::maleMarke(QPainter& maler) const {
    constexpr double einzug = 12;
    constexpr double hoehe = 25;
    constexpr double rand = 10;
    constexpr double abstand = 6;
    constexpr double symbol = 13;
    const QFont schrift = Schrift::mach(9.5, QFont::Bold, 1.3);
    const double textbreite = QFontMetricsF(schrift).horizontalAdvance(accessibleName()) - schrift.letterSpacing();
    const QRectF kapsel(einzug, einzug, std::ceil(2 * rand + symbol + abstand + textbreite), hoehe);
    papier::form(maler, kapsel, hoehe / 2, KistePapier::mitDeckkraft(KistePapier::karte, 0.88), Qt::transparent);
    Symbole::zeichne(maler, QRectF(kapsel.left() + rand, kapsel.center().y() - symbol / 2, symbol, symbol), "map",
                     KistePapier::goldDunkel);
    maler.setFont(schrift);
    maler.setPen(KistePapier::goldDunkel);
    maler.drawText(QRectF(kapsel.left() + rand + symbol + abstand, kapsel.top(), textbreite + rand, hoehe),
                   Qt::AlignLeft | Qt::AlignVCenter, accessibleName());
}

}  // namespace spurkiste
