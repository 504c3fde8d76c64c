#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <vector>

#include "geo/Koordinate.h"

namespace spurkiste {

class Seiten;

/// The sketch of a track: thinned polylines, one per run of consecutive points of one segment, in point order.
/// An immutable value that is cheap to copy: copies share the points, which take 8 bytes each when none of them has
/// more than seven decimals, else 16. May be read from any thread.
class Skizze {
    using Platz = std::uint64_t;  // eight bytes of memory, aligned as a coordinate

  public:
    class Lager;
    class Punkte;

    /// A coordinate in ten-millionths of a degree. Divided by kJeGrad it is the very double that a figure of at most
    /// seven decimals reads as, for both are rounded once.
    struct Rund {
        std::int32_t breite = 0;
        std::int32_t laenge = 0;

        static constexpr double kJeGrad = 1e7;
        [[nodiscard]] constexpr Koordinate ort() const { return {breite / kJeGrad, laenge / kJeGrad}; }
        friend bool operator==(const Rund&, const Rund&) = default;
    };

    /// Collects the lines of a sketch one point after the other. May be used for several sketches in turn.
    class Bau {
      public:
        void leere();  ///< begins a new sketch; the memory stays
        void beginneLinie();
        void haengeAn(const Koordinate& punkt);  ///< to the line begun last; there must be one
        void haengeRundAn(Rund punkt) {          ///< the same; only as long as istRund()
            assert(!anfaenge_.empty() && istRund());
            runde_.push_back(punkt);
        }

        /// Whether every point so far has seven decimals or fewer.
        [[nodiscard]] bool istRund() const { return genaue_.empty(); }

        /// Whether the lines and points so far are those of a sketch.
        [[nodiscard]] bool gleicht(const Skizze& skizze) const;

        [[nodiscard]] Skizze fertig() &&;                   ///< in memory of its own
        [[nodiscard]] Skizze fertigIn(Lager& lager) const;  ///< in memory that it shares with others

      private:
        [[nodiscard]] std::size_t punkte() const { return istRund() ? runde_.size() : genaue_.size(); }
        [[nodiscard]] std::size_t plaetze() const;
        [[nodiscard]] Skizze fertigAn(std::shared_ptr<Platz> platz) const;

        std::vector<Rund> runde_;
        std::vector<Koordinate> genaue_;       // in place of runde_ from the first point on that has more decimals
        std::vector<std::uint32_t> anfaenge_;  // index of each line's first point
    };

    /// A sketch without lines.
    Skizze() = default;

    [[nodiscard]] std::size_t linien() const { return linien_; }
    [[nodiscard]] bool leer() const { return linien_ == 0; }

    /// The points of line `nummer`, 0 to linien() - 1; a line may be empty. Lives as long as any copy of the sketch.
    [[nodiscard]] Punkte linie(std::size_t nummer) const;

    /// All points of all lines, in order.
    [[nodiscard]] Punkte punkte() const;

    /// Line by line and point by point.
    friend bool operator==(const Skizze& a, const Skizze& b);

  private:
    [[nodiscard]] std::size_t anfang(std::size_t nummer) const;

    // The points, and behind them the bytes of the index of each line's first point, the first line's left out.
    std::shared_ptr<const Platz> platz_;
    std::uint32_t punkte_ = 0;
    std::uint32_t linien_ : 31 = 0;
    std::uint32_t rund_ : 1 = 0;  // how the points stand there: as Rund or as Koordinate
};

/// Points of a sketch, in order: made from what is stored one at a time. Lives as long as any copy of the sketch.
class Skizze::Punkte {
  public:
    /// Goes from point to point.
    class Zeiger {
      public:
        using value_type = Koordinate;                      // NOLINT(readability-identifier-naming): std
        using reference = Koordinate;                       // NOLINT(readability-identifier-naming): std
        using pointer = void;                               // NOLINT(readability-identifier-naming): std
        using difference_type = std::ptrdiff_t;             // NOLINT(readability-identifier-naming): std
        using iterator_category = std::input_iterator_tag;  // NOLINT(readability-identifier-naming): std

        Zeiger() = default;
        Koordinate operator*() const { return lies(ab_, stelle_, rund_); }
        Zeiger& operator++() {
            ++stelle_;
            return *this;
        }
        Zeiger operator++(int) {  // NOLINT(cert-dcl21-cpp): as iterators do
            const Zeiger vorher = *this;
            ++stelle_;
            return vorher;
        }
        friend bool operator==(const Zeiger& a, const Zeiger& b) { return a.stelle_ == b.stelle_; }

      private:
        friend class Punkte;
        Zeiger(const std::byte* ab, std::size_t stelle, bool rund) : ab_(ab), stelle_(stelle), rund_(rund) {}

        const std::byte* ab_ = nullptr;
        std::size_t stelle_ = 0;
        bool rund_ = false;
    };

    [[nodiscard]] std::size_t size() const { return anzahl_; }
    [[nodiscard]] bool empty() const { return anzahl_ == 0; }
    [[nodiscard]] Koordinate operator[](std::size_t stelle) const { return lies(ab_, stelle, rund_); }
    [[nodiscard]] Koordinate front() const { return (*this)[0]; }
    [[nodiscard]] Koordinate back() const { return (*this)[anzahl_ - 1]; }
    [[nodiscard]] Zeiger begin() const { return {ab_, 0, rund_}; }
    [[nodiscard]] Zeiger end() const { return {ab_, anzahl_, rund_}; }

  private:
    friend class Skizze;
    friend class Bau;
    Punkte() = default;
    Punkte(const void* ab, std::size_t anzahl, bool rund)
        : ab_(static_cast<const std::byte*>(ab)), anzahl_(anzahl), rund_(rund) {}

    [[nodiscard]] static Koordinate lies(const std::byte* ab, std::size_t stelle, bool rund) {
        if (rund) {
            Rund punkt;
            std::memcpy(&punkt, ab + stelle * sizeof punkt, sizeof punkt);
            return punkt.ort();
        }
        Koordinate punkt;
        std::memcpy(&punkt, ab + stelle * sizeof punkt, sizeof punkt);
        return punkt;
    }

    const std::byte* ab_ = nullptr;
    std::size_t anzahl_ = 0;
    bool rund_ = false;
};

/// Memory for many sketches that come and go together, in large pieces: a page of fresh memory costs more than what is
/// written to it. A piece is given back with the last sketch in it. One thread; the sketches themselves any.
class Skizze::Lager {
  public:
    /// Takes memory from the system in pieces of this many bytes, and larger ones for larger sketches.
    explicit Lager(std::size_t stueck) : stueck_(stueck) {}

  private:
    friend class Bau;
    [[nodiscard]] std::shared_ptr<Platz> nimm(std::size_t plaetze);

    std::size_t stueck_;
    std::shared_ptr<Seiten> aktuelles_;
    std::size_t belegt_ = 0;  // of the current piece, in bytes
};

}  // namespace spurkiste
