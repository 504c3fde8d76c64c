#pragma once

#include <QCache>
#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QPainter>
#include <QRawFont>
#include <QRectF>
#include <QString>
#include <QStringView>
#include <memory>
#include <vector>

namespace spurkiste {

/// Sets single lines in one font, again and again: what a list paints while it scrolls. Shaping a text costs some
/// forty allocations, so the latest texts are kept as glyphs, more of them than a screen shows.
/// Sizes are exact: the toolkit itself rounds those of its fonts to whole pixels. Bound to the GUI thread.
class Schriftsatz {
  public:
    /// Families and weight are those of `schrift`, the size is `groesse` logical pixels, halves included.
    Schriftsatz(const QFont& schrift, double groesse);

    /// The advance of a text in logical pixels.
    [[nodiscard]] double breite(QStringView text);

    /// Draws a text with the painter's pen, on one line in the middle of a box. What does not fit ends with an
    /// ellipsis, and then always stands on the left. The baseline falls on a whole device pixel.
    void zeichne(QPainter& maler, const QRectF& kasten, Qt::Alignment ausrichtung, QStringView text);

  private:
    /// A text as glyphs, whose positions are relative to the left end of the baseline.
    struct Satz {
        QList<QGlyphRun> laeufe;
        double breite = 0.0;
    };
    struct Gemerkt {
        Satz ganz;
        Satz gekuerzt = {};
        double platz = -1.0;  // that `gekuerzt` was made for
    };

    [[nodiscard]] Satz setze(const QString& text);
    [[nodiscard]] QRawFont verkleinert(const QRawFont& gross);
    [[nodiscard]] Gemerkt& hole(const QString& text);
    [[nodiscard]] const Satz& passend(const QString& text, double platz);

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
    std::unique_ptr<QCache<QString, Gemerkt>> gemerkt_;
};

}  // namespace spurkiste
