#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "erzeuge/Vorhaben.h"
#include "erzeuge/Weg.h"
#include "erzeuge/Zufall.h"

namespace spurkiste::erzeuge {

/// The weather at one time of a track, as a <wetter> element tells it.
struct Wetterprobe {
    double temperatur = 0.0;  ///< degrees Celsius
    double feuchte = 0.0;     ///< percent
    double wind = 0.0;        ///< km/h
    std::string_view windrichtung;
    std::string_view lage;
};

/// One made-up track with everything that its file may tell.
struct Fahrt {
    Vorhaben vorhaben;
    Weg weg;
    std::string titel;                         ///< what its owner calls it
    std::optional<std::string> spurName;       ///< <name> of the track or route
    std::optional<std::string> metadatenName;  ///< <name> of the metadata
    std::optional<std::string> typ;            ///< <type>
    bool route = false;                        ///< planned, not recorded: <rte> instead of <trk>, no times
    bool zeiten = true;
    bool hoehen = true;
    bool puls = false;
    std::vector<Wetterprobe> wetter;
    bool wetterAmPunkt = false;  ///< in the extensions of points, not of the track
};

/// What somebody else decides about a track; the rest is left to chance.
struct Vorgabe {
    std::size_t punkte = 500;                ///< about as many points
    std::optional<GpxSportart> sport;        ///< a fixed sport
    std::optional<double> sekundenProPunkt;  ///< as long as it takes to write the points in this distance of time
    bool vollstaendig = false;  ///< a track with times, elevations, a name and a known sport, often with weather
};

/// Makes up a track.
[[nodiscard]] Fahrt erfinde(const Mensch& mensch, const Vorgabe& vorgabe, Zufall& zufall);

}  // namespace spurkiste::erzeuge
