#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QWidget>

/// How surfaces of the interface are drawn: cards, capsules, their borders, and the ring of the keyboard focus.
/// GUI thread.
namespace spurkiste::papier {

/// Room that a control keeps free around its shape for the focus ring, in logical pixels.
inline constexpr int kRingRand = 3;

/// Fills a rounded rectangle and draws its border along the inside of the edge. A transparent colour draws nothing.
void form(QPainter& maler, const QRectF& kasten, double radius, const QColor& grund, const QColor& rahmen,
          double staerke = 1.0);

/// The shape of such a control: its rectangle without that room.
[[nodiscard]] QRectF ohneRing(const QWidget& element);

/// Draws the focus ring of a shape: a stronger border on it and a soft band of kRingRand around it. A shape in the
/// ring's own colour has that border around the band.
void fokusring(QPainter& maler, const QRectF& kasten, double radius, bool aussen = false);

}  // namespace spurkiste::papier
