#pragma once

#include <string>
#include <string_view>

#include "base/Zeitpunkt.h"
#include "geo/Koordinate.h"

namespace spurkiste {

/// What is shown where there is nothing to show.
inline constexpr std::string_view kStrich = "–";

/// The texts that figures are shown as, the same in every language. Static; any thread.
class Formate {
  public:
    Formate() = delete;

    /// "dd.MM.yy" in the process's time zone.
    [[nodiscard]] static std::string datumsFormat(Zeitpunkt zeit);
    /// "dd.MM.yy HH:mm" in the process's time zone.
    [[nodiscard]] static std::string datumZeitFormat(Zeitpunkt zeit);
    /// A duration in seconds, finite and not negative: rounded, "59:59" below an hour, else "25:01:01".
    [[nodiscard]] static std::string dauer(double sekunden);
    /// A length in metres, finite and not negative: "999 m" (cut, not rounded), from 1000 on "1,0 km" with a comma;
    /// beyond all that is measured on Earth, from 10^12 km on, "1e+12 km".
    [[nodiscard]] static std::string strecke(double meter);
    /// "47.37690, 8.54170".
    [[nodiscard]] static std::string koordinate(const Koordinate& ort);
};

}  // namespace spurkiste
