#include "ui/detail/Schriftsatz.h"

#include <QFontMetricsF>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <functional>

namespace spurkiste {

namespace {

// A text may stand in one of a few places, which its hash names: no list of ages to keep, no memory to move.
constexpr std::size_t kFaecher = 512;
constexpr std::size_t kProFach = 4;

// The toolkit knows whole pixels only, so texts are shaped at twice their size and the glyphs' places halved. That
// holds as long as hinting leaves the widths alone; upwards it may, for crisp lines.
constexpr double kVergroesserung = 2.0;

constexpr double kSpielraum = 0.01;  // for sums of fractions

/// The text without copying it; for as long as `text` lives.
QString sicht(std::u16string_view text) {
    return QString::fromRawData(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
}

QFont vergroessert(QFont schrift, double groesse) {
    schrift.setPixelSize(static_cast<int>(std::lround(groesse * kVergroesserung)));
    schrift.setHintingPreference(QFont::PreferVerticalHinting);
    return schrift;
}

}  // namespace

Schriftsatz::Schriftsatz(const QFont& schrift, double groesse)
    : gross_(vergroessert(schrift, groesse)), groesse_(groesse), gemerkt_(kFaecher * kProFach) {
    const QFontMetricsF mass(gross_);
    oberlaenge_ = mass.ascent() / kVergroesserung;
    unterlaenge_ = mass.descent() / kVergroesserung;

    const QRawFont roh = verkleinert(QRawFont::fromFont(gross_));
    int anzahl = static_cast<int>(glyphen_.size());
    roh.glyphIndexesForChars(reinterpret_cast<const QChar*>(kZahlzeichen.data()), anzahl, glyphen_.data(), &anzahl);
    for (auto& reihe : schritte_) {
        reihe.fill(kUnbekannt);
    }
    zahl_.setRawFont(roh);
}

double Schriftsatz::breite(std::u16string_view text) {
    return setzeZahl(text) ? zahlBreite_ : hole(text).ganz.breite;
}

void Schriftsatz::zeichne(QPainter& maler, const QRectF& kasten, Qt::Alignment ausrichtung, std::u16string_view text) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const double mitte = kasten.center().y() + (oberlaenge_ - unterlaenge_) / 2;
    const double grundlinie = std::round(mitte * verhaeltnis) / verhaeltnis;
    const auto links = [&](double breite) {
        const double rest = std::max(0.0, kasten.width() - breite);
        if ((ausrichtung & Qt::AlignRight) != 0) {
            return kasten.left() + rest;
        }
        return kasten.left() + ((ausrichtung & Qt::AlignHCenter) != 0 ? rest / 2 : 0.0);
    };
    if (setzeZahl(text) && zahlBreite_ <= kasten.width() + kSpielraum) {
        zahl_.setRawData(zahlGlyphen_.data(), zahlPunkte_.data(), static_cast<int>(text.size()));
        maler.drawGlyphRun({links(zahlBreite_), grundlinie}, zahl_);
        return;
    }
    const Satz& satz = passend(hole(text), kasten.width());
    const QPointF anfang(links(satz.breite), grundlinie);
    for (const QGlyphRun& lauf : satz.laeufe) {
        maler.drawGlyphRun(anfang, lauf);
    }
}

Schriftsatz::Satz Schriftsatz::setze(const QString& text) {
    QTextLayout umbruch(text, gross_);
    QTextOption wahl;
    wahl.setTextDirection(Qt::LeftToRight);  // of the line; words of other scripts still run their own way
    wahl.setWrapMode(QTextOption::NoWrap);
    umbruch.setTextOption(wahl);
    umbruch.beginLayout();
    QTextLine zeile = umbruch.createLine();
    umbruch.endLayout();
    if (!zeile.isValid()) {
        return {};
    }
    Satz satz;
    satz.breite = zeile.horizontalAdvance() / kVergroesserung;
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

Schriftsatz::Gemerkt& Schriftsatz::hole(std::u16string_view text) {
    const std::size_t fach = std::hash<std::u16string_view>{}(text) % kFaecher;
    const auto anfang = gemerkt_.begin() + static_cast<std::ptrdiff_t>(fach * kProFach);
    const auto ende = anfang + kProFach;
    auto platz = std::find_if(anfang, ende, [&](const Gemerkt& g) { return g.wann != 0 && g.text == text; });
    if (platz == ende) {
        platz = std::min_element(anfang, ende, [](const Gemerkt& a, const Gemerkt& b) { return a.wann < b.wann; });
        platz->text = text;
        platz->ganz = setze(sicht(text));
        platz->platz = -1.0;
    }
    platz->wann = ++uhr_;
    return *platz;
}

const Schriftsatz::Satz& Schriftsatz::passend(Gemerkt& gemerkt, double platz) {
    if (gemerkt.ganz.breite <= platz + kSpielraum) {
        return gemerkt.ganz;
    }
    if (gemerkt.platz != platz) {
        const QString kurz =
            QFontMetricsF(gross_).elidedText(sicht(gemerkt.text), Qt::ElideRight, platz * kVergroesserung);
        gemerkt.gekuerzt = setze(kurz);
        gemerkt.platz = platz;
    }
    return gemerkt.gekuerzt;
}

bool Schriftsatz::setzeZahl(std::u16string_view text) {
    if (text.empty() || text.size() > kLaengsteZahl) {
        return false;
    }
    double x = 0.0;
    std::size_t zeichen = kZahlzeichen.find(text.front());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t naechstes = i + 1 < text.size() ? kZahlzeichen.find(text[i + 1]) : kZahlzeichen.size();
        if (zeichen == std::u16string_view::npos || naechstes == std::u16string_view::npos) {
            return false;
        }
        const double weite = schritt(zeichen, naechstes);
        if (std::isnan(weite)) {
            return false;
        }
        zahlGlyphen_[i] = glyphen_[zeichen];
        zahlPunkte_[i] = {x, 0.0};
        x += weite;
        zeichen = naechstes;
    }
    zahlBreite_ = x;
    return true;
}

/// How far after one character the next one stands (or the text ends), kerning included; NaN where the font does
/// anything but put the two glyphs side by side.
double Schriftsatz::schritt(std::size_t zeichen, std::size_t naechstes) {
    double& weite = schritte_[zeichen][naechstes];
    if (weite == kUnbekannt) {
        const bool letztes = naechstes == kZahlzeichen.size();
        QString paar(sicht(kZahlzeichen.substr(zeichen, 1)));
        QList<quint32> erwartet{glyphen_[zeichen]};
        if (!letztes) {
            paar += QChar(kZahlzeichen[naechstes]);
            erwartet += glyphen_[naechstes];
        }
        const Satz satz = setze(paar);
        const bool schlicht = satz.laeufe.size() == 1 && satz.laeufe.front().glyphIndexes() == erwartet &&
                              satz.laeufe.front().rawFont() == zahl_.rawFont();
        if (!schlicht) {
            weite = std::numeric_limits<double>::quiet_NaN();
        } else {
            weite = letztes ? satz.breite : satz.laeufe.front().positions().back().x();
        }
    }
    return weite;
}

}  // namespace spurkiste
