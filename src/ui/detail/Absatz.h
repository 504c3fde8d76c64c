#pragma once

#include <QColor>
#include <QTextEdit>

namespace spurkiste {

/// A piece of text over as many lines as it needs, broken inside a word where the word alone is too long. Its lines
/// have one height and its baselines stand at the same places, whatever the script, so that neighbours line up. GUI
/// thread.
class Absatz final : public QTextEdit {
    Q_OBJECT

  public:
    static constexpr int kZeile = 15;  ///< height of a line, in logical pixels; for fonts of 12.5

    /// `waehlbar` lets the text be marked and copied.
    Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern);

    /// Plain text.
    void zeige(const QString& text);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int breite) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, kZeile}; }

  protected:
    void wheelEvent(QWheelEvent* ereignis) override;
};

}  // namespace spurkiste
