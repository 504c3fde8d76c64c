// How the library reads its folder: the look into it, the run over the workers, and what happens to their results.

#include <algorithm>
#include <cassert>
#include <exception>
#include <limits>
#include <new>
#include <thread>
#include <utility>

#include "library/BibliothekLaeufe.h"
#include "track/GpxLeser.h"

namespace spurkiste {

namespace {

/// Memory that runs out over one monstrous file must not end the program: that file is left out.
Eintrag leseAlsEintrag(const std::string& pfad) {
    try {
        if (auto gelesen = GpxLeser::lese(pfad)) {
            return std::make_shared<const GpxMetadaten>(std::move(*gelesen));
        }
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return nullptr;
}

void melde(const Bibliothek::Fertig& fertig) {
    if (fertig) {
        fertig();
    }
}

}  // namespace

void Bibliothek::lade(Fertig fertig) {
    assert(generation_ < std::numeric_limits<std::int64_t>::max());
    const std::int64_t generation = ++generation_;
    laeufe_.clear();
    hinweis_.setze(std::nullopt);
    ueberhole();
    ladung_ = std::make_shared<Ladung>(Ladung{generation, std::move(fertig)});
    cache_.wennRuhig([this, ladung = ladung_] { leseOrdner(ladung); });
}

/// When all that was to be cached before is in the cache.
void Bibliothek::leseOrdner(const std::shared_ptr<Ladung>& ladung) {
    const unsigned kerne = std::max(1U, std::thread::hardware_concurrency());
    Ordnerlesung::Auftrag auftrag{
        ordner_.wert(), anschluesse_.mitCache, cache_.abdruck(ordner_.wert()), {&anschluesse_.arbeiter, kerne - 1, {}}};
    rueckweg_.hinUndZurueck(
        hintergrund(),
        [auftrag = std::move(auftrag), abbruch = ladung->abbruch] {
            return std::make_shared<Ordnerlesung>(Ordnerlesung::lies(auftrag, *abbruch));
        },
        [this, ladung](const std::shared_ptr<Ordnerlesung>& lesung) { landeLadung(ladung, *lesung); });
}

void Bibliothek::landeLadung(const std::shared_ptr<Ladung>& ladung, Ordnerlesung& lesung) {
    if (ladung != ladung_) {
        melde(ladung->fertig);
        return;
    }
    ladung_.reset();
    switch (lesung.ausgang) {
        case Ordnerlesung::Ausgang::gelesen:
            cache_.merke(ordner_.wert(), std::move(lesung.abdruck));
            protokoll_.spieleNach(lesung.stand);
            setzeEintraege(std::move(lesung.stand.eintraege), std::move(lesung.stand.verzeichnis));
            break;
        case Ordnerlesung::Ausgang::unerreichbar:
            setzeEintraege({}, {});
            hinweis_.setze("Ordner nicht erreichbar: " + ordner_.wert());
            break;
        case Ordnerlesung::Ausgang::unlesbar:
            hinweis_.setze("Ordner nicht lesbar: " + lesung.grund);
            break;
        case Ordnerlesung::Ausgang::abgebrochen:
            break;  // only when it is overtaken
    }
    if (!geoeffnet_.wert()) {
        geoeffnet_.setze(true);
    }
    if (std::exchange(cacheFaellig_, false)) {
        speichereCache();
    }
    if (lesung.ausgang == Ordnerlesung::Ausgang::gelesen) {
        parseUndHaengeAn(std::move(lesung.stand.zuLesen), ladung->generation, std::move(ladung->fertig));
        ordne();
    } else {
        ordne();
        melde(ladung->fertig);
    }
}

void Bibliothek::parseUndHaengeAn(std::vector<std::string> dateien, std::int64_t generation, Fertig fertig,
                                  bool sindKopien) {
    const bool aktuell = generation == generation_;
    if (dateien.empty()) {
        if (aktuell) {
            schliesseAb({false, std::move(fertig)});
        } else {
            melde(fertig);
        }
        return;
    }
    ++ladeLaeufe_;
    ausstehend_.setze(ausstehend_.wert() + dateien.size());
    laedt_.setze(true);
    const auto lauf =
        std::make_shared<Lauf>(Lauf{generation, dateien.size(), std::move(fertig), sindKopien, {}, 0, {}});
    lauf->dateien = std::make_shared<const std::vector<std::string>>(std::move(dateien));
    importlaeufe_ += sindKopien ? 1 : 0;
    if (aktuell) {
        laeufe_.push_back(lauf);
    }
    // Enough for the workers to be busy until the next result lands; handing over all at once would be a long turn.
    constexpr std::size_t kAufEinmal = 1000;
    while (lauf->naechste < std::min(kAufEinmal, lauf->dateien->size())) {
        lies(lauf, lauf->dateien, lauf->naechste++);
    }
}

void Bibliothek::lies(const std::shared_ptr<Lauf>& lauf, const std::shared_ptr<const std::vector<std::string>>& dateien,
                      std::size_t nummer) {
    rueckweg_.hinUndZurueck(
        anschluesse_.arbeiter, [dateien, nummer] { return leseAlsEintrag((*dateien)[nummer]); },
        [this, lauf, dateien, nummer](const Eintrag& ergebnis) {
            if (lauf->naechste < lauf->dateien->size()) {
                lies(lauf, lauf->dateien, lauf->naechste++);
            }
            lande(lauf, (*dateien)[nummer], ergebnis);
        });
}

void Bibliothek::lande(const std::shared_ptr<Lauf>& lauf, const std::string& pfad, Eintrag ergebnis) {
    const bool aktuell = lauf->generation == generation_;
    if (auto jetzt = lauf->nimmUmlenkung(pfad); jetzt && aktuell) {
        lies(lauf, std::make_shared<const std::vector<std::string>>(1, std::move(*jetzt)), 0);
        return;
    }
    ausstehend_.setze(ausstehend_.wert() - 1);
    if (aktuell && ergebnis) {
        fuegeEin(std::move(ergebnis));
    }
    if (--lauf->offen > 0) {
        return;
    }
    std::erase(laeufe_, lauf);
    importlaeufe_ -= lauf->sindKopien ? 1 : 0;
    if (aktuell) {
        schliesseAb({true, std::move(lauf->fertig)});
    } else {
        beendeLauf();
        ordne();
        melde(lauf->fertig);
    }
}

std::unordered_set<std::string> Bibliothek::werdenGelesen(const std::unordered_set<std::string>& pfade) const {
    std::unordered_set<std::string> gelesene;
    for (const auto& lauf : laeufe_) {
        for (const std::string& pfad : *lauf->dateien) {
            if (pfade.contains(pfad)) {
                gelesene.insert(pfad);
            }
        }
        for (const auto& [alt, jetzt] : lauf->umgelenkt) {
            if (pfade.contains(jetzt)) {
                gelesene.insert(jetzt);
            }
        }
    }
    return gelesene;
}

void Bibliothek::beendeLauf() {
    if (--ladeLaeufe_ == 0) {
        laedt_.setze(false);
    }
}

}  // namespace spurkiste
