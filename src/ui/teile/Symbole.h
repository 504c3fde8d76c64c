#pragma once

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <string_view>

namespace spurkiste {

/// The icons by their symbol names ("bicycle"), drawn sharp at any pixel ratio and tinted in one colour. GUI thread.
class Symbole {
  public:
    Symbole() = delete;

    /// The icon in a square of `kasten` logical pixels, its own margin included, at a device pixel ratio. Kept in the
    /// toolkit's pixmap cache. A name without an icon gives an empty picture of that size.
    [[nodiscard]] static QPixmap bild(std::string_view name, double kasten, const QColor& farbe,
                                      double pixelverhaeltnis);

    /// Draws the icon centred in `kasten` (its smaller side counts), snapped to whole device pixels.
    static void zeichne(QPainter& maler, const QRectF& kasten, std::string_view name, const QColor& farbe);

    /// The same with a picture that bild() made for this side and the painter's device.
    static void zeichne(QPainter& maler, const QRectF& kasten, double seite, const QPixmap& bild);
};

}  // namespace spurkiste
