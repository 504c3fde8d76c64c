#include "sicht/SkizzenGeometrie.h"

#include <algorithm>
#include <cmath>

namespace spurkiste {

namespace {

constexpr double kEinOrt = 1e-7;  // degrees: less is no extent
constexpr double kSpanne = 1e-9;  // the least extent to divide by

double inGrenzen(double wert) {
    return std::isfinite(wert) ? std::clamp(wert, -SkizzenGeometrie::kGrenze, SkizzenGeometrie::kGrenze) : 0.0;
}

}  // namespace

void SkizzenGeometrie::passeEin(const Skizze::Punkte& punkte, double breite, double hoehe) {
    sueden_ = punkte.front().breite;
    westen_ = punkte.front().laenge;
    double norden = sueden_;
    double osten = westen_;
    for (const Koordinate ort : punkte) {
        sueden_ = std::min(sueden_, ort.breite);
        norden = std::max(norden, ort.breite);
        westen_ = std::min(westen_, ort.laenge);
        osten = std::max(osten, ort.laenge);
    }
    const double hoch = norden - sueden_;
    const double weit = osten - westen_;
    if (weit < kEinOrt && hoch < kEinOrt) {
        fleck_ = Punkt{breite / 2, hoehe / 2};
        return;
    }
    hoehe_ = hoehe;
    kosinus_ = std::cos(bogenmass((sueden_ + norden) / 2));
    const double spanneX = std::max(weit * kosinus_, kSpanne);
    const double spanneY = std::max(hoch, kSpanne);
    massstab_ = std::min(std::max(breite - 2 * kRand, 0.0) / spanneX, std::max(hoehe - 2 * kRand, 0.0) / spanneY);
    links_ = (breite - spanneX * massstab_) / 2;
    unten_ = (hoehe - spanneY * massstab_) / 2;
}

SkizzenGeometrie::Punkt SkizzenGeometrie::bild(const Koordinate& ort) const {
    return {inGrenzen(links_ + massstab_ * kosinus_ * (ort.laenge - westen_)),
            inGrenzen((hoehe_ - unten_) - massstab_ * (ort.breite - sueden_))};
}

SkizzenGeometrie SkizzenGeometrie::berechne(const GpxMetadaten& eintrag, double breite, double hoehe) {
    SkizzenGeometrie geometrie;
    if (eintrag.skizze.punkte().empty()) {
        return geometrie;
    }
    geometrie.passeEin(eintrag.skizze.punkte(), breite, hoehe);
    if (geometrie.fleck_) {
        return geometrie;
    }
    geometrie.linien_ = eintrag.skizze;
    const auto marke = [&](const std::optional<Koordinate>& ort) {
        return ort ? std::optional(geometrie.bild(*ort)) : std::nullopt;
    };
    geometrie.start_ = marke(eintrag.start);
    geometrie.ende_ = marke(eintrag.ende);
    return geometrie;
}

}  // namespace spurkiste
