#pragma once

#include <array>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>

#include "sicht/Spalten.h"

namespace spurkiste {

/// How wide the columns of the table are: what the user made of them, fitted into the room that there is. A value in
/// logical pixels, without any widget.
class Spaltenbreiten {
  public:
    using Breiten = std::array<int, kSpalten.size()>;

    /// Below these no column gets, neither by the user nor for want of room.
    static constexpr Breiten kMindestens = jeSpalte(&Spaltenbreite::mindestens);

    /// As wide as they are at first.
    Spaltenbreiten() = default;
    /// Reads what alsText() wrote; the initial widths from a text that is anything else.
    [[nodiscard]] static Spaltenbreiten ausText(std::string_view text);
    [[nodiscard]] std::string alsText() const;

    /// The widths in a room of this width. With more room than they need, columns grow, first to their ideal widths,
    /// then names and places; with less, names and places shrink first. Narrower than all minimum widths together
    /// they never get, nor, in the room it was made in, narrower than the user's arrangement.
    [[nodiscard]] Breiten verteile(int platz) const;

    /// Lets the user pull the right border of a column: those to its left stay, it gets this width (at least its
    /// minimum), those to its right give way or take what is left. `vorher` are the widths when the pulling began.
    void ziehe(Spalte spalte, int breite, const Breiten& vorher, int platz);

    friend bool operator==(const Spaltenbreiten&, const Spaltenbreiten&) = default;

  private:
    Breiten breiten_ = jeSpalte(&Spaltenbreite::anfangs);
    int platz_ = std::accumulate(breiten_.begin(), breiten_.end(), 0);  // the room that they were made for
};

}  // namespace spurkiste
