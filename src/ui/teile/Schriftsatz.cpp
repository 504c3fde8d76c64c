#include "ui/teile/Schriftsatz.h"

#include <QFontMetricsF>
#include <QRawFont>
#include <QTextLayout>
#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <optional>

namespace spurkiste {

namespace {

// A text may stand in one of a few places, which its hash names: no list of ages to keep, no memory to move.
constexpr std::size_t kFaecher = 128;
constexpr std::size_t kProFach = 4;

// The toolkit knows whole pixels only, so texts are shaped at twice their size and the glyphs' places halved. That
// holds as long as hinting leaves the widths alone; upwards it may, for crisp lines.
constexpr double kVergroesserung = 2.0;

// Far more pairs than the names of a library have; beyond three quarters of it they are collected anew.
constexpr std::size_t kPaare = 1U << 12U;

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

/// Characters of scripts that do not join and of which none stands over another: what a pair of them does, it does in
/// every text.
bool istEinfach(char16_t zeichen) {
    const auto zwischen = [zeichen](char16_t von, char16_t bis) { return zeichen >= von && zeichen <= bis; };
    constexpr char16_t kWeicherTrennstrich = 0x00ad;
    return zwischen(u' ', u'~') || (zwischen(0x00a0, 0x017f) && zeichen != kWeicherTrennstrich) ||
           zwischen(0x0391, 0x03c9) || zwischen(0x0400, 0x045f) || zwischen(0x2013, 0x2014) ||
           zwischen(0x2018, 0x201e) || zeichen == u'…';
}

}  // namespace

Schriftsatz::Schriftsatz(const QFont& schrift, double groesse)
    : gross_(vergroessert(schrift, groesse)), groesse_(groesse), gemerkt_(kFaecher * kProFach), paare_(kPaare) {
    const QFontMetricsF mass(gross_);
    oberlaenge_ = mass.ascent() / kVergroesserung;
    unterlaenge_ = mass.descent() / kVergroesserung;

    schlicht_.setRawFont(verkleinert(QRawFont::fromFont(gross_)));
}

double Schriftsatz::breite(std::u16string_view text) {
    return setzeSchlicht(text, std::numeric_limits<double>::infinity()) ? breite_ : hole(text).ganz.breite;
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
    if (setzeSchlicht(text, std::max(0.0, kasten.width()))) {
        schlicht_.setRawData(glyphen_.data(), punkte_.data(), anzahl_);
        maler.drawGlyphRun({links(breite_), grundlinie}, schlicht_);
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

/// Puts a text together from pairs, with an ellipsis where it gets too long. False when it cannot be done that way.
bool Schriftsatz::setzeSchlicht(std::u16string_view text, double platz) {
    std::size_t gelesen = 0;
    // Reads a character, or as many as become a ligature; zero at the end.
    const auto lies = [&]() -> std::optional<char16_t> {
        if (gelesen == text.size()) {
            return u'\0';
        }
        char16_t zeichen = text[gelesen++];
        if (!istEinfach(zeichen)) {
            return std::nullopt;
        }
        while (gelesen < text.size() && istEinfach(text[gelesen])) {
            const char16_t verbindung = paar(zeichen, text[gelesen]).verbindung;
            if (verbindung == 0) {
                break;
            }
            zeichen = verbindung;
            ++gelesen;
        }
        return zeichen;
    };
    double x = 0.0;
    std::size_t anzahl = 0;
    std::optional<char16_t> zeichen = lies();
    while (zeichen && *zeichen != 0 && x <= platz + kSpielraum) {
        const std::optional<char16_t> naechstes = lies();
        if (!naechstes || anzahl == kLaengster) {
            return false;
        }
        const Paar hier = paar(*zeichen, *naechstes);
        if (std::isnan(hier.schritt)) {
            return false;
        }
        zeichen_[anzahl] = *zeichen;
        glyphen_[anzahl] = hier.glyphe;
        punkte_[anzahl] = {x, 0.0};
        x += hier.schritt;
        ++anzahl;
        zeichen = naechstes;
    }
    if (!zeichen) {
        return false;
    }
    if (x > platz + kSpielraum) {
        constexpr char16_t kPunkte = u'…';
        const Paar punkte = paar(kPunkte, u'\0');
        double stelle = 0.0;
        do {
            --anzahl;
            stelle = anzahl == 0 ? 0.0 : punkte_[anzahl - 1].x() + paar(zeichen_[anzahl - 1], kPunkte).schritt;
        } while (anzahl > 0 && stelle + punkte.schritt > platz);
        x = stelle + punkte.schritt;
        if (std::isnan(x)) {
            return false;
        }
        glyphen_[anzahl] = punkte.glyphe;
        punkte_[anzahl] = {stelle, 0.0};
        ++anzahl;
    }
    anzahl_ = static_cast<int>(anzahl);
    breite_ = x;
    return true;
}

Schriftsatz::Paar Schriftsatz::paar(char16_t zeichen, char16_t naechstes) {
    const std::uint32_t schluessel = (std::uint32_t{zeichen} << 16U) | naechstes;
    std::size_t platz = (schluessel * 0x9e3779b1U) >> 20U;
    static_assert(kPaare == 1U << (32U - 20U));
    while (paare_[platz].schluessel != schluessel) {
        if (paare_[platz].schluessel == 0) {
            if (++paarAnzahl_ > kPaare / 4 * 3) {
                std::fill(paare_.begin(), paare_.end(), Paar());
                paarAnzahl_ = 1;
            }
            return paare_[platz] = miss(zeichen, naechstes);
        }
        platz = (platz + 1) % kPaare;
    }
    return paare_[platz];
}

Schriftsatz::Paar Schriftsatz::miss(char16_t zeichen, char16_t naechstes) {
    Paar paar{(std::uint32_t{zeichen} << 16U) | naechstes, 0, std::numeric_limits<double>::quiet_NaN(), 0};
    const QRawFont& roh = schlicht_.rawFont();
    const auto stueck = [&](char16_t c) {
        return c >= kErsteVerbindung
                   ? verbindungen_[c - kErsteVerbindung]
                   : Verbindung{QString(QChar(c)), roh.glyphIndexesForString(QString(QChar(c))).value(0)};
    };
    const bool letztes = naechstes == u'\0';
    const Verbindung hier = stueck(zeichen);
    QString text = hier.text;
    QList<quint32> erwartet{hier.glyphe};
    if (!letztes) {
        const Verbindung dort = stueck(naechstes);
        text += dort.text;
        erwartet += dort.glyphe;
    }
    const Satz satz = setze(text);
    if (satz.laeufe.size() != 1 || satz.laeufe.front().rawFont() != roh) {
        return paar;
    }
    const QList<quint32> glyphen = satz.laeufe.front().glyphIndexes();
    const QList<QPointF> punkte = satz.laeufe.front().positions();
    const bool aufDerLinie =
        punkte.front().x() == 0.0 &&
        std::all_of(punkte.begin(), punkte.end(), [](const QPointF& punkt) { return std::abs(punkt.y()) < 1e-3; });
    if (!letztes && glyphen.size() == 1 && aufDerLinie) {
        const auto bekannt = std::find_if(verbindungen_.begin(), verbindungen_.end(),
                                          [&](const Verbindung& verbindung) { return verbindung.text == text; });
        paar.verbindung = static_cast<char16_t>(kErsteVerbindung + (bekannt - verbindungen_.begin()));
        if (bekannt == verbindungen_.end()) {
            verbindungen_.push_back({text, glyphen.front()});
        }
    } else if (glyphen == erwartet && aufDerLinie) {
        paar.glyphe = hier.glyphe;
        paar.schritt = letztes ? satz.breite : punkte.back().x();
    }
    return paar;
}

}  // namespace spurkiste
