#include "base/Zahl.h"

#include <cassert>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace spurkiste::zahl {

namespace {

/// Writes ganzzahl / 10^7 in decimal digits at the end of the buffer, without closing zeros, and returns the text.
std::string_view schreibeMitSiebenStellen(long long ganzzahl, Puffer& puffer) {
    const bool negativ = ganzzahl < 0;
    auto rest = static_cast<unsigned long long>(negativ ? -ganzzahl : ganzzahl);
    char* const grenze = puffer.data() + puffer.size();
    char* ziffer = grenze;
    bool bruch = false;
    for (int stelle = 0; stelle < 7; ++stelle, rest /= 10) {
        const auto z = static_cast<char>('0' + rest % 10);
        if (bruch || z != '0') {
            *--ziffer = z;
            bruch = true;
        }
    }
    if (bruch) {
        *--ziffer = '.';
    }
    do {
        *--ziffer = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest != 0);
    if (negativ) {
        *--ziffer = '-';
    }
    return {ziffer, static_cast<std::size_t>(grenze - ziffer)};
}

}  // namespace

std::optional<double> lies(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-')) {
            return std::nullopt;
        }
    }
    double wert = 0.0;
    const char* ende = text.data() + text.size();
    const auto [stelle, fehler] = std::from_chars(text.data(), ende, wert, std::chars_format::general);
    if (fehler != std::errc() || stelle != ende || !std::isfinite(wert)) {
        return std::nullopt;
    }
    return wert;
}

std::string fest(double wert, int stellen) {
    assert(std::isfinite(wert) && stellen >= 0 && stellen <= 20);
    std::array<char, 352> puffer{};  // 309 digits of the largest double, sign, point, 20 decimals
    const auto [ende, fehler] =
        std::to_chars(puffer.data(), puffer.data() + puffer.size(), wert, std::chars_format::fixed, stellen);
    assert(fehler == std::errc());
    return {puffer.data(), ende};
}

std::string_view schreibe(double wert, Puffer& puffer) {
    assert(std::isfinite(wert));
    // Coordinates and elevations have few decimals. When value * 10^7 rounds to an integer whose quotient is the
    // value again, that quotient is the correctly rounded decimal fraction, so its digits read back to the same
    // double; printing an integer costs a third of the shortest-digits search.
    constexpr double faktor = 1e7;
    if (std::fabs(wert) < 1e8) {
        const auto ganzzahl = static_cast<long long>(std::nearbyint(wert * faktor));
        if (ganzzahl != 0 && static_cast<double>(ganzzahl) / faktor == wert) {
            return schreibeMitSiebenStellen(ganzzahl, puffer);
        }
    }
    const auto [ende, fehler] = std::to_chars(puffer.data(), puffer.data() + puffer.size(), wert);
    assert(fehler == std::errc());
    return {puffer.data(), static_cast<std::size_t>(ende - puffer.data())};
}

long long ganz(double wert) {
    constexpr double grenze = 9223372036854775808.0;  // 2^63, the first value that does not fit
    if (std::isnan(wert)) {
        return 0;
    }
    if (wert >= grenze) {
        return std::numeric_limits<long long>::max();
    }
    if (wert < -grenze) {
        return std::numeric_limits<long long>::min();
    }
    return static_cast<long long>(wert);
}

}  // namespace spurkiste::zahl
