#pragma once

namespace spurkiste {

/// One position on the earth in decimal degrees (WGS 84), as written in a file: finite, not normalised, not checked
/// for range. An immutable value.
struct Koordinate {
    double breite = 0.0;  ///< latitude, north positive
    double laenge = 0.0;  ///< longitude, east positive

    friend bool operator==(const Koordinate&, const Koordinate&) = default;
};

/// The earth's mean diameter in metres, the factor of the haversine formula below.
inline constexpr double kErddurchmesser = 12742000.0;

/// Degrees to radians, as degrees * pi / 180 in this order.
[[nodiscard]] constexpr double bogenmass(double grad) {
    return grad * 3.141592653589793 / 180.0;
}

/// Great-circle distance in metres on a sphere, by the haversine formula (R. W. Sinnott, "Virtues of the Haversine",
/// Sky and Telescope 68, 1984). Any finite coordinates. Any thread.
[[nodiscard]] double entfernung(const Koordinate& a, const Koordinate& b);

/// The same when the cosines of both latitudes are already known: bit for bit the result of entfernung(), for loops
/// that meet every point twice. `kosinusA` is std::cos(bogenmass(a.breite)), `kosinusB` likewise.
[[nodiscard]] double entfernungMitKosinus(const Koordinate& a, double kosinusA, const Koordinate& b, double kosinusB);

}  // namespace spurkiste
