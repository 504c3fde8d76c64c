#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "geo/Koordinate.h"

namespace spurkiste {

/// What one line of a place file says. The name is a part of the line.
struct OrtsZeile {
    /// The units per degree of `Rund`. A figure of at most seven decimals is exactly the number of its units divided by
    /// this, for division rounds as reading a decimal number does.
    static constexpr double kJeGrad = 1e7;

    /// Coordinates in ten-millionths of a degree.
    struct Rund {
        std::int32_t breite;
        std::int32_t laenge;
    };

    std::string_view name;
    Koordinate lage;
    std::optional<Rund> rund;  ///< the same as `lage`, where it can be expressed so

    /// Reads a line without its line feed: name TAB latitude TAB longitude, empty fields dropped before counting.
    /// Nothing when there are not exactly three fields or the figures are no numbers. Any thread.
    [[nodiscard]] static std::optional<OrtsZeile> lies(std::string_view zeile);
};

}  // namespace spurkiste
