#pragma once

#include <QPainter>
#include <QPoint>
#include <QRect>
#include <QWidget>

namespace spurkiste {

/// Makes a pop-up window a card that floats above everything: paper, a border, round corners, a shadow. Where the
/// desktop blends windows, the window is larger than the card by the room of the shadow, and transparent there. Where
/// it does not, that would be black: the corners are cut in whole pixels then, and there is no shadow. Owned by the
/// window that it is for; GUI thread.
class Schwebekarte {
  public:
    static constexpr int kRadius = 11;    ///< logical pixels
    static constexpr int kInnenrand = 5;  ///< of the card, around what it holds

    /// Whether the desktop blends windows. Asks the display.
    [[nodiscard]] static bool wirdGemischt();

    /// `fenster` must not have been shown yet. It passes its painting and resizing on.
    explicit Schwebekarte(QWidget& fenster);

    /// The room between window and card, on every side.
    [[nodiscard]] int rand() const { return rand_; }
    /// The card, in the window's coordinates.
    [[nodiscard]] QRect karte() const { return fenster_.rect().adjusted(rand_, rand_, -rand_, -rand_); }

    void zeichne(QPainter& maler) const;
    void schneide() const;

    /// The control that the card belongs to, on the screen; a point has the size 0. The card keeps `abstand` from it.
    void setzeAnker(const QRect& anker, int abstand);
    /// How high a card can be that is to stand below or above the control.
    [[nodiscard]] int freieHoehe() const;
    /// Puts the window where its card stands below the control, else above it, else beside it: not over it.
    void richteAus() const;
    /// A button was pressed in the window. Beside the card, as outside of the window, that closes it, and no more than
    /// that when it was on the control. Answers whether it was beside the card.
    [[nodiscard]] bool schliessePerDruck(const QPoint& wo) const;

  private:
    QWidget& fenster_;
    int rand_;
    QRect anker_;
    int abstand_ = 0;
};

}  // namespace spurkiste
