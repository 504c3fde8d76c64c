#pragma once

#include <QColor>
#include <QTextEdit>

namespace spurkiste {

/// A piece of text in the exact size of its font, over as many lines as it needs, broken inside a word where the word
/// alone is too long. Its lines have one height and its baselines stand at the same places, whatever the script, so
/// that neighbours line up. GUI thread.
class Absatz final : public QTextEdit {
    Q_OBJECT

  public:
    /// Where the lines stand, in logical pixels.
    struct Zeilenmass {
        int hoehe = 16;          ///< of a line
        double grundlinie = 12;  ///< of the first line, from the top
    };

    /// `waehlbar` lets the text be marked and copied. The measures are for a font of 12.5 unless they are given.
    Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern, const Zeilenmass& mass);
    Absatz(const QColor& farbe, bool waehlbar, QWidget* eltern) : Absatz(farbe, waehlbar, eltern, Zeilenmass()) {}

    /// Plain text.
    void zeige(const QString& text);

    [[nodiscard]] const Zeilenmass& mass() const { return mass_; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int breite) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, mass_.hoehe}; }

  protected:
    bool viewportEvent(QEvent* ereignis) override;
    void changeEvent(QEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void wheelEvent(QWheelEvent* ereignis) override;

  private:
    void richteAus();

    Zeilenmass mass_;
};

}  // namespace spurkiste
