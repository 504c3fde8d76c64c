#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "geo/Koordinate.h"

namespace spurkiste {

class Seiten;

/// The sketch of a track: thinned polylines, one per run of consecutive points of one segment, in point order.
/// An immutable value that is cheap to copy: copies share the points, which take 16 bytes each. May be read from any
/// thread.
class Skizze {
  public:
    class Lager;

    /// Collects the lines of a sketch one point after the other. May be used for several sketches in turn.
    class Bau {
      public:
        void leere();  ///< begins a new sketch; the memory stays
        void beginneLinie();
        void haengeAn(const Koordinate& punkt) {  ///< to the line begun last; there must be one
            assert(!anfaenge_.empty());
            punkte_.push_back(punkt);
        }

        /// Whether the lines and points so far are those of a sketch.
        [[nodiscard]] bool gleicht(const Skizze& skizze) const;

        [[nodiscard]] Skizze fertig() &&;                   ///< in memory of its own
        [[nodiscard]] Skizze fertigIn(Lager& lager) const;  ///< in memory that it shares with others

      private:
        [[nodiscard]] std::size_t plaetze() const;
        [[nodiscard]] Skizze fertigAn(std::shared_ptr<Koordinate> platz) const;

        std::vector<Koordinate> punkte_;
        std::vector<std::uint32_t> anfaenge_;  // index of each line's first point
    };

    /// A sketch without lines.
    Skizze() = default;

    [[nodiscard]] std::size_t linien() const { return linien_; }
    [[nodiscard]] bool leer() const { return linien_ == 0; }

    /// The points of line `nummer`, 0 to linien() - 1; a line may be empty. Lives as long as any copy of the sketch.
    [[nodiscard]] std::span<const Koordinate> linie(std::size_t nummer) const;

    /// All points of all lines, in order.
    [[nodiscard]] std::span<const Koordinate> punkte() const { return {platz_.get(), punkte_}; }

    /// Line by line and point by point.
    friend bool operator==(const Skizze& a, const Skizze& b);

  private:
    [[nodiscard]] std::size_t anfang(std::size_t nummer) const;

    // The points, and behind them the bytes of the index of each line's first point, the first line's left out.
    std::shared_ptr<const Koordinate> platz_;
    std::uint32_t punkte_ = 0;
    std::uint32_t linien_ = 0;
};

/// Memory for many sketches that come and go together, in large pieces: a page of fresh memory costs more than what is
/// written to it. A piece is given back with the last sketch in it. One thread; the sketches themselves any.
class Skizze::Lager {
  public:
    /// Takes memory from the system in pieces of this many bytes, and larger ones for larger sketches.
    explicit Lager(std::size_t stueck) : stueck_(stueck) {}

  private:
    friend class Bau;
    [[nodiscard]] std::shared_ptr<Koordinate> nimm(std::size_t plaetze);

    std::size_t stueck_;
    std::shared_ptr<Seiten> aktuelles_;
    std::size_t belegt_ = 0;  // of the current piece, in bytes
};

}  // namespace spurkiste
