#include "sicht/Zeilenspeicher.h"

#include <algorithm>
#include <cassert>
#include <functional>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

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

/// What is known of a record that does not stay where it is.
struct Zeilenspeicher::Beiseite {
    Merkmale merkmale;  // without a row once they have been taken back
    const GpxMetadaten* adresse;
    Stelle woher;
    Stelle wohin = Reihenfolge::kWeg;
};

void Zeilenspeicher::gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte) {
    if (!namensordnung_ || texte_.sprache != texte.sprache || texte_.sportarten != texte.sportarten) {
        texte_ = texte;
        namensordnung_.emplace(texte.sprache);
        std::fill(adressen_.begin(), adressen_.end(), nullptr);  // no row stays as it is
    }
    const auto [alt, neu] = std::mismatch(adressen_.begin(), adressen_.end(), eintraege.begin(), eintraege.end(),
                                          [](const GpxMetadaten* a, const Eintrag& b) { return a == b.get(); });
    if (alt != adressen_.end() || neu != eintraege.end()) {
        ersetzeAb(static_cast<std::size_t>(alt - adressen_.begin()), eintraege);
    }
}

void Zeilenspeicher::ersetzeAb(std::size_t ab, const std::vector<Eintrag>& eintraege) {
    std::vector<Stelle> umzug(adressen_.size());
    std::iota(umzug.begin(), umzug.end(), Stelle{0});
    std::vector<Beiseite> beiseite = raeumeBeiseite(ab, eintraege);
    merkmale_.resize(eintraege.size());
    const std::vector<std::size_t> offen = holeZurueck(ab, eintraege, beiseite);
    baueNeue(offen, eintraege, beiseite);
    for (const Beiseite& einer : beiseite) {
        umzug[einer.woher] = einer.wohin;
        if (einer.wohin != Reihenfolge::kWeg) {
            continue;
        }
        for (const Filterangaben& filter : kFilter) {
            if (filter.faelle->empty()) {
                worte_[filter.feld].lasse(einer.merkmale.filterwerte[filter.feld]);
            }
        }
    }
    adressen_.resize(eintraege.size());
    std::transform(eintraege.begin(), eintraege.end(), adressen_.begin(), [](const auto& e) { return e.get(); });
    reihenfolge_.folge(umzug, bestand());
}

bool Zeilenspeicher::bleibt(std::size_t stelle, const std::vector<Eintrag>& eintraege) const {
    return stelle < adressen_.size() && stelle < eintraege.size() && adressen_[stelle] == eintraege[stelle].get();
}

/// Takes out what does not stay where it is.
std::vector<Zeilenspeicher::Beiseite> Zeilenspeicher::raeumeBeiseite(std::size_t ab,
                                                                     const std::vector<Eintrag>& eintraege) {
    std::vector<Beiseite> beiseite;
    for (std::size_t stelle = ab; stelle < adressen_.size(); ++stelle) {
        if (!bleibt(stelle, eintraege)) {
            beiseite.push_back({std::move(merkmale_[stelle]), adressen_[stelle], static_cast<Stelle>(stelle)});
        }
    }
    return beiseite;
}

/// Gives records that are still there their rows back; returns the positions of the others.
std::vector<std::size_t> Zeilenspeicher::holeZurueck(std::size_t ab, const std::vector<Eintrag>& eintraege,
                                                     std::vector<Beiseite>& beiseite) {
    std::unordered_map<const GpxMetadaten*, Beiseite*> nachAdresse;
    for (Beiseite& einer : beiseite) {
        nachAdresse.emplace(einer.adresse, &einer);
    }
    std::vector<std::size_t> offen;
    for (std::size_t stelle = ab; stelle < eintraege.size(); ++stelle) {
        if (bleibt(stelle, eintraege)) {
            continue;
        }
        if (const auto fund = nachAdresse.extract(eintraege[stelle].get())) {
            Beiseite& einer = *fund.mapped();
            einer.wohin = static_cast<Stelle>(stelle);
            merkmale_[stelle] = std::move(einer.merkmale);
        } else {
            offen.push_back(stelle);
        }
    }
    return offen;
}

/// Makes rows for new records; a file that had another record before keeps its number.
void Zeilenspeicher::baueNeue(const std::vector<std::size_t>& offen, const std::vector<Eintrag>& eintraege,
                              const std::vector<Beiseite>& beiseite) {
    std::unordered_map<std::string_view, std::uint32_t> kennungen;
    for (const Beiseite& einer : beiseite) {
        if (einer.wohin == Reihenfolge::kWeg) {
            const Zeile& zeile = *einer.merkmale.zeile;
            kennungen.emplace(zeile.eintrag()->pfad, zeile.kennung());
        }
    }
    for (const std::size_t stelle : offen) {
        const auto bekannt = kennungen.extract(eintraege[stelle]->pfad);
        merkmale_[stelle] = baue(eintraege[stelle], bekannt ? bekannt.mapped() : naechsteKennung_++);
    }
}

const std::vector<Reihenfolge::Stelle>& Zeilenspeicher::reihenfolge(const Sortierung& sortierung) {
    return reihenfolge_.fuer(sortierung, bestand());
}

Merkmale Zeilenspeicher::baue(const Eintrag& eintrag, std::uint32_t kennung) {
    const auto geschrieben = GpxSportart::aus(eintrag->sportRoh);
    const auto sportText = texte_.sportAnzeige(*eintrag, geschrieben);
    Filterwerte filterwerte;
    for (const Filterangaben& filter : kFilter) {
        filterwerte[filter.feld] = nimm(worte_[filter.feld], filter, filter.wert(*eintrag, sportText));
    }
    return {.zeile = std::make_shared<const Zeile>(eintrag, kennung, geschrieben, sportText),
            .suchtext = suchtextVon(*eintrag, texte_.sprache),
            .namensschluessel = namensordnung_->schluessel(eintrag->dateiName),
            .pfadHash = std::hash<std::string>{}(eintrag->pfad),
            .streckeMeter = eintrag->streckeMeter,
            .filterwerte = filterwerte};
}

}  // namespace spurkiste
