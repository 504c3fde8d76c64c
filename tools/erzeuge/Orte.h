#pragma once

#include <span>
#include <string_view>

#include "geo/Koordinate.h"

namespace spurkiste::erzeuge {

/// What starts at a place.
enum class Ortsart { stadt, berg, piste, see };

/// A place where made-up tracks begin.
struct Ort {
    std::string_view name;
    std::string_view merkpunkt;  ///< a hill, hut or path nearby of which people speak
    Koordinate lage;
    double hoehe = 0.0;   ///< metres above the sea
    double relief = 0.0;  ///< how far the hills around it reach up and down, in metres
    Ortsart art = Ortsart::stadt;
};

/// The places of one kind, in a fixed order. The text lives as long as the program.
[[nodiscard]] std::span<const Ort> orte(Ortsart art);

}  // namespace spurkiste::erzeuge
