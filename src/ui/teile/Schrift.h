#pragma once

#include <QFont>
#include <QWidget>

namespace spurkiste {

/// The fonts of the interface: Lato, behind it DejaVu Sans and, for Chinese, Japanese and Korean, the Noto Sans CJK
/// whose forms belong to the current language. GUI thread.
class Schrift {
  public:
    Schrift() = delete;

    /// A font of `groesse` logical pixels, halves included, with `sperrung` logical pixels between letters.
    [[nodiscard]] static QFont mach(double groesse, QFont::Weight staerke = QFont::Normal, double sperrung = 0.0);

    /// The size of a font that mach() made, in logical pixels: exact where the toolkit itself rounds it.
    [[nodiscard]] static double groesse(const QFont& schrift);

    /// How high a line of the widget's font is, in logical pixels: Lato's own is as high as its size, too tight between
    /// lines of different sizes.
    [[nodiscard]] static int zeilenhoehe(const QWidget& element);
};

}  // namespace spurkiste
