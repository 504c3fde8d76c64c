#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>

/// Numbers as the cache has them, read eight digits at a time. Every function takes a position in bytes that go on for
/// at least 40 more and returns the one behind the number that stands there, in a form that zahl::schreibe() may have
/// chosen; null when there is none.
namespace spurkiste::eigenzahl {

namespace intern {

/// Eight bytes, the first one lowest, with the digits' values in place of their characters.
inline std::uint64_t lade(const char* stelle) {
    std::uint64_t acht = 0;
    std::memcpy(&acht, stelle, sizeof acht);
    if constexpr (std::endian::native == std::endian::big) {
        acht = __builtin_bswap64(acht);
    }
    return acht ^ 0x3030303030303030U;
}

/// How many of the first of eight bytes are digits. An addition that overflows spoils only bytes behind the first one
/// that is none.
inline unsigned ziffern(std::uint64_t acht) {
    const std::uint64_t keine = ((acht + 0x7676767676767676U) | acht) & 0x8080808080808080U;
    return static_cast<unsigned>(std::countr_zero(keine)) / 8;
}

/// The number of `anzahl` digits, 1 to 8: zeros move in from the left, then neighbours are joined pair by pair.
inline std::uint64_t wert(std::uint64_t acht, unsigned anzahl) {
    acht <<= 64 - 8 * anzahl;
    acht = acht * 10 + (acht >> 8U);
    return ((acht & 0x000000FF000000FFU) * 0x000F424000000064U +
            ((acht >> 16U) & 0x000000FF000000FFU) * 0x0000271000000001U) >>
           32U;
}

/// The powers of ten that a double holds exactly.
inline constexpr std::array kZehn = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                     1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::array<std::uint64_t, 9> kGanzeZehn = {1,      10,      100,      1000,     10000,
                                                            100000, 1000000, 10000000, 100000000};
/// Up to here every integer is a double.
inline constexpr std::uint64_t kGenau = std::uint64_t{1} << 53U;

inline bool istZiffer(char zeichen) {
    return zeichen >= '0' && zeichen <= '9';
}

/// Reads digits, 18 at most and no superfluous zero in front.
inline const char* liesZiffern(const char* stelle, std::uint64_t& zahl) {
    const char* p = stelle;
    while (istZiffer(*p) && p - stelle < 19) {
        zahl = zahl * 10 + static_cast<std::uint64_t>(*p++ - '0');
    }
    const auto anzahl = p - stelle;
    return anzahl > 0 && anzahl < 19 && (anzahl == 1 || *stelle != '0') ? p : nullptr;
}

/// Reads decimals, as many as 64 bits hold together with what stands before the point.
const char* liesBruch(const char* stelle, std::uint64_t& zahl, unsigned& stellen);

/// zahl / 10^stellen, rounded once, for what is more than a double holds exactly. NaN when that takes a closer look.
double teile(std::uint64_t zahl, unsigned stellen);

/// The numbers that are rare: with an exponent or many digits.
const char* liesSeltene(const char* stelle, double& zahl);

}  // namespace intern

/// An integer. Not -0, which is none.
inline const char* lies(const char* stelle, std::int64_t& zahl) {
    const bool negativ = *stelle == '-';
    std::uint64_t betrag = 0;
    const char* const nach = intern::liesZiffern(stelle + (negativ ? 1 : 0), betrag);
    zahl = static_cast<std::int64_t>(negativ ? 0 - betrag : betrag);
    return negativ && betrag == 0 ? nullptr : nach;
}

/// A number. Up to 2^53 its digits are an integer that a double holds exactly, and so is the power of ten below it:
/// their quotient is rounded once and therefore right (W. D. Clinger, "How to read floating point numbers accurately",
/// 1990).
inline const char* lies(const char* stelle, double& zahl) {
    const bool negativ = *stelle == '-';
    std::uint64_t betrag = 0;
    const char* p = intern::liesZiffern(stelle + (negativ ? 1 : 0), betrag);
    if (p == nullptr) {
        return nullptr;
    }
    unsigned stellen = 0;
    if (*p == '.') {
        const std::uint64_t acht = intern::lade(++p);
        stellen = intern::ziffern(acht);
        if (stellen == 7 && betrag < intern::kGenau / intern::kGanzeZehn[8]) {
            // Most coordinates. The processor guesses this and reads on before it has counted.
            betrag = betrag * intern::kGanzeZehn[7] + intern::wert(acht, 7);
            p += 7;
        } else if ((p = intern::liesBruch(p, betrag, stellen)) == nullptr) {
            return intern::liesSeltene(stelle, zahl);
        }
        if (p[-1] == '0' && !(negativ && betrag == 0 && stellen == 1)) {
            return nullptr;
        }
    } else if (negativ && betrag == 0) {
        return nullptr;
    }
    const double quotient = betrag <= intern::kGenau || stellen == 0
                                ? static_cast<double>(betrag) / intern::kZehn[stellen]
                                : intern::teile(betrag, stellen);
    if (*p == 'e' || quotient != quotient) {
        return intern::liesSeltene(stelle, zahl);
    }
    zahl = negativ ? -quotient : quotient;
    return p;
}

/// A number of at most seven decimals, in ten-millionths. Null when it has more or is beyond 32 bits, and for -0.0: the
/// function above may then still read it.
inline const char* liesRund(const char* stelle, std::int32_t& zahl) {
    constexpr unsigned dezimalen = 7;
    constexpr std::uint64_t groesste = std::numeric_limits<std::int32_t>::max();
    const bool negativ = *stelle == '-';
    std::uint64_t betrag = 0;
    const char* p = intern::liesZiffern(stelle + (negativ ? 1 : 0), betrag);
    if (p == nullptr || betrag > groesste / intern::kGanzeZehn[dezimalen]) {
        return nullptr;
    }
    if (*p == '.') {
        const std::uint64_t acht = intern::lade(++p);
        const unsigned stellen = intern::ziffern(acht);
        if (stellen == dezimalen) {
            // The processor guesses this and reads on before it has counted.
            betrag = betrag * intern::kGanzeZehn[dezimalen] + intern::wert(acht, dezimalen);
            p += dezimalen;
        } else if (stellen > 0 && stellen < dezimalen) {
            betrag = (betrag * intern::kGanzeZehn[stellen] + intern::wert(acht, stellen)) *
                     intern::kGanzeZehn[dezimalen - stellen];
            p += stellen;
        } else {
            return nullptr;
        }
        if (p[-1] == '0') {
            return nullptr;
        }
    } else {
        betrag *= intern::kGanzeZehn[dezimalen];
    }
    if (betrag > groesste || (negativ && betrag == 0) || *p == 'e') {
        return nullptr;
    }
    zahl = static_cast<std::int32_t>(negativ ? 0 - betrag : betrag);
    return p;
}

}  // namespace spurkiste::eigenzahl
