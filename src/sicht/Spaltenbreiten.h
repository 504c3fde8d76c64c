#pragma once

#include <array>
#include <numeric>
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

    /// The widths in a room of this width. `bedarf` are the least widths, none below kMindestens: what figures need
    /// to be shown whole. With more room than they need, columns grow, first to their ideal widths, then names and
    /// places; with less, names and places shrink first. What the user made a column stays, and where not even the
    /// least widths fit, the columns together are wider than the room.
    [[nodiscard]] Breiten verteile(int platz, const Breiten& bedarf = kMindestens) const;

    /// Lets the user pull the right border of a column: it gets this width (at least its least one), those to its left
    /// stay. Of those to its right only places that the user left alone give way, and take back what comes free; all
    /// others are moved along. `vorher` are the widths when the pulling began.
    void ziehe(Spalte spalte, int breite, const Breiten& vorher, int platz, const Breiten& bedarf = kMindestens);

    friend bool operator==(const Spaltenbreiten&, const Spaltenbreiten&) = default;

  private:
    Breiten breiten_ = jeSpalte(&Spaltenbreite::anfangs);
    std::array<bool, kSpalten.size()> eigene_{};                        // columns that the user gave a width
    int platz_ = std::accumulate(breiten_.begin(), breiten_.end(), 0);  // the room that all of it was made for
};

}  // namespace spurkiste
