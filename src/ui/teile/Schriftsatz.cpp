#include "ui/teile/Schriftsatz.h"

#include <QFontMetricsF>
#include <QTextLayout>
#include <algorithm>
#include <cmath>

#include "ui/teile/Schrift.h"

namespace spurkiste {

namespace {

constexpr qsizetype kGemerkte = 2048;  // texts; the highest window shows some 600

// The toolkit knows whole pixels only, so texts are shaped at twice their size and the glyphs' places halved. That
// holds as long as hinting leaves the widths alone; upwards it may, for crisp lines.
constexpr double kVergroesserung = 2.0;

constexpr double kSpielraum = 0.01;  // for sums of fractions

/// The text without copying it; for as long as `text` lives.
QString ungeteilt(QStringView text) {
    return QString::fromRawData(text.data(), text.size());
}

}  // namespace

QFont Schriftsatz::doppelt(QFont schrift, double groesse) {
    schrift.setPixelSize(static_cast<int>(std::lround(groesse * kVergroesserung)));
    schrift.setHintingPreference(QFont::PreferVerticalHinting);
    if (schrift.letterSpacing() != 0.0) {
        schrift.setLetterSpacing(QFont::AbsoluteSpacing, schrift.letterSpacing() * kVergroesserung);
    }
    return schrift;
}

Schriftsatz::Schriftsatz(const QFont& schrift) : Schriftsatz(schrift, Schrift::groesse(schrift)) {}

Schriftsatz::Schriftsatz(const QFont& schrift, double groesse)
    : gross_(doppelt(schrift, groesse)),
      groesse_(groesse),
      sperrung_(schrift.letterSpacing()),
      gemerkt_(std::make_unique<QCache<QString, Gemerkt>>(kGemerkte)) {
    const QFontMetricsF mass(gross_);
    oberlaenge_ = mass.ascent() / kVergroesserung;
    unterlaenge_ = mass.descent() / kVergroesserung;
}

double Schriftsatz::breite(QStringView text) {
    return hole(ungeteilt(text)).ganz.breite;
}

void Schriftsatz::zeichne(QPainter& maler, const QRectF& kasten, Qt::Alignment ausrichtung, QStringView text) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const double mitte = kasten.center().y() + (oberlaenge_ - unterlaenge_) / 2;
    const Satz& satz = passend(ungeteilt(text), kasten.width());
    const double rest = std::max(0.0, kasten.width() - satz.breite);
    double vorn = (ausrichtung & Qt::AlignHCenter) != 0 ? rest / 2 : 0.0;
    if ((ausrichtung & Qt::AlignRight) != 0) {
        vorn = rest;
    }
    const QPointF anfang(kasten.left() + vorn, std::round(mitte * verhaeltnis) / verhaeltnis);
    for (const QGlyphRun& lauf : satz.laeufe) {
        maler.drawGlyphRun(anfang, lauf);
    }
}

Schriftsatz::Satz Schriftsatz::setze(const QString& text) {
    QTextLayout umbruch(text, gross_);
    QTextOption wahl;
    // A text that begins from the right runs so as a whole, and its ellipsis stands on the left. A path does not: it
    // leads from left to right, whatever its folders are called.
    const bool vonRechts = kuerzung_ != Qt::ElideLeft && text.isRightToLeft();
    wahl.setTextDirection(vonRechts ? Qt::RightToLeft : Qt::LeftToRight);
    wahl.setWrapMode(QTextOption::NoWrap);
    umbruch.setTextOption(wahl);
    umbruch.beginLayout();
    QTextLine zeile = umbruch.createLine();
    umbruch.endLayout();
    if (!zeile.isValid()) {
        return {};
    }
    Satz satz;
    satz.breite = std::max(0.0, zeile.horizontalAdvance() / kVergroesserung - sperrung_);
    satz.laeufe = umbruch.glyphRuns();
    for (QGlyphRun& lauf : satz.laeufe) {
        QList<QPointF> punkte = lauf.positions();
        for (QPointF& punkt : punkte) {
            punkt = (punkt - QPointF(0.0, zeile.ascent())) / kVergroesserung;
        }
        lauf.setPositions(punkte);
        lauf.setRawFont(verkleinert(lauf.rawFont()));
    }
    return satz;
}

/// The same font in the size to paint; the same object each time, as the glyphs' pictures hang on it.
QRawFont Schriftsatz::verkleinert(const QRawFont& gross) {
    const auto platz = std::find_if(schriften_.begin(), schriften_.end(),
                                    [&](const Schriftpaar& paar) { return paar.gross == gross; });
    if (platz != schriften_.end()) {
        return platz->klein;
    }
    QRawFont klein = gross;
    klein.setPixelSize(gross.pixelSize() * groesse_ / gross_.pixelSize());
    schriften_.push_back({gross, klein});
    return klein;
}

Schriftsatz::Gemerkt& Schriftsatz::hole(const QString& text) {
    Gemerkt* gemerkt = gemerkt_->object(text);
    if (gemerkt == nullptr) {
        gemerkt = new Gemerkt{setze(text)};
        gemerkt_->insert(QString(text.constData(), text.size()), gemerkt);
    }
    return *gemerkt;
}

QString Schriftsatz::gekuerzt(const QString& text, double platz) const {
    return QFontMetricsF(gross_).elidedText(text, kuerzung_, (platz + sperrung_) * kVergroesserung);
}

const Schriftsatz::Satz& Schriftsatz::passend(const QString& text, double platz) {
    Gemerkt& gemerkt = hole(text);
    if (gemerkt.ganz.breite <= platz + kSpielraum) {
        return gemerkt.ganz;
    }
    if (gemerkt.platz != platz) {
        gemerkt.gekuerzt = setze(gekuerzt(text, platz));
        gemerkt.platz = platz;
    }
    return gemerkt.gekuerzt;
}

}  // namespace spurkiste
