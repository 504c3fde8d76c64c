#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <vector>

#include "geo/Koordinate.h"

namespace spurkiste {

/// Points near each other, known by their sums only. An immutable value once the grouping is done.
struct Gruppe {
    double summeBreite = 0.0;
    double summeLaenge = 0.0;
    double anzahl = 0.0;  ///< of points, at least 1

    /// The mean of its points, by plain arithmetic: that of points on both sides of 180 degrees lies near 0, and the
    /// sums of absurd coordinates may exceed a double, which makes it infinite.
    [[nodiscard]] Koordinate mitte() const { return {summeBreite / anzahl, summeLaenge / anzahl}; }

    friend bool operator==(const Gruppe&, const Gruppe&) = default;
};

/// Which points belong together.
struct Gruppierung {
    static constexpr std::uint32_t kKeine = std::numeric_limits<std::uint32_t>::max();
    static constexpr double kUmkreisMeter = 300.0;

    std::vector<Gruppe> gruppen;               ///< in order of creation
    std::vector<std::uint32_t> gruppeZuPunkt;  ///< the index of each point's group, kKeine where the point is absent

    /// Walks the points in order: a point joins the first group, in order of creation, whose centre at that moment is
    /// at most 300 m away by entfernung(), else it founds one. The result is exactly that of comparing every point with
    /// every group; the time grows with the points, however many groups there are, as long as no more than a few dozen
    /// centres lie within a kilometre of each other. Coordinates must be finite; fewer than 2^32 - 1 points. Any
    /// thread.
    [[nodiscard]] static Gruppierung aus(std::span<const std::optional<Koordinate>> punkte);
};

}  // namespace spurkiste
