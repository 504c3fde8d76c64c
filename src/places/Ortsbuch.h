#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "geo/Koordinate.h"

namespace spurkiste {

/// The gazetteer: place names with coordinates, found by the grid cell of 0.1 degree they lie in.
/// Immutable after construction; read from any thread.
class Ortsbuch {
  public:
    /// From the text of a place file: a line per place, name TAB latitude TAB longitude, UTF-8, LF; empty fields are
    /// dropped before counting, lines without exactly three fields or with unreadable numbers are skipped.
    explicit Ortsbuch(std::string inhalt);
    Ortsbuch(const Ortsbuch&) = delete;
    Ortsbuch& operator=(const Ortsbuch&) = delete;
    ~Ortsbuch();

    /// The one of the program, read from the resource "orte.tsv" at the first call, whichever thread makes it; others
    /// wait meanwhile. Empty when the resource is missing or is not UTF-8.
    static const Ortsbuch& geteilt();

    /// The name of the nearest place within `maxMeter` metres (inclusive) in the 5 by 5 cells around the point; of
    /// places at equal distance the first one met, cells south to north, west to east, places in file order.
    /// Nothing when there is none. `punkt` must be finite. The name lives as long as the Ortsbuch.
    [[nodiscard]] std::optional<std::string_view> naechster(const Koordinate& punkt, double maxMeter) const;

    [[nodiscard]] std::size_t anzahl() const;
};

}  // namespace spurkiste
