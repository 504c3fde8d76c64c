#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

#include "sicht/Spalten.h"
#include "sicht/Zeile.h"

namespace spurkiste {

/// The figures that stand in the columns of numbers, by their lengths: all digits are equally wide, so one figure of
/// each length says how wide a column must be, however many rows there are. Kept up with rows that come and go.
class Zahlentexte {
  public:
    /// A row has come.
    void nimm(const Zeile& zeile);
    /// A row that had come has gone.
    void lasse(const Zeile& zeile);

    /// A figure of each length that there is, shortest first; of a column that does not hold numbers, none.
    [[nodiscard]] std::vector<std::u16string> beispiele(Spalte spalte) const;

  private:
    struct Laenge {
        std::size_t anzahl = 0;   // of the rows
        std::u16string beispiel;  // of a row that may have gone
    };

    std::array<std::vector<Laenge>, kSpalten.size()> laengen_;  // by length
};

}  // namespace spurkiste
