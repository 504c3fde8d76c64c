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
#include <string>
#include <string_view>
#include <vector>

namespace spurkiste {

/// Sets single lines in one font, again and again: what a list paints while it scrolls. Shaping a text costs some
/// forty allocations, so it is avoided. Most texts consist of characters that the font puts side by side, or joins to
/// ligatures; they are put together from what is known of each two of them, which costs nothing once that is known. The
/// others (fonts that stand in, scripts that join) are shaped, and the latest of them are kept as glyphs.
/// Sizes are exact: the toolkit itself rounds those of its fonts to whole pixels. Bound to the GUI thread.
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
    [[nodiscard]] bool setzeSchlicht(std::u16string_view text, double platz);

    /// What follows from a character or ligature and the one behind it.
    struct Paar {
        std::uint32_t schluessel = 0;  // both; 0: none
        quint32 glyphe = 0;            // of the first
        double schritt = 0.0;          // to where the next one stands; NaN where the font does anything else
        char16_t verbindung = 0;       // the ligature that the two become
    };
    [[nodiscard]] Paar paar(char16_t zeichen, char16_t naechstes);
    [[nodiscard]] Paar miss(char16_t zeichen, char16_t naechstes);

    /// A ligature; it goes by a number above those of the characters that are put together.
    struct Verbindung {
        QString text;
        quint32 glyphe;
    };
    static constexpr char16_t kErsteVerbindung = 0xe000;

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

    std::vector<Paar> paare_;  // a hash table with open addressing
    std::size_t paarAnzahl_ = 0;
    std::vector<Verbindung> verbindungen_;

    // The plain text that was put together last.
    static constexpr std::size_t kLaengster = 256;
    std::array<char16_t, kLaengster> zeichen_{};
    std::array<quint32, kLaengster> glyphen_{};
    std::array<QPointF, kLaengster> punkte_{};
    int anzahl_ = 0;
    double breite_ = 0.0;
    QGlyphRun schlicht_;
};

}  // namespace spurkiste
