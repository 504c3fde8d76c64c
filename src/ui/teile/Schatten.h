#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace spurkiste {

/// The soft shadow that a rounded shape casts on what lies below it. A value; painting is for the GUI thread.
struct Schatten {
    QColor farbe;         ///< its opacity is that of the shadow under the middle of the shape
    double sigma = 0;     ///< standard deviation of the blur, logical pixels
    double abwaerts = 0;  ///< how far down it is moved, logical pixels

    /// Draws the shadow of a rounded rectangle, under the shape as well as around it. A shape of the same radius and
    /// blur is blurred once and kept in the toolkit's pixmap cache.
    void zeichne(QPainter& maler, const QRectF& kasten, double radius) const;
};

}  // namespace spurkiste
