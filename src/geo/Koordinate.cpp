#include "geo/Koordinate.h"

#include <algorithm>
#include <cmath>

namespace spurkiste {

double entfernungMitKosinus(const Koordinate& a, double kosinusA, const Koordinate& b, double kosinusB) {
    const double x = std::sin((bogenmass(b.breite) - bogenmass(a.breite)) / 2.0);
    const double y = std::sin(bogenmass(b.laenge - a.laenge) / 2.0);
    const double h = x * x + kosinusA * kosinusB * y * y;
    return kErddurchmesser * std::asin(std::min(std::sqrt(h), 1.0));
}

double entfernung(const Koordinate& a, const Koordinate& b) {
    return entfernungMitKosinus(a, std::cos(bogenmass(a.breite)), b, std::cos(bogenmass(b.breite)));
}

}  // namespace spurkiste
