#pragma once

#include <optional>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Where a track's sketch stands on a surface: north up, both axes to the same scale, as large as fits with a margin of
/// 12 on every side, centred. A value, in the units of the surface, y growing downwards. Every coordinate is finite and
/// within kGrenze, however absurd those of the track are.
class SkizzenGeometrie {
  public:
    struct Punkt {
        double x = 0;
        double y = 0;

        friend bool operator==(const Punkt&, const Punkt&) = default;
    };

    static constexpr double kRand = 12;     ///< kept free on each side
    static constexpr double kGrenze = 1e5;  ///< farther out nothing is drawn; drawing surfaces count in less than this

    /// For a surface of this size. A track without a sketch has nothing to draw at all. Longitudes are shortened by the
    /// cosine of the middle latitude, which is true enough for what a person can do in a day. Any thread.
    [[nodiscard]] static SkizzenGeometrie berechne(const GpxMetadaten& eintrag, double breite, double hoehe);

    /// Where a place of the track is. Only points are mapped that are asked for: there may be a hundred thousand.
    [[nodiscard]] Punkt bild(const Koordinate& ort) const;

    /// To be drawn, never to be joined; one point is a dot, and there may be none.
    [[nodiscard]] const Skizze& linien() const { return linien_; }
    /// The whole track is this place, and nothing else is drawn; absent for every other track.
    [[nodiscard]] const std::optional<Punkt>& fleck() const { return fleck_; }
    /// Not clamped to the surface; absent without a start.
    [[nodiscard]] const std::optional<Punkt>& start() const { return start_; }
    /// To be drawn over start(); absent without an end.
    [[nodiscard]] const std::optional<Punkt>& ende() const { return ende_; }

  private:
    void passeEin(const Skizze::Punkte& punkte, double breite, double hoehe);

    Skizze linien_;
    std::optional<Punkt> fleck_;
    std::optional<Punkt> start_;
    std::optional<Punkt> ende_;
    double hoehe_ = 0;
    double sueden_ = 0;
    double westen_ = 0;
    double kosinus_ = 1;
    double massstab_ = 0;
    double links_ = 0;
    double unten_ = 0;
};

}  // namespace spurkiste
