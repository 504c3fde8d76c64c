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
    // In logical pixels; for fonts of 12.5.
    static constexpr int kZeile = 16;          ///< height of a line
    static constexpr double kGrundlinie = 12;  ///< of the first line, from the top

    /// `waehlbar` lets the text be marked and copied.
    Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern);

    /// Plain text.
    void zeige(const QString& text);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int breite) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, kZeile}; }

  protected:
    void changeEvent(QEvent* ereignis) override;
    void wheelEvent(QWheelEvent* ereignis) override;

  private:
    void richteAus();
};

}  // namespace spurkiste
