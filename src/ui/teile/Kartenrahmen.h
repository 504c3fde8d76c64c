#pragma once

#include <QPixmap>
#include <QRectF>
#include <QWidget>
#include <array>

namespace spurkiste {

/// Lies over a card and makes it one: its border, and in the corners what lies around it, so that whatever scrolls
/// below seems to be cut off round. (A mask would cut in whole pixels.) The card must lie on the stage's colour, and
/// its surroundings must have been painted with zeichneSchatten(). Lets the mouse through.
class Kartenrahmen final : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kRadius = 16;  ///< logical pixels

    explicit Kartenrahmen(QWidget* karte);

    /// Whether the card has the keyboard.
    void setzeFokus(bool fokus);
    [[nodiscard]] bool fokus() const { return fokus_; }

    /// Draws the shadow of a card for whoever paints the ground on which it lies.
    static void zeichneSchatten(QPainter& maler, const QRectF& karte);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    [[nodiscard]] QColor farbe() const;
    [[nodiscard]] QPixmap ecke(const QPoint& wo) const;

    bool fokus_ = false;
    std::array<QPixmap, 4> ecken_;  // null when they have to be made anew
};

}  // namespace spurkiste
