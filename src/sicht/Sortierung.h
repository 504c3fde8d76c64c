#pragma once

#include <vector>

#include "sicht/Spalten.h"

namespace spurkiste {

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
