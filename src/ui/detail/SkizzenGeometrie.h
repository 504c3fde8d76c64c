#pragma once

#include <optional>
#include <span>
#include <vector>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Where a track's sketch stands on a surface: north up, both axes to the same scale, as large as fits with a margin of
/// 12 on every side, centred. A value, in the units of the surface, y growing downwards. Every coordinate is finite and
/// within kGrenze, however absurd those of the track are.
struct SkizzenGeometrie {
    struct Punkt {
        double x = 0;
        double y = 0;

        friend bool operator==(const Punkt&, const Punkt&) = default;
    };

    static constexpr double kRand = 12;     ///< kept free on each side
    static constexpr double kGrenze = 1e5;  ///< farther out nothing is drawn; drawing surfaces count in less than this

    std::vector<Punkt> punkte;                     ///< of all lines, one behind the other
    std::vector<std::span<const Punkt>> linien;    ///< of at least two of them each, never to be joined
    std::vector<std::span<const Punkt>> einzelne;  ///< of one each: what a segment of one point is
    std::optional<Punkt> fleck;                    ///< the whole track is this place, and nothing else is drawn
    std::optional<Punkt> start;                    ///< not clamped to the surface; absent without a start
    std::optional<Punkt> ende;                     ///< to be drawn over `start`

    SkizzenGeometrie() = default;
    SkizzenGeometrie(SkizzenGeometrie&&) = default;
    SkizzenGeometrie& operator=(SkizzenGeometrie&&) = default;
    SkizzenGeometrie(const SkizzenGeometrie&) = delete;  // the lines of a copy would be those of the original
    SkizzenGeometrie& operator=(const SkizzenGeometrie&) = delete;
    ~SkizzenGeometrie() = default;

    /// For a surface of this size. A track without a sketch has no geometry at all. Longitudes are shortened by the
    /// cosine of the middle latitude, which is true enough for what a person can do in a day. Any thread.
    [[nodiscard]] static SkizzenGeometrie berechne(const GpxMetadaten& eintrag, double breite, double hoehe);
};

}  // namespace spurkiste
