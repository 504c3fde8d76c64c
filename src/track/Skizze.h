#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "geo/Koordinate.h"

namespace spurkiste {

/// The sketch of a track: thinned polylines, one per run of consecutive points of one segment, in point order.
/// An immutable value that is cheap to copy: copies share the points. May be read from any thread.
class Skizze {
  public:
    /// Collects the lines of a sketch one point after the other.
    class Bau {
      public:
        void beginneLinie();
        void haengeAn(const Koordinate& punkt);  ///< to the line begun last; there must be one
        [[nodiscard]] Skizze fertig() &&;

      private:
        std::vector<Koordinate> punkte_;
        std::vector<std::uint32_t> anfaenge_;
    };

    /// A sketch without lines.
    Skizze() = default;

    [[nodiscard]] std::size_t linien() const;
    [[nodiscard]] bool leer() const { return linien() == 0; }

    /// The points of line `nummer`, 0 to linien() - 1; a line may be empty. Lives as long as any copy of the sketch.
    [[nodiscard]] std::span<const Koordinate> linie(std::size_t nummer) const;

    /// All points of all lines, in order.
    [[nodiscard]] std::span<const Koordinate> punkte() const;

    /// Line by line and point by point.
    friend bool operator==(const Skizze& a, const Skizze& b);

  private:
    struct Inhalt;
    explicit Skizze(std::shared_ptr<const Inhalt> inhalt);

    std::shared_ptr<const Inhalt> inhalt_;  // absent when there are no lines
};

}  // namespace spurkiste
