#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "geo/Koordinate.h"
#include "places/Ortsbuch.h"

namespace spurkiste {

/// Names the spots where tracks begin or end: points near each other form a group and share one label.
class OrtsEtiketten {
  public:
    /// One label per point, absent where the point is. Walks the points in order: a point joins the first group, in
    /// order of creation, whose centre (the mean of its points so far) is at most 300 m away, else it founds one.
    /// A group is named by the place nearest to its centre within 15 km, else by the centre's coordinates
    /// ("47.37690, 8.54170"). Coordinates must be finite. Any thread.
    [[nodiscard]] static std::vector<std::optional<std::string>> berechne(
        std::span<const std::optional<Koordinate>> punkte, const Ortsbuch& buch);
};

}  // namespace spurkiste
