#pragma once

#include <QPainter>
#include <QPixmap>
#include <QRect>
#include <QRectF>
#include <string_view>
#include <vector>

#include "sicht/Spalten.h"
#include "sicht/Zeile.h"
#include "ui/teile/Bildvorrat.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/SportKapsel.h"

namespace spurkiste {

/// Paints the rows of the table: what stands in each cell, the hairline below, the tint under the pointer and the band
/// of a selected row. It takes everything from the row and keeps what is costly to make, so that painting a row again
/// allocates nothing. Takes the fonts of the language it is made in. Bound to the GUI thread.
class ZellenZeichner {
  public:
    static constexpr int kZeilenhoehe = 32;  ///< logical pixels

    /// Where a column stands, in the painter's coordinates.
    struct Lage {
        Spalte spalte;
        int links;
        int breite;
    };
    struct Zustand {
        bool ueberfahren = false;  ///< the pointer is over the row
        bool gewaehlt = false;
    };

    ZellenZeichner();

    /// Paints a row over the ground that is there; `spalten` are those that can be seen.
    void zeichne(QPainter& maler, const QRect& reihe, const Zeile& zeile, const std::vector<Lage>& spalten,
                 Zustand zustand);

    /// The width at which a cell shows all it has, paddings included.
    [[nodiscard]] double idealbreite(const Zeile& zeile, Spalte spalte);

    /// The width at which a cell of a column of numbers shows a figure whole, paddings included.
    [[nodiscard]] double zahlenbreite(std::u16string_view zahl, Spalte spalte);

    /// Where the capsule stands within the cell of the sport.
    [[nodiscard]] QRectF kapsel(const QRect& zelle, const Zeile& zeile);

    /// What hangs on the pointer while rows are dragged: the name of one of them, and how many they are.
    [[nodiscard]] QPixmap zugbild(const Zeile& zeile, int anzahl, double pixelverhaeltnis);

  private:
    void zeichneZelle(QPainter& maler, const QRect& zelle, const Zeile& zeile, Spalte spalte);

    Schriftsatz satz_;
    Schriftsatz namenssatz_;
    SportKapsel kapsel_;
    Bildvorrat bilder_;
};

}  // namespace spurkiste
