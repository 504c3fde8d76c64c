#include "sicht/Zeilenspeicher.h"

#include <algorithm>
#include <functional>
#include <memory>
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

Wortliste::Nummer nimm(Wortliste& liste, const std::optional<std::string>& text) {
    return text ? liste.nimm(*text) : Wortliste::kKeine;
}

}  // namespace

void Zeilenspeicher::gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte) {
    const bool neueSprache =
        !namensordnung_ || texte_.sprache != texte.sprache || texte_.sportarten != texte.sportarten;
    if (neueSprache) {
        texte_ = texte;
        namensordnung_.emplace(texte.sprache);
    }
    const auto [alt, neu] = std::mismatch(adressen_.begin(), adressen_.end(), eintraege.begin(), eintraege.end(),
                                          [](const GpxMetadaten* a, const Eintrag& b) { return a == b.get(); });
    if (neueSprache || alt != adressen_.end() || neu != eintraege.end()) {
        ersetzeAb(neueSprache ? 0 : static_cast<std::size_t>(alt - adressen_.begin()), neueSprache, eintraege);
    }
}

void Zeilenspeicher::ersetzeAb(std::size_t ab, bool neueSprache, const std::vector<Eintrag>& eintraege) {
    const auto bleibt = [&](std::size_t stelle) {
        return !neueSprache && stelle < adressen_.size() && stelle < eintraege.size() &&
               adressen_[stelle] == eintraege[stelle].get();
    };

    // What does not stay where it is steps aside.
    struct Beiseite {
        Platz platz;
        std::size_t woher;
    };
    std::vector<Beiseite> beiseite;
    std::unordered_map<const GpxMetadaten*, std::size_t> nachAdresse;
    std::vector<Stelle> umzug(adressen_.size(), Reihenfolge::kWeg);
    for (std::size_t stelle = 0; stelle < adressen_.size(); ++stelle) {
        if (stelle < ab || bleibt(stelle)) {
            umzug[stelle] = static_cast<Stelle>(stelle);
            continue;
        }
        if (!neueSprache) {
            nachAdresse.emplace(adressen_[stelle], beiseite.size());
        }
        beiseite.push_back({std::move(plaetze_[stelle]), stelle});
    }

    // Records that are still there take their rows back.
    std::vector<std::size_t> offen;
    plaetze_.resize(eintraege.size());
    for (std::size_t stelle = ab; stelle < eintraege.size(); ++stelle) {
        if (bleibt(stelle)) {
            continue;
        }
        if (const auto fund = nachAdresse.extract(eintraege[stelle].get())) {
            auto& [platz, woher] = beiseite[fund.mapped()];
            umzug[woher] = static_cast<Stelle>(stelle);
            plaetze_[stelle] = std::move(platz);
        } else {
            offen.push_back(stelle);
        }
    }

    // The others get new ones; a file that had another record before keeps its number.
    std::unordered_map<std::string_view, std::uint32_t> kennungen;
    for (const auto& [platz, woher] : beiseite) {
        if (platz.zeile) {
            kennungen.emplace(platz.zeile->eintrag()->pfad, platz.zeile->kennung());
        }
    }
    for (const std::size_t stelle : offen) {
        const auto bekannt = kennungen.extract(eintraege[stelle]->pfad);
        plaetze_[stelle] = baue(eintraege[stelle], bekannt ? bekannt.mapped() : naechsteKennung_++);
    }
    for (const auto& [platz, woher] : beiseite) {
        if (platz.zeile) {
            orte_.lasse(platz.start);
            orte_.lasse(platz.ziel);
            sportarten_.lasse(platz.sport);
        }
    }

    adressen_.resize(eintraege.size());
    std::transform(eintraege.begin(), eintraege.end(), adressen_.begin(), [](const auto& e) { return e.get(); });
    reihenfolge_.folge(umzug, bestand());
}

const std::vector<Reihenfolge::Stelle>& Zeilenspeicher::reihenfolge(const Sortierung& sortierung) {
    return reihenfolge_.fuer(sortierung, bestand());
}

Platz Zeilenspeicher::baue(const Eintrag& eintrag, std::uint32_t kennung) {
    const auto geschrieben = GpxSportart::aus(eintrag->sportRoh);
    const auto sportText = texte_.sportAnzeige(*eintrag, geschrieben);
    return {.zeile = std::make_shared<const Zeile>(eintrag, kennung, geschrieben, sportText),
            .suchtext = suchtextVon(*eintrag, texte_.sprache),
            .namensschluessel = namensordnung_->schluessel(eintrag->dateiName),
            .pfadHash = std::hash<std::string>{}(eintrag->pfad),
            .streckeMeter = eintrag->streckeMeter,
            .start = nimm(orte_, eintrag->startOrt),
            .ziel = nimm(orte_, eintrag->zielOrt),
            .sport = sportarten_.nimm(sportText),
            .ghost = passendeFaelle<GhostFilter>(*eintrag),
            .art = passendeFaelle<ArtFilter>(*eintrag),
            .laenge = passendeFaelle<LaengenFilter>(*eintrag)};
}

}  // namespace spurkiste
