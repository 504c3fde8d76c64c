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
    /// Families, weight and letter spacing are those of `schrift`, the size is `groesse` logical pixels, halves
    /// included.
    Schriftsatz(const QFont& schrift, double groesse);
    /// In the size of a font that Schrift::mach() made.
    explicit Schriftsatz(const QFont& schrift);

    /// A font for the toolkit's own layouts, in twice the size, which it need not round.
    [[nodiscard]] static QFont doppelt(QFont schrift, double groesse);

    /// Where the ellipsis goes in what is too long; at its end unless it is told otherwise. Qt::ElideLeft is for paths.
    void setzeKuerzung(Qt::TextElideMode kuerzung) { kuerzung_ = kuerzung; }

    /// The advance of a text in logical pixels; letter spacing ends with the last letter.
    [[nodiscard]] double breite(QStringView text);

    /// The text as it is shown in so much room, in logical pixels.
    [[nodiscard]] QString gekuerzt(const QString& text, double platz) const;

    /// Draws a text with the painter's pen, on one line in the middle of a box. What does not fit is shortened with an
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
    double sperrung_;
    Qt::TextElideMode kuerzung_ = Qt::ElideRight;
    std::vector<Schriftpaar> schriften_;  // the font and those that stand in for it
    double oberlaenge_;
    double unterlaenge_;
    std::unique_ptr<QCache<QString, Gemerkt>> gemerkt_;
};

}  // namespace spurkiste
