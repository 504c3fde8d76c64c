#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "geo/Koordinate.h"

namespace spurkiste {

namespace dateien {
class Leser;
}
struct OrtsZeile;

/// The gazetteer: place names with coordinates, found by the grid cell of 0.1 degree they lie in.
/// Immutable after construction; read from any thread.
class Ortsbuch {
  public:
    /// From the text of a place file: a line per place, name TAB latitude TAB longitude, UTF-8, LF; empty fields are
    /// dropped before counting, lines without exactly three fields or with unreadable numbers are skipped, and so are
    /// coordinates so large that their cell has no number of 64 bits. Empty when the text is not UTF-8. All names
    /// together must be shorter than 4 GiB.
    explicit Ortsbuch(std::string_view inhalt);
    Ortsbuch(const Ortsbuch&) = delete;
    Ortsbuch& operator=(const Ortsbuch&) = delete;
    ~Ortsbuch() = default;

    /// The one of the program, read from the resource "orte.tsv" at the first call, whichever thread makes it; others
    /// wait meanwhile. Empty when the resource is missing, cannot be read, is not UTF-8 or has more than 4 GiB.
    static const Ortsbuch& geteilt();

    /// The name of the nearest place within `maxMeter` metres (inclusive) in the 5 by 5 cells around the point; of
    /// places at equal distance the first one met, cells south to north, west to east, places in file order.
    /// Nothing when there is none. `punkt` must be finite. The name lives as long as the Ortsbuch.
    [[nodiscard]] std::optional<std::string_view> naechster(const Koordinate& punkt, double maxMeter) const;

    /// Why there are no places although there is a place file: it could not be read. Another run may do better.
    [[nodiscard]] const std::error_code& lesefehler() const { return lesefehler_; }

    /// The number of places that were read.
    [[nodiscard]] std::size_t anzahl() const { return orte_.size() + aussen_.size(); }

  private:
    /// One place in 16 bytes, for fresh memory is what loading mostly pays for: coordinates as OrtsZeile::Rund.
    struct Ort {
        std::int32_t breite;  ///< or kInGenau
        std::int32_t laenge;  ///< or, with kInGenau, the index into genau_
        std::uint32_t zelle;
        std::uint32_t name;  ///< where the name begins in namen_; tells the order in the file as well
    };
    static constexpr std::int32_t kInGenau = std::numeric_limits<std::int32_t>::min();
    /// A place outside the grid of the earth (latitude 95, longitude 1000), found by looking at each.
    struct Aussenseiter {
        Koordinate lage;
        std::int64_t zelle;
        std::uint32_t name;
    };
    class Suche;

    explicit Ortsbuch(dateien::Leser& datei);
    explicit Ortsbuch(const std::error_code& lesefehler) : lesefehler_(lesefehler) {}
    void erwarte(std::size_t bytes);
    [[nodiscard]] bool nimmZeilen(std::string_view zeilen);
    void nimmAuf(const OrtsZeile& ort);
    void vergiss();
    void ordneNachZellen();
    [[nodiscard]] Koordinate lage(const Ort& ort) const;

    std::string namen_;                 ///< every name with a line feed behind it
    std::vector<Ort> orte_;             ///< by cell
    std::vector<Koordinate> genau_;     ///< of the places whose figures have more decimals
    std::vector<Aussenseiter> aussen_;  ///< in file order; empty in any sane place file
    std::error_code lesefehler_;
};

}  // namespace spurkiste
