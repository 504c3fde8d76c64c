#pragma once

#include <array>
#include <span>
#include <string_view>

#include "erzeuge/Orte.h"
#include "track/GpxSportart.h"

namespace spurkiste::erzeuge {

/// How people and programs name one sport.
struct Sportworte {
    std::span<const std::string_view> typen;     ///< what programs write into <type>, commonest first
    std::span<const std::string_view> anlaesse;  ///< what people call an outing
    std::string_view zeichen;                    ///< an emoji
};

/// How people do one sport, as far as it shows in their files.
struct Sportprofil {
    GpxSportart::Wert sport;
    double gewicht;                ///< how often, beside the others
    double kmh;                    ///< usual speed on the flat
    double kurzKm, langKm;         ///< usual lengths; the short ones are more frequent
    double gedaechtnis;            ///< metres after which a direction is forgotten
    double relief;                 ///< share of the hills that the way takes along: roads keep to the valleys
    double bergauf;                ///< how much a rise slows: speed / (1 + bergauf * slope)
    double daheim;                 ///< share of the tracks that start at one of the usual doors
    std::array<double, 3> formen;  ///< weights of loop, there and back, from place to place
    std::string_view monate;       ///< weight of each month from January, '0' to '9'
    double puls;                   ///< usual heart rate, beats per minute
    Ortsart ort;                   ///< where it starts when not at home
    Sportworte worte;
};

/// All fifteen, in the order of the sports.
[[nodiscard]] std::span<const Sportprofil> sportprofile();

/// Texts in <type> that name no sport of the list.
[[nodiscard]] std::span<const std::string_view> fremdeTypen();

}  // namespace spurkiste::erzeuge
