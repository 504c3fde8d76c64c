#pragma once

#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QRawFont>
#include <QRectF>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace spurkiste {

/// Sets single lines in one font, again and again: what a list paints while it scrolls. Shaping a text costs some
/// twenty allocations, painting its glyphs none, so the latest texts are kept as glyphs; figures, of which hardly two
/// are alike, are put together from single glyphs and never shaped. Sizes are exact: the toolkit itself rounds those
/// of its fonts to whole pixels. Bound to the GUI thread.
class Schriftsatz {
  public:
    /// Families and weight are those of `schrift`, the size is `groesse` logical pixels, halves included.
    Schriftsatz(const QFont& schrift, double groesse);

    /// The advance of a text in logical pixels.
    [[nodiscard]] double breite(std::u16string_view text);

    /// Draws a text with the painter's pen, on one line in the middle of a box. What does not fit ends with an
    /// ellipsis, and then always stands on the left. The baseline falls on a whole device pixel.
    void zeichne(QPainter& maler, const QRectF& kasten, Qt::Alignment ausrichtung, std::u16string_view text);

  private:
    /// A text as glyphs, whose positions are relative to the left end of the baseline.
    struct Satz {
        QList<QGlyphRun> laeufe;
        double breite = 0.0;
    };
    struct Gemerkt {
        std::u16string text;
        Satz ganz;
        Satz gekuerzt;
        double platz = -1.0;     // that `gekuerzt` was made for
        std::uint64_t wann = 0;  // of its last use; 0: never
    };

    [[nodiscard]] Satz setze(const QString& text);
    [[nodiscard]] QRawFont verkleinert(const QRawFont& gross);
    [[nodiscard]] Gemerkt& hole(std::u16string_view text);
    [[nodiscard]] const Satz& passend(Gemerkt& gemerkt, double platz);
    [[nodiscard]] bool setzeZahl(std::u16string_view text);
    [[nodiscard]] double schritt(std::size_t zeichen, std::size_t naechstes);

    /// A font that a text was shaped with, and the one to paint with.
    struct Schriftpaar {
        QRawFont gross;
        QRawFont klein;
    };

    QFont gross_;
    double groesse_;
    std::vector<Schriftpaar> schriften_;  // the font and those that stand in for it
    double oberlaenge_;
    double unterlaenge_;

    std::vector<Gemerkt> gemerkt_;
    std::uint64_t uhr_ = 0;

    // Figures: the glyphs of their characters, how far apart each two of them stand, and the one that is being drawn.
    static constexpr std::u16string_view kZahlzeichen = u"0123456789 ,.:-–km";
    static constexpr std::size_t kLaengsteZahl = 24;
    static constexpr double kUnbekannt = std::numeric_limits<double>::infinity();
    std::array<quint32, kZahlzeichen.size()> glyphen_{};
    std::array<std::array<double, kZahlzeichen.size() + 1>, kZahlzeichen.size()> schritte_{};
    std::array<quint32, kLaengsteZahl> zahlGlyphen_{};
    std::array<QPointF, kLaengsteZahl> zahlPunkte_{};
    double zahlBreite_ = 0.0;
    QGlyphRun zahl_;
};

}  // namespace spurkiste
