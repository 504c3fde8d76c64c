#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "erzeuge/Vorhaben.h"
#include "erzeuge/Zufall.h"
#include "geo/Koordinate.h"

namespace spurkiste::erzeuge {

/// One recorded point.
struct Wegpunkt {
    Koordinate ort;
    double hoehe = 0.0;     ///< metres
    std::int64_t zeit = 0;  ///< whole seconds since 1970-01-01 00:00:00 UTC, later than the point before
    std::int64_t puls = 0;  ///< beats per minute
};

/// A way as a device records it.
struct Weg {
    std::vector<Wegpunkt> punkte;
    std::vector<std::size_t> segmente;  ///< position of each segment's first point; the first is 0
    double meter = 0.0;                 ///< length without the gaps between segments, before the noise
    double anstieg = 0.0;               ///< metres climbed, before the noise
};

/// Goes the way: a walk that remembers its direction, over hills that are the same for every track that crosses them,
/// slower uphill, with pauses, and with the noise of a receiver on top. Gives about `punkte` points (at least two),
/// fewer when the way is too short to record one a second. `geplant`: as drawn on a map, in one piece, without pauses
/// and noise.
[[nodiscard]] Weg begehe(const Vorhaben& vorhaben, std::size_t punkte, bool geplant, Zufall& zufall);

/// The height of the ground in metres, relative to the middle of its surroundings: -1 to 1 times the relief.
[[nodiscard]] double gelaende(const Koordinate& ort);

}  // namespace spurkiste::erzeuge
