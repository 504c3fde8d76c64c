#pragma once

#include <cstdint>
#include <optional>

#include "geo/Koordinate.h"

namespace spurkiste {

/// A cell of the gazetteer's grid, 0.1 degree by 0.1 degree. Its number is row * 3601 + column and nothing else:
/// columns beyond the end of a row are the first ones of the next, so the grid does not close at 180 degrees, and
/// absurd coordinates have cells as well. An immutable value.
struct Zelle {
    static constexpr std::int64_t kSpalten = 3601;  ///< columns per row
    static constexpr std::int64_t kUmkreis = 2;     ///< cells that a search covers in each direction
    static constexpr double kGrad = 0.1;

    std::int64_t zeile = 0;   ///< the integer part of (latitude + 90) * 10
    std::int64_t spalte = 0;  ///< the integer part of (longitude + 180) * 10

    /// The cell of a finite point, or nothing when numbers of 64 bits do not suffice for it and the cells around it, as
    /// for a latitude of 1e300.
    [[nodiscard]] static std::optional<Zelle> von(const Koordinate& lage);

    /// Grows from south to north and in a row from west to east: the order in which a search visits cells.
    [[nodiscard]] std::int64_t nummer() const { return zeile * kSpalten + spalte; }
};

}  // namespace spurkiste
