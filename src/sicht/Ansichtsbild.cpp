#include "sicht/Ansichtsbild.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <limits>

#include "base/Text.h"
#include "sicht/Formate.h"
#include "sicht/Reihenfolge.h"
#include "sicht/Wortliste.h"

namespace spurkiste {

namespace {

constexpr Leertext kNichtsGefunden{"Nichts gefunden", "Suche und Filter passen auf keine Datei."};
constexpr Leertext kKeineDateien{"Keine GPX-Dateien", "GPX-Dateien hierher ziehen oder mit + importieren."};
constexpr Leertext kWirdGeoeffnet{"Bibliothek wird geöffnet", "Gleich sind die Dateien da."};

/// The filters during a pass over the records: what they ask for, and the texts that each of them would find.
class Filterlauf {
  public:
    Filterlauf(const Filterwahl& wahl, const Zeilenspeicher& speicher) : wahl_(wahl), speicher_(speicher) {
        for (const Filterangaben& filter : kFilter) {
            const Wortliste& worte = speicher.worte(filter.feld);
            gesehen_[filter.feld].resize(filter.faelle->empty() ? worte.umfang() : filter.faelle->size());
            gesucht_[filter.feld] = wahl[filter.feld] ? nummer(filter, *wahl[filter.feld]) : Wortliste::kKeine;
        }
    }

    /// The filters that a record fails.
    [[nodiscard]] Fehlmenge pruefe(const Filterwerte& werte) const {
        Fehlmenge fehlt;
        for (const Filterangaben& filter : kFilter) {
            const auto gesucht = gesucht_[filter.feld];
            fehlt.nimm(filter.feld, gesucht != Wortliste::kKeine && werte[filter.feld] != gesucht);
        }
        return fehlt;
    }

    void sieh(const Filterwerte& werte, const Fehlmenge& fehlt) {
        for (const Filterangaben& filter : kFilter) {
            if (werte[filter.feld] != Wortliste::kKeine && fehlt.leerBisAuf(filter.feld)) {
                gesehen_[filter.feld][werte[filter.feld]] = 1;
            }
        }
    }

    /// The texts that were seen and may be offered, and the current choice.
    [[nodiscard]] std::vector<std::string> optionen(const Filterangaben& filter) const {
        return filter.faelle->empty() ? ausWorten(filter) : ausFaellen(filter);
    }

  private:
    [[nodiscard]] Wortliste::Nummer nummer(const Filterangaben& filter, const std::string& text) const {
        const auto& faelle = *filter.faelle;
        if (faelle.empty()) {
            return speicher_.worte(filter.feld).suche(text);
        }
        return static_cast<Wortliste::Nummer>(std::find(faelle.begin(), faelle.end(), text) - faelle.begin());
    }

    [[nodiscard]] std::vector<std::string> ausFaellen(const Filterangaben& filter) const {
        std::vector<std::string> ergebnis;
        for (Wortliste::Nummer fall = 0; fall < filter.faelle->size(); ++fall) {
            if (gesehen_[filter.feld][fall] != 0 || gesucht_[filter.feld] == fall) {
                ergebnis.emplace_back((*filter.faelle)[fall]);
            }
        }
        return ergebnis;
    }

    [[nodiscard]] std::vector<std::string> ausWorten(const Filterangaben& filter) const {
        std::vector<std::string> ergebnis;
        for (const auto& [wort, nummer] : speicher_.worte(filter.feld).worte()) {
            if (gesehen_[filter.feld][nummer] != 0 && (filter.nieAngeboten->empty() || wort != *filter.nieAngeboten)) {
                ergebnis.push_back(wort);
            }
        }
        if (const auto& gewaehlt = wahl_[filter.feld]) {
            const std::string wahl = text::nfc(*gewaehlt);
            const auto stelle = std::lower_bound(ergebnis.begin(), ergebnis.end(), wahl);
            if (stelle == ergebnis.end() || *stelle != wahl) {
                ergebnis.insert(stelle, wahl);
            }
        }
        return ergebnis;
    }

    const Filterwahl& wahl_;
    const Zeilenspeicher& speicher_;
    JeFilter<Wortliste::Nummer> gesucht_;          // kKeine: no filter
    JeFilter<std::vector<std::uint8_t>> gesehen_;  // by number
};

/// Finds the first record of a path, when there is just one path.
class Auswahlsuche {
  public:
    explicit Auswahlsuche(const Pfadmenge& auswahl)
        : pfad_(auswahl.size() == 1 ? &*auswahl.begin() : nullptr),
          hash_(pfad_ != nullptr ? Pfadmenge::Glied::hash(*pfad_) : 0) {}

    void sieh(const Merkmale& merkmale) {
        if (pfad_ != nullptr && merkmale.pfadHash == hash_ && merkmale.zeile->eintrag()->pfad == *pfad_) {
            gefunden_ = merkmale.zeile->eintrag();
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
    return berechneAnsichtsbild(zustand, texte, speicher);
}

Ansichtsbild berechneAnsichtsbild(const Ansichtszustand& zustand, const Ansichtstexte& texte,
                                  Zeilenspeicher& speicher) {
    const std::vector<Merkmale>& merkmale = speicher.merkmale();
    const std::string gesucht = text::falte(zustand.suche, texte.sprache);
    Filterlauf filter(zustand.filter, speicher);
    Auswahlsuche auswahl(zustand.auswahl);

    Ansichtsbild bild;
    bild.anzahl = merkmale.size();
    bild.filterAktiv = zustand.filterAktiv();
    std::vector<std::uint8_t> sichtbar(merkmale.size());
    std::size_t anzahlSichtbar = 0;
    for (std::size_t stelle = 0; stelle < merkmale.size(); ++stelle) {
        const Merkmale& einer = merkmale[stelle];
        auswahl.sieh(einer);
        const Fehlmenge fehlt = filter.pruefe(einer.filterwerte);
        if (fehlt.mehrAlsEiner() || !text::enthaelt(einer.suchtext, gesucht)) {
            continue;  // counts for nothing
        }
        filter.sieh(einer.filterwerte, fehlt);
        if (fehlt.leer()) {
            sichtbar[stelle] = 1;
            ++anzahlSichtbar;
            bild.summeMeter = endlicheSumme(bild.summeMeter, einer.streckeMeter);
        }
    }

    bild.zeilen.reserve(anzahlSichtbar);
    for (const auto stelle : speicher.reihenfolge(zustand.sortierung)) {
        if (sichtbar[stelle] != 0) {
            bild.zeilen.push_back(merkmale[stelle].zeile);
        }
    }
    bild.ausgewaehlt = auswahl.gefunden();
    for (const Filterangaben& einer : kFilter) {
        bild.optionen[einer.feld] = filter.optionen(einer);
    }
    if (zustand.oeffnung != Ansichtszustand::Oeffnung::offen) {
        if (zustand.oeffnung == Ansichtszustand::Oeffnung::dauert && bild.zeilen.empty()) {
            bild.leer = kWirdGeoeffnet;
        }
        return bild;
    }
    bild.routenText = anzahlText(bild, text::gross(texte.routen, texte.sprache));
    bild.dateienText = anzahlText(bild, texte.dateien);
    bild.summeText = Formate::strecke(bild.summeMeter);
    bild.gesamtText = bild.summeText + " " + texte.gesamt;
    if (bild.zeilen.empty() && !zustand.laedt) {
        bild.leer = bild.filterAktiv ? kNichtsGefunden : kKeineDateien;
    }
    return bild;
}

Eintrag ausgewaehlter(const Pfadmenge& auswahl, const Zeilenspeicher& speicher) {
    Auswahlsuche suche(auswahl);
    for (const Merkmale& einer : speicher.merkmale()) {
        suche.sieh(einer);
    }
    return suche.gefunden();
}

}  // namespace spurkiste
