#include "ui/teile/SportKapsel.h"

#include <QPen>
#include <algorithm>
#include <cmath>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

// Logical pixels. The small icons have a margin of their own, so their boxes stand out over their place.
constexpr double kRand = 8.0;
constexpr double kAbstand = 5.0;
constexpr double kSymbol = 13.5;
constexpr double kStab = 11.0;
constexpr double kStabKasten = 13.0;
constexpr double kWinkel = 9.0;
constexpr double kWinkelKasten = 11.0;
constexpr double kSchrift = 11.5;

/// What of the width is not text.
double drumherum(const SportKapsel::Inhalt& inhalt) {
    return kRand + (inhalt.symbol.empty() ? 0.0 : kSymbol + kAbstand) + (inhalt.ausDatei ? 0.0 : kAbstand + kStab) +
           kAbstand + kWinkel + kRand;
}

QPixmap maleGrund(double breite, const QColor& farbe, double verhaeltnis) {
    const auto geraet = [&](double wert) { return static_cast<int>(std::lround(wert * verhaeltnis)); };
    QPixmap grund(geraet(breite), geraet(SportKapsel::kHoehe));
    grund.setDevicePixelRatio(verhaeltnis);
    grund.fill(Qt::transparent);
    QPainter maler(&grund);
    papier::form(maler, QRectF(0, 0, breite, SportKapsel::kHoehe), SportKapsel::kHoehe / 2,
                 KistePapier::mitDeckkraft(farbe, 0.11), KistePapier::mitDeckkraft(farbe, 0.42));
    return grund;
}

}  // namespace

SportKapsel::SportKapsel() : satz_(Schrift::mach(kSchrift, QFont::DemiBold), kSchrift) {}

double SportKapsel::breite(const Inhalt& inhalt, double hoechstens) {
    return std::min(hoechstens, drumherum(inhalt) + satz_.breite(inhalt.text));
}

void SportKapsel::zeichne(QPainter& maler, double links, double oben, const Inhalt& inhalt, double hoechstens) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const auto rund = [&](double wert) { return std::round(wert * verhaeltnis) / verhaeltnis; };
    const double x = rund(links);
    const double y = rund(oben);
    const double weite = breite(inhalt, hoechstens);
    const double grundweite = rund(weite);
    maler.drawPixmap(QPointF(x, y), bilder_.hole({"grund", grundweite, inhalt.farbe.rgba(), verhaeltnis},
                                                 [&] { return maleGrund(grundweite, inhalt.farbe, verhaeltnis); }));

    const QColor& textfarbe = inhalt.ausDatei ? KistePapier::tinte : KistePapier::tinteLeise;
    double stelle = x + kRand;
    const auto kasten = [&](double platz, double breite) {
        return QRectF(stelle + (platz - breite) / 2, y, breite, kHoehe);
    };
    if (!inhalt.symbol.empty()) {
        bilder_.zeichneSymbol(maler, kasten(kSymbol, kSymbol), inhalt.symbol, textfarbe);
        stelle += kSymbol + kAbstand;
    }
    static const QPen kTinte(KistePapier::tinte);
    static const QPen kLeise(KistePapier::tinteLeise);
    maler.setPen(inhalt.ausDatei ? kTinte : kLeise);
    const double textweite = weite - drumherum(inhalt);
    satz_.zeichne(maler, QRectF(stelle, y, textweite, kHoehe), Qt::AlignLeft, inhalt.text);
    stelle += textweite + kAbstand;
    if (!inhalt.ausDatei) {
        bilder_.zeichneSymbol(maler, kasten(kStab, kStabKasten), "wand.and.stars", KistePapier::gravur);
        stelle += kStab + kAbstand;
    }
    bilder_.zeichneSymbol(maler, kasten(kWinkel, kWinkelKasten), "chevron.down", KistePapier::gravur);
}

}  // namespace spurkiste
