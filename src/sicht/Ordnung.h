#pragma once

#include <cstdint>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// What a column sorts by.
struct Ordnung {
    enum class Art : std::uint8_t {
        keine,      ///< it does not sort
        dateiname,  ///< as a file manager of the language sorts names
        sport,      ///< the sport's text, likewise
        zahl,       ///< a number
    };

    Art art;
    /// The number as an integer of the same order; null for the other kinds.
    std::uint64_t (*wort)(const GpxMetadaten& eintrag);

    /// Integers in the order of the numbers; the two zeros are one, and all that is no number stands behind infinity.
    [[nodiscard]] static std::uint64_t alsWort(double wert);
    [[nodiscard]] static std::uint64_t alsWort(std::int64_t wert);
};

inline constexpr Ordnung kUngeordnet{Ordnung::Art::keine, nullptr};
inline constexpr Ordnung kNachDateiname{Ordnung::Art::dateiname, nullptr};
inline constexpr Ordnung kNachSport{Ordnung::Art::sport, nullptr};

constexpr Ordnung nachZahl(std::uint64_t (*wort)(const GpxMetadaten& eintrag)) {
    return {Ordnung::Art::zahl, wort};
}

}  // namespace spurkiste
