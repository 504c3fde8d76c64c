#include "ui/detail/SkizzenGeometrie.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace spurkiste {

namespace {

using Punkt = SkizzenGeometrie::Punkt;

constexpr double kEinOrt = 1e-7;  // degrees: less is no extent
constexpr double kSpanne = 1e-9;  // the least extent to divide by

double inGrenzen(double wert) {
    return std::isfinite(wert) ? std::clamp(wert, -SkizzenGeometrie::kGrenze, SkizzenGeometrie::kGrenze) : 0.0;
}

/// How coordinates map to the surface.
class Abbildung {
  public:
    Abbildung(std::span<const Koordinate> punkte, double breite, double hoehe) : hoehe_(hoehe) {
        const auto [suedlichster, noerdlichster] = std::minmax_element(
            punkte.begin(), punkte.end(), [](const auto& a, const auto& b) { return a.breite < b.breite; });
        const auto [westlichster, oestlichster] = std::minmax_element(
            punkte.begin(), punkte.end(), [](const auto& a, const auto& b) { return a.laenge < b.laenge; });
        sueden_ = suedlichster->breite;
        westen_ = westlichster->laenge;
        const double hoch = noerdlichster->breite - sueden_;
        const double weit = oestlichster->laenge - westen_;
        istEinOrt_ = weit < kEinOrt && hoch < kEinOrt;
        kosinus_ = std::cos(bogenmass((sueden_ + noerdlichster->breite) / 2));
        const double spanneX = std::max(weit * kosinus_, kSpanne);
        const double spanneY = std::max(hoch, kSpanne);
        massstab_ = std::min(std::max(breite - 2 * SkizzenGeometrie::kRand, 0.0) / spanneX,
                             std::max(hoehe - 2 * SkizzenGeometrie::kRand, 0.0) / spanneY);
        links_ = (breite - spanneX * massstab_) / 2;
        unten_ = (hoehe - spanneY * massstab_) / 2;
    }

    [[nodiscard]] bool istEinOrt() const { return istEinOrt_; }

    [[nodiscard]] Punkt bild(const Koordinate& ort) const {
        return {inGrenzen(links_ + massstab_ * kosinus_ * (ort.laenge - westen_)),
                inGrenzen((hoehe_ - unten_) - massstab_ * (ort.breite - sueden_))};
    }

  private:
    double hoehe_;
    double sueden_ = 0;
    double westen_ = 0;
    double kosinus_ = 1;
    double massstab_ = 0;
    double links_ = 0;
    double unten_ = 0;
    bool istEinOrt_ = false;
};

}  // namespace

SkizzenGeometrie SkizzenGeometrie::berechne(const GpxMetadaten& eintrag, double breite, double hoehe) {
    const Skizze& skizze = eintrag.skizze;
    SkizzenGeometrie geometrie;
    if (skizze.punkte().empty()) {
        return geometrie;
    }
    const Abbildung abbildung(skizze.punkte(), breite, hoehe);
    if (abbildung.istEinOrt()) {
        geometrie.fleck = Punkt{breite / 2, hoehe / 2};
        return geometrie;
    }
    geometrie.punkte.reserve(skizze.punkte().size());
    for (const Koordinate& ort : skizze.punkte()) {
        geometrie.punkte.push_back(abbildung.bild(ort));
    }
    std::size_t anfang = 0;
    for (std::size_t nummer = 0; nummer < skizze.linien(); ++nummer) {
        const auto linie = std::span(std::as_const(geometrie.punkte)).subspan(anfang, skizze.linie(nummer).size());
        anfang += linie.size();
        if (!linie.empty()) {
            (linie.size() == 1 ? geometrie.einzelne : geometrie.linien).push_back(linie);
        }
    }
    const auto marke = [&](const std::optional<Koordinate>& ort) {
        return ort ? std::optional(abbildung.bild(*ort)) : std::nullopt;
    };
    geometrie.start = marke(eintrag.start);
    geometrie.ende = marke(eintrag.ende);
    return geometrie;
}

}  // namespace spurkiste
