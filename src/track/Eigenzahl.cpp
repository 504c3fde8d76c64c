#include "track/Eigenzahl.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace spurkiste::eigenzahl::intern {

const char* liesBruch(const char* stelle, std::uint64_t& zahl, unsigned& stellen) {
    constexpr std::uint64_t hoechstens = std::numeric_limits<std::int64_t>::max();
    stellen = 0;
    for (;;) {
        const std::uint64_t acht = lade(stelle);
        const unsigned anzahl = ziffern(acht);
        if (anzahl == 0) {
            return stellen > 0 ? stelle : nullptr;
        }
        if (stellen + anzahl >= kZehn.size() || zahl >= hoechstens / kGanzeZehn[anzahl]) {
            return nullptr;
        }
        zahl = zahl * kGanzeZehn[anzahl] + wert(acht, anzahl);
        stellen += anzahl;
        stelle += anzahl;
        if (anzahl < 8) {
            return stelle;
        }
    }
}

/// The quotient of the upper 53 bits, and what is missing to the exact one as a second double, right to some 2^-100.
/// When that much more or less would not change their sum, the sum is the nearest double.
double teile(std::uint64_t zahl, unsigned stellen) {
    constexpr double unsicherheit = 1.0 / (std::uint64_t{1} << 48U);
    const double teiler = kZehn[stellen];
    const auto oben = static_cast<double>(zahl);
    const auto unten = static_cast<double>(static_cast<std::int64_t>(zahl - static_cast<std::uint64_t>(oben)));
    const double quotient = oben / teiler;
    const double rest = (std::fma(-quotient, teiler, oben) + unten) / teiler;
    const double spanne = std::fabs(rest) * unsicherheit;
    const double kleinster = quotient + (rest - spanne);
    const double groesster = quotient + (rest + spanne);
    return kleinster == groesster ? kleinster : std::numeric_limits<double>::quiet_NaN();
}

const char* liesSeltene(const char* stelle, double& zahl) {
    constexpr int laengste = 30;  // no double takes more characters in its shortest form
    const char* p = stelle + (*stelle == '-' ? 1 : 0);
    const auto ueberspringe = [&p, grenze = stelle + laengste] {
        const char* const anfang = p;
        while (p < grenze && istZiffer(*p)) {
            ++p;
        }
        return p - anfang;
    };
    const char* const ganz = p;
    const auto ganze = ueberspringe();
    if (ganze == 0 || (ganze > 1 && *ganz == '0')) {
        return nullptr;
    }
    bool bruch = false;
    if (*p == '.') {
        ++p;
        bruch = true;
        if (ueberspringe() == 0 || p[-1] == '0') {
            return nullptr;
        }
    }
    if (*p == 'e') {
        ++p;
        bruch = true;
        p += *p == '-' || *p == '+' ? 1 : 0;
        if (ueberspringe() == 0) {
            return nullptr;
        }
    }
    // An integer of more digits may be beyond 64 bits, which is the general reader's affair.
    if ((!bruch && ganze > 18) || istZiffer(*p)) {
        return nullptr;
    }
    double ergebnis = 0.0;
    const auto [ende, fehler] = std::from_chars(stelle, p, ergebnis);
    if (fehler != std::errc() || ende != p) {
        return nullptr;
    }
    zahl = ergebnis;
    return p;
}

}  // namespace spurkiste::eigenzahl::intern
