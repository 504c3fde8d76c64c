#include "sicht/Ansichtsbild.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>
#include <unordered_set>

#include "base/Text.h"
#include "sicht/Formate.h"
#include "sicht/Reihenfolge.h"
#include "sicht/Wortliste.h"

namespace spurkiste {

namespace {

constexpr Leertext kNichtsGefunden{"Nichts gefunden", "Suche und Filter passen auf keine Datei."};
constexpr Leertext kKeineDateien{"Keine GPX-Dateien", "GPX-Dateien hierher ziehen oder mit + importieren."};

/// A filter whose choices are texts, and the texts that it would find.
class Textfilter {
  public:
    Textfilter(FilterFeld feld, const std::optional<std::string>& wahl, const Wortliste& liste)
        : feld_(feld), wahl_(wahl), liste_(liste), gesehen_(liste.umfang()) {
        if (wahl) {
            gesucht_ = liste.suche(*wahl);
        }
    }

    void pruefe(Wortliste::Nummer wort, Fehlmenge& fehlt) const {
        fehlt.nimm(feld_, gesucht_ != Wortliste::kKeine && wort != gesucht_);
    }

    void sieh(Wortliste::Nummer wort, const Fehlmenge& fehlt) {
        if (wort != Wortliste::kKeine && fehlt.leerBisAuf(feld_)) {
            gesehen_[wort] = 1;
        }
    }

    /// The texts that were seen, without one that is never offered, and the current choice.
    [[nodiscard]] std::vector<std::string> optionen(std::string_view ohne = {}) const {
        std::vector<std::string> ergebnis;
        for (const auto& [wort, nummer] : liste_.worte()) {
            if (gesehen_[nummer] != 0 && (ohne.empty() || wort != ohne)) {
                ergebnis.push_back(wort);
            }
        }
        if (wahl_) {
            const std::string wahl = text::nfc(*wahl_);
            const auto stelle = std::lower_bound(ergebnis.begin(), ergebnis.end(), wahl);
            if (stelle == ergebnis.end() || *stelle != wahl) {
                ergebnis.insert(stelle, wahl);
            }
        }
        return ergebnis;
    }

  private:
    FilterFeld feld_;
    const std::optional<std::string>& wahl_;
    const Wortliste& liste_;
    Wortliste::Nummer gesucht_ = Wortliste::kKeine;  // no filter
    std::vector<std::uint8_t> gesehen_;              // by number
};

/// A filter of fixed cases, and the cases that would find something.
template <typename Filter>
class Fallfilter {
  public:
    Fallfilter(FilterFeld feld, Filter wahl) : feld_(feld), wahl_(fallmenge(wahl)) {}

    void pruefe(Fallmenge passend, Fehlmenge& fehlt) const { fehlt.nimm(feld_, (passend & wahl_) == 0); }

    void sieh(Fallmenge passend, const Fehlmenge& fehlt) {
        if (fehlt.leerBisAuf(feld_)) {
            gesehen_ |= passend;
        }
    }

    [[nodiscard]] std::vector<Filter> optionen() const {
        std::vector<Filter> ergebnis;
        for (const auto& fall : faelleVon(Filter{})) {
            if (((gesehen_ | wahl_ | fallmenge(Filter::alle)) & fallmenge(fall.wert)) != 0) {
                ergebnis.push_back(fall.wert);
            }
        }
        return ergebnis;
    }

  private:
    FilterFeld feld_;
    Fallmenge wahl_;
    Fallmenge gesehen_ = 0;
};

/// Finds the first record of a path, when there is just one path.
class Auswahlsuche {
  public:
    explicit Auswahlsuche(const std::unordered_set<std::string>& auswahl)
        : pfad_(auswahl.size() == 1 ? &*auswahl.begin() : nullptr),
          hash_(pfad_ != nullptr ? std::hash<std::string>{}(*pfad_) : 0) {}

    void sieh(const Platz& platz) {
        if (pfad_ != nullptr && platz.pfadHash == hash_ && platz.zeile->eintrag()->pfad == *pfad_) {
            gefunden_ = platz.zeile->eintrag();
            pfad_ = nullptr;
        }
    }

    [[nodiscard]] const Eintrag& gefunden() const { return gefunden_; }

  private:
    const std::string* pfad_;  // absent when there is nothing (more) to find
    std::size_t hash_;
    Eintrag gefunden_;
};

/// A sum that stays a number whatever a record claims.
double endlicheSumme(double summe, double summand) {
    const double neu = summe + (std::isfinite(summand) ? summand : 0.0);
    return std::clamp(neu, std::numeric_limits<double>::lowest(), std::numeric_limits<double>::max());
}

std::string anzahlText(const Ansichtsbild& bild, std::string_view wort) {
    std::string ergebnis = bild.filterAktiv ? std::to_string(bild.zeilen.size()) + " / " : std::string();
    return ergebnis.append(std::to_string(bild.anzahl)).append(" ").append(wort);
}

}  // namespace

Ansichtsbild berechneAnsichtsbild(const std::vector<Eintrag>& eintraege, const Ansichtszustand& zustand,
                                  const Ansichtstexte& texte, Zeilenspeicher& speicher) {
    speicher.gleicheAb(eintraege, texte);
    const std::vector<Platz>& plaetze = speicher.plaetze();
    const std::string gesucht = text::falte(zustand.suche, texte.sprache);
    Textfilter start(FilterFeld::start, zustand.startFilter, speicher.orte());
    Textfilter ziel(FilterFeld::ziel, zustand.zielFilter, speicher.orte());
    Textfilter sport(FilterFeld::sport, zustand.sportFilter, speicher.sportarten());
    Fallfilter ghost(FilterFeld::ghost, zustand.ghostFilter);
    Fallfilter art(FilterFeld::art, zustand.artFilter);
    Fallfilter laenge(FilterFeld::laenge, zustand.laengenFilter);
    Auswahlsuche auswahl(zustand.auswahl);

    Ansichtsbild bild;
    bild.anzahl = eintraege.size();
    bild.filterAktiv = zustand.filterAktiv();
    std::vector<std::uint8_t> sichtbar(plaetze.size());
    std::size_t anzahlSichtbar = 0;
    for (std::size_t stelle = 0; stelle < plaetze.size(); ++stelle) {
        const Platz& platz = plaetze[stelle];
        auswahl.sieh(platz);
        Fehlmenge fehlt;
        start.pruefe(platz.start, fehlt);
        ziel.pruefe(platz.ziel, fehlt);
        sport.pruefe(platz.sport, fehlt);
        ghost.pruefe(platz.ghost, fehlt);
        art.pruefe(platz.art, fehlt);
        laenge.pruefe(platz.laenge, fehlt);
        if (fehlt.mehrAlsEiner() || !text::enthaelt(platz.suchtext, gesucht)) {
            continue;  // counts for nothing
        }
        start.sieh(platz.start, fehlt);
        ziel.sieh(platz.ziel, fehlt);
        sport.sieh(platz.sport, fehlt);
        ghost.sieh(platz.ghost, fehlt);
        art.sieh(platz.art, fehlt);
        laenge.sieh(platz.laenge, fehlt);
        if (fehlt.leer()) {
            sichtbar[stelle] = 1;
            ++anzahlSichtbar;
            bild.summeMeter = endlicheSumme(bild.summeMeter, platz.streckeMeter);
        }
    }

    bild.zeilen.reserve(anzahlSichtbar);
    for (const auto stelle : speicher.reihenfolge(zustand.sortierung)) {
        if (sichtbar[stelle] != 0) {
            bild.zeilen.push_back(plaetze[stelle].zeile);
        }
    }
    bild.ausgewaehlt = auswahl.gefunden();
    bild.startOrte = start.optionen();
    bild.zielOrte = ziel.optionen();
    bild.sportarten = sport.optionen(kStrich);
    bild.ghostFaelle = ghost.optionen();
    bild.artFaelle = art.optionen();
    bild.laengenFaelle = laenge.optionen();
    bild.routenText = anzahlText(bild, text::gross(texte.routen, texte.sprache));
    bild.dateienText = anzahlText(bild, texte.dateien);
    bild.summeText = Formate::strecke(bild.summeMeter);
    bild.gesamtText = bild.summeText + " " + texte.gesamt;
    if (bild.zeilen.empty() && !zustand.laedt) {
        bild.leer = bild.filterAktiv ? kNichtsGefunden : kKeineDateien;
    }
    return bild;
}

}  // namespace spurkiste
