#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "sicht/Formate.h"
#include "sicht/Spaltenangaben.h"
#include "track/GpxFelder.h"

namespace spurkiste {

/// The columns of the table, from left to right.
enum class Spalte : std::uint8_t { name, datum, sport, laenge, zeit, anstieg, punkte, ghost, art, start, ziel };

/// One row for each column; another column is another row here. Window, command line and header follow.
inline constexpr std::array kSpalten{
    Spaltenangaben{
        .spalte = Spalte::name,
        .titel = schluessel("name"),
        .feld = "dateiName",
        .ordnung = kNachDateiname,
        .text = [](const GpxMetadaten& e, std::string_view) -> Zellentext { return std::string_view(e.dateiName); },
        .farbe = zelle::kTinte,
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 14, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 140, .anfangs = 220, .ideal = 220, .dehnung = 2},
        .terminal = Terminalspalte{.mindestens = 14, .rang = 0},
    },
    Spaltenangaben{
        .spalte = Spalte::datum,
        .titel = schluessel("date"),
        .feld = "datum",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(e.anzeigeDatum().sekunden); }),
        .text = [](const GpxMetadaten& e, std::string_view) -> Zellentext {
            return Formate::datumsFormat(e.anzeigeDatum());
        },
        .farbe = [](const GpxMetadaten& e) { return zelle::tinteWenn(e.datum.has_value()); },
        .tooltip = [](const GpxMetadaten& e) -> std::u16string {
            return e.datum ? u"Erster Zeitstempel der Spur" : u"Kein Zeitstempel — Dateidatum";
        },
        .vorleseText = zelle::kLiesText,
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 100, .anfangs = 100, .ideal = 120, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 9},
    },
    Spaltenangaben{
        .spalte = Spalte::sport,
        .titel = schluessel("sport"),
        .feld = "sportRoh",
        .ordnung = kNachSport,
        .text = [](const GpxMetadaten&, std::string_view sport) -> Zellentext { return sport; },
        .farbe = [](const GpxMetadaten& e) { return zelle::tinteWenn(e.nenntSport()); },
        .tooltip = [](const GpxMetadaten& e) -> std::u16string {
            return e.nenntSport()
                       ? u"Sportart aus der GPX-Datei — wählen, um <type> zu ändern"
                       : u"Automatischer Vorschlag — wählen, um <type> dauerhaft in die GPX-Datei zu schreiben";
        },
        .vorleseText = [](std::u16string_view text,
                          std::u16string_view) { return u"Sportart " + std::u16string(text); },
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 4, .rechts = 2},
        .breite = Spaltenbreite{.mindestens = 96, .anfangs = 118, .ideal = 118, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = 8, .rang = 6},
    },
    Spaltenangaben{
        .spalte = Spalte::laenge,
        .titel = schluessel("length"),
        .feld = "streckeMeter",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(e.streckeMeter); }),
        .text = [](const GpxMetadaten& e, std::string_view) { return zelle::strecke(e.streckeMeter); },
        .farbe = zelle::kTinte,
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::rechts,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 60, .anfangs = 70, .ideal = 76, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 10},
    },
    Spaltenangaben{
        .spalte = Spalte::zeit,
        .titel = schluessel("time"),
        .feld = "dauerSekunden",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(e.dauerSekunden); }),
        .text = [](const GpxMetadaten& e, std::string_view) { return zelle::dauer(e.dauerSekunden); },
        .farbe = zelle::kTinte,
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::rechts,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 60, .anfangs = 65, .ideal = 72, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 8},
    },
    Spaltenangaben{
        .spalte = Spalte::anstieg,
        .titel = schluessel("ascent"),
        .feld = "anstiegMeter",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(e.anstiegMeter); }),
        .text = [](const GpxMetadaten& e, std::string_view) { return zelle::anstieg(e.anstiegMeter); },
        .farbe = zelle::kTinte,
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::rechts,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 56, .anfangs = 60, .ideal = 66, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 7},
    },
    Spaltenangaben{
        .spalte = Spalte::punkte,
        .titel = schluessel("points"),
        .feld = "punkte",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(e.punkte); }),
        .text = [](const GpxMetadaten& e, std::string_view) -> Zellentext { return std::to_string(e.punkte); },
        .farbe = zelle::kTinte,
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::rechts,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 52, .anfangs = 56, .ideal = 62, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 1},
    },
    Spaltenangaben{
        .spalte = Spalte::ghost,
        .titel = woertlich("Ghost"),
        .feld = "hatZeitstempel",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(std::int64_t{e.ghostWert()}); }),
        .text = [](const GpxMetadaten& e, std::string_view) -> Zellentext { return e.hatZeitstempel ? u"✓" : u"–"; },
        .farbe =
            [](const GpxMetadaten& e) { return e.hatZeitstempel ? Schriftfarbe::gruen : Schriftfarbe::tinteLeise; },
        .tooltip = [](const GpxMetadaten& e) -> std::u16string {
            return e.hatZeitstempel ? u"Zeitstempel vorhanden — Ghost-tauglich" : u"Keine Zeitstempel";
        },
        .vorleseText = [](std::u16string_view, std::u16string_view tooltip) { return std::u16string(tooltip); },
        .seite = Seite::mitte,
        .rand = Spaltenrand{.links = 0, .rechts = 0},
        .breite = Spaltenbreite{.mindestens = 42, .anfangs = 44, .ideal = 48, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 2},
    },
    Spaltenangaben{
        .spalte = Spalte::art,
        .titel = schluessel("type"),
        .feld = "rundkurs",
        .ordnung = nachZahl([](const GpxMetadaten& e) { return Ordnung::alsWort(std::int64_t{e.artWert()}); }),
        .text = [](const GpxMetadaten& e, std::string_view) -> Zellentext {
            return e.rundkurs ? u"⟲ Rundkurs" : u"→ Strecke";
        },
        .farbe = [](const GpxMetadaten&) { return Schriftfarbe::tinteLeise; },
        .tooltip = zelle::kOhneHilfe,
        .vorleseText = zelle::kLiesText,
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 7, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 76, .anfangs = 82, .ideal = 92, .dehnung = 0},
        .terminal = Terminalspalte{.mindestens = std::nullopt, .rang = 3},
    },
    Spaltenangaben{
        .spalte = Spalte::start,
        .titel = woertlich("Start"),
        .feld = "startOrt",
        .ordnung = kUngeordnet,
        .text = [](const GpxMetadaten& e, std::string_view) { return zelle::ort(e.startOrt, e.start); },
        .farbe = [](const GpxMetadaten& e) { return zelle::tinteWenn(e.startOrt.has_value()); },
        .tooltip = [](const GpxMetadaten& e) { return zelle::ortshilfe(e.start); },
        .vorleseText = zelle::kLiesText,
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 5, .rechts = 7},
        .breite = Spaltenbreite{.mindestens = 90, .anfangs = 120, .ideal = 120, .dehnung = 1},
        .terminal = Terminalspalte{.mindestens = 8, .rang = 5},
    },
    Spaltenangaben{
        .spalte = Spalte::ziel,
        .titel = woertlich("Ziel"),
        .feld = "zielOrt",
        .ordnung = kUngeordnet,
        .text = [](const GpxMetadaten& e, std::string_view) { return zelle::ort(e.zielOrt, e.ende); },
        .farbe = [](const GpxMetadaten& e) { return zelle::tinteWenn(e.zielOrt.has_value()); },
        .tooltip = [](const GpxMetadaten& e) { return zelle::ortshilfe(e.ende); },
        .vorleseText = zelle::kLiesText,
        .seite = Seite::links,
        .rand = Spaltenrand{.links = 5, .rechts = 8},
        .breite = Spaltenbreite{.mindestens = 90, .anfangs = 120, .ideal = 120, .dehnung = 1},
        .terminal = Terminalspalte{.mindestens = 8, .rang = 4},
    },
};

static_assert(
    [] {
        std::size_t stelle = 0;
        for (const Spaltenangaben& spalte : kSpalten) {
            if (static_cast<std::size_t>(*spalte.spalte) != stelle++ || !istGpxFeld(spalte.feld)) {
                return false;
            }
        }
        return true;
    }(),
    "rows stand in the order of the columns, and what they show is a field of the record");

/// The row of a column.
constexpr const Spaltenangaben& angaben(Spalte spalte) {
    return kSpalten[static_cast<std::size_t>(spalte)];
}

/// One of the widths of each column.
constexpr std::array<int, kSpalten.size()> jeSpalte(Pflicht<int> Spaltenbreite::*angabe) {
    std::array<int, kSpalten.size()> zahlen{};
    std::transform(kSpalten.begin(), kSpalten.end(), zahlen.begin(),
                   [&](const Spaltenangaben& spalte) { return *((*spalte.breite).*angabe); });
    return zahlen;
}

/// Whether the column holds figures, which are shown whole or not at all.
constexpr bool istZahl(Spalte spalte) {
    return angaben(spalte).seite == Seite::rechts;
}

/// Whether a click on the column's header sorts.
constexpr bool istSortierbar(Spalte spalte) {
    return angaben(spalte).ordnung->art != Ordnung::Art::keine;
}

}  // namespace spurkiste
