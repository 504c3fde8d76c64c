#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "geo/Koordinate.h"
#include "track/GpxMetadaten.h"
#include "track/Skizze.h"

namespace spurkiste {

/// One track or route point while a file is read. Kept small: a file may have millions.
struct GpxPunkt {
    Koordinate ort;
    double hoehe = std::numeric_limits<double>::quiet_NaN();  ///< elevation in metres; NaN when absent
    std::int64_t segment = 0;                                 ///< of the segment or route, from 0 in document order

    [[nodiscard]] bool hatHoehe() const { return !std::isnan(hoehe); }
};

/// One weather sample of a file. The texts live as long as what they were read from.
struct WetterProbe {
    std::optional<double> temperatur;              ///< degrees Celsius
    std::optional<double> feuchte;                 ///< relative humidity, percent
    std::optional<double> wind;                    ///< kilometres per hour
    std::optional<std::string_view> windrichtung;  ///< as written
    std::optional<std::string_view> lage;          ///< as written
};

/// The figures of a record, computed from the points of a file in document order. Coordinates and elevations are
/// finite but else unchecked, so that sums and differences of absurd ones are not: a summand that would take a sum out
/// of the finite numbers is left out. One damaged point then costs its own steps, not the figure of the whole track.
/// Pure functions; any thread.
class GpxStatistik {
  public:
    GpxStatistik() = delete;

    /// Metres from point to point within each segment; gaps between segments are not bridged.
    [[nodiscard]] static double strecke(std::span<const GpxPunkt> punkte);

    /// Metres of ascent: the elevations of each run of neighbours in one segment, uninterrupted by a point without,
    /// are smoothed by a centred mean of up to five, and every rise of the smoothed line counts.
    [[nodiscard]] static double anstieg(std::span<const GpxPunkt> punkte);

    /// Whether a track of this length is a loop: at least 1000 m, its ends less than 200 m apart.
    [[nodiscard]] static bool istRundkurs(double streckeMeter, const Koordinate& start, const Koordinate& ende);

    /// A line per run of neighbours in one segment. Of every run stay the points at multiples of a step that grows by
    /// one with every 256 points of the file, and the last.
    [[nodiscard]] static Skizze skizze(std::span<const GpxPunkt> punkte);
};

/// Sums the weather samples of one file up, so that none has to be kept. Bound to one thread.
class WetterBilanz {
  public:
    void nimm(const WetterProbe& probe);

    /// Means without rounding and the most frequent texts (trimmed; of equally frequent ones the first of the file);
    /// each absent when no sample has it. Nothing without samples.
    [[nodiscard]] std::optional<GpxWetter> zusammenfassung() const;

  private:
    class Mittel {
      public:
        void nimm(std::optional<double> wert);
        [[nodiscard]] std::optional<double> wert() const;

      private:
        double summe_ = 0.0;
        std::int64_t anzahl_ = 0;
    };

    class Haeufigster {
      public:
        void nimm(std::optional<std::string_view> text);
        [[nodiscard]] std::optional<std::string> wert() const;

      private:
        struct Zaehler {
            std::int64_t anzahl = 0;
            std::size_t rang = 0;  // how many other texts the file had before it
        };
        std::unordered_map<std::string, Zaehler> texte_;
    };

    Mittel temperatur_;
    Mittel feuchte_;
    Mittel wind_;
    Haeufigster windrichtung_;
    Haeufigster lage_;
    std::int64_t messpunkte_ = 0;
};

}  // namespace spurkiste
