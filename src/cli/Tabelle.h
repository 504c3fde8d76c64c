#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace spurkiste {

/// A table of texts for a terminal: aligned columns that together fit a width. A plain value; any thread.
struct Tabelle {
    enum class Ausrichtung { links, rechts };
    /// How a cell is coloured where colours are welcome.
    enum class Ton { ruhig, leise, gut };

    struct Spalte {
        std::string titel;
        Ausrichtung ausrichtung = Ausrichtung::links;
        /// Columns to which it may shrink, shortened with an ellipsis; absent when it keeps the width of its content.
        std::optional<std::size_t> mindestens;
        /// When even the least widths do not fit, columns leave in ascending order of rank; rank 0 stays.
        int rang = 0;
    };

    struct Zelle {
        std::string text;
        Ton ton = Ton::ruhig;
    };

    std::vector<Spalte> spalten;
    std::vector<std::vector<Zelle>> zeilen;  ///< each as long as `spalten`

    /// The lines of the table, titles first, each ended by a line break and none wider than `breite` columns (absent:
    /// as wide as the content). Texts are made safe for one line.
    [[nodiscard]] std::string text(std::optional<std::size_t> breite, bool farben) const;
};

}  // namespace spurkiste
