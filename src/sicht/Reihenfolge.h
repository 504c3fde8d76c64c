#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "base/Namensordnung.h"
#include "sicht/Filter.h"
#include "sicht/Sortierung.h"
#include "sicht/Wortliste.h"
#include "sicht/Zeile.h"

namespace spurkiste {

/// What the filters compare: of each the number of the record's text, in its list of words or among its fixed choices.
using Filterwerte = JeFilter<Wortliste::Nummer>;

/// A record as filters, search and order see it: all that can be told from the record and the language alone.
struct Merkmale {
    std::shared_ptr<const Zeile> zeile;
    std::string suchtext;  ///< folded, each text ended by a byte that no text contains
    std::string namensschluessel;
    std::size_t pfadHash = 0;
    double streckeMeter = 0.0;
    Filterwerte filterwerte;
};

/// The order of all records, kept while they and the sort order stay, and mended rather than made anew when some
/// records come, change or go. Bound to one thread.
class Reihenfolge {
  public:
    using Stelle = std::uint32_t;  ///< a position in the list of records
    static constexpr Stelle kWeg = std::numeric_limits<Stelle>::max();

    /// What the order is made from, besides the sort order.
    struct Bestand {
        const std::vector<Merkmale>& merkmale;
        const Wortliste& sportarten;
        const text::Namensordnung& namensordnung;
    };

    /// All positions, sorted; equal records by position. Valid until the next call.
    const std::vector<Stelle>& fuer(const Sortierung& sortierung, const Bestand& bestand);

    /// Says that the records have changed: where each of the old positions is now, or kWeg; what nothing moved to is
    /// new.
    void folge(const std::vector<Stelle>& umzug, const Bestand& bestand);

  private:
    bool gueltig_ = false;
    Sortierung sortierung_;
    std::vector<Stelle> stellen_;
};

}  // namespace spurkiste
