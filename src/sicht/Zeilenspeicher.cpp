#include "sicht/Zeilenspeicher.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "base/Gemeinsam.h"
#include "base/Text.h"
#include "sicht/Filter.h"

namespace spurkiste {

namespace {

constexpr char kTexttrenner = '\xff';  // in no UTF-8 text, so no search finds a piece of two texts

std::string suchtextVon(const GpxMetadaten& eintrag, std::string_view sprache) {
    std::string ergebnis = text::falte(eintrag.dateiName, sprache) + kTexttrenner;
    for (const auto* text : {&eintrag.spurName, &eintrag.startOrt, &eintrag.zielOrt}) {
        if (*text) {
            ergebnis += text::falte(**text, sprache) + kTexttrenner;
        }
    }
    return ergebnis;
}

Wortliste::Nummer nimm(Wortliste& worte, const Filterangaben& filter, std::optional<std::string_view> wert) {
    if (!wert) {
        return Wortliste::kKeine;
    }
    const auto& faelle = *filter.faelle;
    if (faelle.empty()) {
        return worte.nimm(*wert);
    }
    const auto fall = std::find(faelle.begin(), faelle.end(), *wert);
    assert(fall != faelle.end());
    return static_cast<Wortliste::Nummer>(fall - faelle.begin());
}

}  // namespace

/// What makes the known records the new ones.
struct Zeilenspeicher::Wandel {
    std::vector<Stelle> umzug;      // where each old position is now; ascending, and kWeg where another order is meant
    std::vector<Stelle> gegangene;  // old positions of the others, ascending
    std::vector<Stelle> gekommene;  // new positions that nothing moved to, ascending
    std::vector<std::pair<Stelle, Stelle>> versetzte;  // from and to: of those, the same records elsewhere

    /// Finds among what has gone and come the records that are only elsewhere.
    void findeVersetzte(const std::vector<const GpxMetadaten*>& alte, const std::vector<Eintrag>& neue) {
        std::unordered_map<const GpxMetadaten*, Stelle> nachAdresse;
        for (const Stelle stelle : gegangene) {
            nachAdresse.emplace(alte[stelle], stelle);
        }
        const auto wiederDa = [&](Stelle stelle) {
            const auto fund = nachAdresse.extract(neue[stelle].get());
            if (fund) {
                versetzte.emplace_back(fund.mapped(), stelle);
            }
            return !fund.empty();
        };
        std::erase_if(gekommene, wiederDa);
        std::erase_if(gegangene, [&](Stelle stelle) { return !nachAdresse.contains(alte[stelle]); });
    }
};

bool Zeilenspeicher::istVon(const Ansichtstexte& texte) const {
    return namensordnung_ && texte_.sprache == texte.sprache && texte_.sportarten == texte.sportarten;
}

void Zeilenspeicher::gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte) {
    if (!istVon(texte)) {
        texte_ = texte;
        namensordnung_.emplace(texte.sprache);
        std::fill(adressen_.begin(), adressen_.end(), nullptr);  // no row stays as it is
    }
    Wandel wandel = vergleiche(eintraege);
    if (!wandel.gegangene.empty() || !wandel.gekommene.empty() || !wandel.versetzte.empty()) {
        vollziehe(wandel, eintraege);
    }
}

bool Zeilenspeicher::wirdLangsam(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte) const {
    constexpr std::size_t kViele = 500;  // some milliseconds
    return eintraege.size() > kViele && (!istVon(texte) || vergleiche(eintraege).gekommene.size() > kViele);
}

/// Walks along both lists. Where they differ, something has come or gone, mostly little: the next record that both have
/// is looked for, far as long as that does not happen all the time.
Zeilenspeicher::Wandel Zeilenspeicher::vergleiche(const std::vector<Eintrag>& eintraege) const {
    Wandel wandel;
    wandel.umzug.assign(adressen_.size(), Reihenfolge::kWeg);
    constexpr std::size_t kNah = 8;
    std::size_t weit = 2 * (adressen_.size() + eintraege.size());
    std::size_t alt = 0;
    std::size_t neu = 0;
    const auto gleich = [&](std::size_t a, std::size_t n) {
        return a < adressen_.size() && n < eintraege.size() && adressen_[a] == eintraege[n].get();
    };
    const auto gehe = [&](std::size_t weg, std::size_t dazu) {
        for (; weg > 0; --weg) {
            wandel.gegangene.push_back(static_cast<Stelle>(alt++));
        }
        for (; dazu > 0; --dazu) {
            wandel.gekommene.push_back(static_cast<Stelle>(neu++));
        }
    };
    const auto ueberspringe = [&] {
        const std::size_t rest = std::max(adressen_.size() - alt, eintraege.size() - neu);
        for (std::size_t k = 1; k < rest && !gleich(alt + 1, neu + 1) && (k <= kNah || weit > 0); ++k) {
            weit -= k > kNah ? 1 : 0;
            if (gleich(alt + k, neu)) {
                return gehe(k, 0);
            }
            if (gleich(alt, neu + k)) {
                return gehe(0, k);
            }
        }
        gehe(1, 1);
    };
    while (alt < adressen_.size() && neu < eintraege.size()) {
        if (gleich(alt, neu)) {
            wandel.umzug[alt++] = static_cast<Stelle>(neu++);
        } else {
            ueberspringe();
        }
    }
    gehe(adressen_.size() - alt, eintraege.size() - neu);
    wandel.findeVersetzte(adressen_, eintraege);
    return wandel;
}

void Zeilenspeicher::vollziehe(Wandel& wandel, const std::vector<Eintrag>& eintraege) {
    std::vector<Merkmale> alte = std::exchange(merkmale_, std::vector<Merkmale>(eintraege.size()));
    for (std::size_t stelle = 0; stelle < alte.size(); ++stelle) {
        if (wandel.umzug[stelle] != Reihenfolge::kWeg) {
            merkmale_[wandel.umzug[stelle]] = std::move(alte[stelle]);
        }
    }
    for (const auto& [woher, wohin] : wandel.versetzte) {
        merkmale_[wohin] = std::move(alte[woher]);
    }
    // A file that had another record before keeps its number.
    Kennungen kennungen;
    for (const Stelle stelle : wandel.gegangene) {
        const Zeile& zeile = *alte[stelle].zeile;
        kennungen.emplace(zeile.eintrag()->pfad, zeile.kennung());
    }
    baue(wandel.gekommene, eintraege, kennungen, nullptr, 0);
    for (const Stelle stelle : wandel.gegangene) {
        zahlen_.lasse(*alte[stelle].zeile);
        for (const Filterangaben& filter : kFilter) {
            if (filter.faelle->empty()) {
                worte_[filter.feld].lasse(alte[stelle].filterwerte[filter.feld]);
            }
        }
    }
    adressen_.resize(eintraege.size());
    std::transform(eintraege.begin(), eintraege.end(), adressen_.begin(), [](const auto& e) { return e.get(); });
    reihenfolge_.folge(wandel.umzug, bestand());
}

Zeilenspeicher::Erbe Zeilenspeicher::erbe() const {
    Erbe erbe{{}, naechsteKennung_};
    erbe.zeilen.reserve(merkmale_.size());
    for (const Merkmale& einer : merkmale_) {
        erbe.zeilen.push_back(einer.zeile);
    }
    return erbe;
}

Zeilenspeicher Zeilenspeicher::neuGebaut(const Erbe& erbe, const std::vector<Eintrag>& eintraege,
                                         const Ansichtstexte& texte, const Sortierung& sortierung,
                                         Ausfuehrer* ausfuehrer, unsigned helfer) {
    Zeilenspeicher neuer;
    neuer.texte_ = texte;
    neuer.namensordnung_.emplace(texte.sprache);
    neuer.naechsteKennung_ = erbe.naechsteKennung;
    neuer.merkmale_.resize(eintraege.size());
    Kennungen kennungen;
    kennungen.reserve(erbe.zeilen.size());
    for (const auto& zeile : erbe.zeilen) {
        kennungen.emplace(zeile->eintrag()->pfad, zeile->kennung());
    }
    std::vector<Stelle> alle(eintraege.size());
    std::iota(alle.begin(), alle.end(), Stelle{0});
    neuer.baue(alle, eintraege, kennungen, ausfuehrer, helfer);
    neuer.adressen_.resize(eintraege.size());
    std::transform(eintraege.begin(), eintraege.end(), neuer.adressen_.begin(), [](const auto& e) { return e.get(); });
    (void)neuer.reihenfolge(sortierung);
    return neuer;
}

/// Makes the rows at these positions. Numbers of files and words are given out one after the other, all else is made by
/// whoever is free.
void Zeilenspeicher::baue(const std::vector<Stelle>& stellen, const std::vector<Eintrag>& eintraege,
                          Kennungen& kennungen, Ausfuehrer* ausfuehrer, unsigned helfer) {
    std::vector<std::uint32_t> nummern;
    nummern.reserve(stellen.size());
    for (const Stelle stelle : stellen) {
        const auto bekannt = kennungen.empty() ? Kennungen::node_type() : kennungen.extract(eintraege[stelle]->pfad);
        nummern.push_back(bekannt ? bekannt.mapped() : naechsteKennung_++);
    }
    constexpr std::size_t kStueck = 256;
    std::atomic<std::size_t> naechstes = 0;
    arbeiteGemeinsam(ausfuehrer, helfer, [&] {
        for (std::size_t von = 0; (von = naechstes.fetch_add(kStueck)) < stellen.size();) {
            for (std::size_t i = von; i < std::min(von + kStueck, stellen.size()); ++i) {
                merkmale_[stellen[i]] = baueRoh(eintraege[stellen[i]], nummern[i]);
            }
        }
    });
    for (const Stelle stelle : stellen) {
        zaehleWorte(merkmale_[stelle]);
    }
}

const std::vector<Reihenfolge::Stelle>& Zeilenspeicher::reihenfolge(const Sortierung& sortierung) {
    return reihenfolge_.fuer(sortierung, bestand());
}

Merkmale Zeilenspeicher::baueRoh(const Eintrag& eintrag, std::uint32_t kennung) const {
    const auto geschrieben = GpxSportart::aus(eintrag->sportRoh);
    const auto sportText = texte_.sportAnzeige(*eintrag, geschrieben);
    return {.zeile = std::make_shared<const Zeile>(eintrag, kennung, geschrieben, sportText),
            .suchtext = suchtextVon(*eintrag, texte_.sprache),
            .namensschluessel = namensordnung_->schluessel(eintrag->dateiName),
            .pfadHash = Pfadmenge::Glied::hash(eintrag->pfad),
            .streckeMeter = eintrag->streckeMeter,
            .filterwerte = {}};
}

void Zeilenspeicher::zaehleWorte(Merkmale& merkmale) {
    zahlen_.nimm(*merkmale.zeile);
    const GpxMetadaten& eintrag = *merkmale.zeile->eintrag();
    const auto sportText = texte_.sportAnzeige(eintrag, GpxSportart::aus(eintrag.sportRoh));
    for (const Filterangaben& filter : kFilter) {
        merkmale.filterwerte[filter.feld] = nimm(worte_[filter.feld], filter, filter.wert(eintrag, sportText));
    }
}

}  // namespace spurkiste
