#include "places/Zelle.h"

#include <cmath>

namespace spurkiste {

std::optional<Zelle> Zelle::von(const Koordinate& lage) {
    constexpr double grenze = 9.2e18;  // 2^63 less some room for the cells around
    const double zeile = (lage.breite + 90.0) * 10.0;
    const double spalte = (lage.laenge + 180.0) * 10.0;
    if (!(std::fabs(zeile) < grenze && std::fabs(spalte) < grenze)) {
        return std::nullopt;
    }
    const Zelle zelle{static_cast<std::int64_t>(zeile), static_cast<std::int64_t>(spalte)};
    for (const std::int64_t rand : {-kUmkreis, kUmkreis}) {
        std::int64_t nummer = 0;
        if (__builtin_mul_overflow(zelle.zeile + rand, kSpalten, &nummer) ||
            __builtin_add_overflow(nummer, zelle.spalte + rand, &nummer)) {
            return std::nullopt;
        }
    }
    return zelle;
}

}  // namespace spurkiste
