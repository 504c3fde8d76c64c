#pragma once

#include <array>
#include <bit>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <system_error>

/// Numbers as the cache has them, read eight digits at a time. Every function takes a position in bytes that go on for
/// at least 32 more, moves it behind the number and says whether one stood there, in a form that zahl::schreibe() may
/// have chosen; otherwise the position stays.
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

inline constexpr std::array kZehn = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7, 1e8,
                                     1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16};
inline constexpr std::array<std::uint64_t, 9> kGanzeZehn = {1,      10,      100,      1000,     10000,
                                                            100000, 1000000, 10000000, 100000000};

inline bool istZiffer(char zeichen) {
    return zeichen >= '0' && zeichen <= '9';
}

/// Reads digits, 18 at most and no superfluous zero in front.
inline bool liesZiffern(const char*& stelle, std::uint64_t& zahl) {
    const char* p = stelle;
    while (istZiffer(*p) && p - stelle < 19) {
        zahl = zahl * 10 + static_cast<std::uint64_t>(*p++ - '0');
    }
    const auto anzahl = p - stelle;
    const bool passt = anzahl > 0 && anzahl < 19 && (anzahl == 1 || *stelle != '0');
    stelle = passt ? p : stelle;
    return passt;
}

/// The numbers that are rare: with an exponent or of more digits than a double holds exactly.
bool liesSeltene(const char*& stelle, double& zahl);

}  // namespace intern

/// An integer. Not -0, which is none.
inline bool lies(const char*& stelle, std::int64_t& zahl) {
    const bool negativ = *stelle == '-';
    const char* p = stelle + (negativ ? 1 : 0);
    std::uint64_t betrag = 0;
    if (!intern::liesZiffern(p, betrag) || (negativ && betrag == 0)) {
        return false;
    }
    zahl = negativ ? -static_cast<std::int64_t>(betrag) : static_cast<std::int64_t>(betrag);
    stelle = p;
    return true;
}

/// A number. Up to 2^53 its digits are an integer that a double holds exactly, and so is the power of ten below it:
/// their quotient is rounded once and therefore right (W. D. Clinger, "How to read floating point numbers accurately",
/// 1990).
inline bool lies(const char*& stelle, double& zahl) {
    const bool negativ = *stelle == '-';
    const char* p = stelle + (negativ ? 1 : 0);
    std::uint64_t betrag = 0;
    if (!intern::liesZiffern(p, betrag)) {
        return intern::liesSeltene(stelle, zahl);
    }
    unsigned stellen = 0;
    if (*p == '.') {
        constexpr std::uint64_t hoechstens = 90'071'992;  // times 10^8 it stays below 2^53
        ++p;
        for (bool weiter = true; weiter;) {
            const std::uint64_t acht = intern::lade(p);
            const unsigned anzahl = intern::ziffern(acht);
            if (anzahl == 0) {
                break;
            }
            if (betrag >= hoechstens && betrag >= 9'007'199'254'740'992 / intern::kGanzeZehn[anzahl]) {
                return intern::liesSeltene(stelle, zahl);
            }
            betrag = betrag * intern::kGanzeZehn[anzahl] + intern::wert(acht, anzahl);
            stellen += anzahl;
            p += anzahl;
            weiter = anzahl == 8 && stellen < 16;
        }
        const bool minusNull = negativ && betrag == 0 && stellen == 1;
        if (stellen == 0 || (p[-1] == '0' && !minusNull) || intern::istZiffer(*p)) {
            return intern::liesSeltene(stelle, zahl);
        }
    } else if (negativ && betrag == 0) {
        return false;
    }
    if (*p == 'e') {
        return intern::liesSeltene(stelle, zahl);
    }
    const double quotient = static_cast<double>(betrag) / intern::kZehn[stellen];
    zahl = negativ ? -quotient : quotient;
    stelle = p;
    return true;
}

}  // namespace spurkiste::eigenzahl
