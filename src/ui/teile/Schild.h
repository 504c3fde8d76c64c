#pragma once

#include <QLabel>
#include <optional>

#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

/// A line of text in the exact size of its font, whose letter spacing ends with its last letter, so that spaced
/// capitals stand flush on the right, and that is shortened with an ellipsis where it does not fit. A screen reader
/// gets the whole text.
class Schild final : public QLabel {
    Q_OBJECT

  public:
    explicit Schild(QWidget* eltern = nullptr);

    /// Where the ellipsis goes when the text is too long; Qt::ElideNone (the beginning) cuts nothing and asks for
    /// the text's whole width.
    void setzeKuerzung(Qt::TextElideMode kuerzung);
    void setzeFarbe(const QColor& farbe) { faerbeText(*this, farbe); }

    /// The width of the whole text, in logical pixels.
    [[nodiscard]] double textbreite() const { return satz().breite(text()); }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    [[nodiscard]] Schriftsatz& satz() const;

    Qt::TextElideMode kuerzung_ = Qt::ElideNone;
    mutable std::optional<Schriftsatz> satz_;  // made of the font when it is first needed
};

}  // namespace spurkiste
