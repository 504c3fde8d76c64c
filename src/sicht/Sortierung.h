#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace spurkiste {

/// The columns of the table, from left to right.
enum class Spalte : std::uint8_t { name, datum, sport, laenge, zeit, anstieg, punkte, ghost, art, start, ziel };

inline constexpr std::array<Spalte, 11> kSpalten{Spalte::name, Spalte::datum,   Spalte::sport,  Spalte::laenge,
                                                 Spalte::zeit, Spalte::anstieg, Spalte::punkte, Spalte::ghost,
                                                 Spalte::art,  Spalte::start,   Spalte::ziel};

/// Whether a click on the column's header sorts: all but the places.
constexpr bool istSortierbar(Spalte spalte) {
    return spalte != Spalte::start && spalte != Spalte::ziel;
}

/// One comparator of a sort order.
struct Vergleich {
    Spalte spalte = Spalte::datum;
    bool absteigend = false;

    friend bool operator==(const Vergleich&, const Vergleich&) = default;
};

/// The sort order of the table: comparators, the weightiest first. What is equal to all of them keeps the order of the
/// library, in either direction. A value.
class Sortierung {
  public:
    /// The newest first.
    Sortierung();
    /// Every column is sortable and occurs at most once.
    explicit Sortierung(std::vector<Vergleich> vergleiche);

    /// A click on a column's header: reverses the first comparator when it is that column's; else puts the column
    /// first, ascending, and takes away what the order said about it. Nothing for a column that does not sort.
    void klicke(Spalte spalte);

    [[nodiscard]] const std::vector<Vergleich>& vergleiche() const { return vergleiche_; }

    friend bool operator==(const Sortierung&, const Sortierung&) = default;

  private:
    std::vector<Vergleich> vergleiche_;
};

}  // namespace spurkiste
