// How the library reads its folder: listing, cache, the run over the workers, and what happens to its results.

#include <cassert>
#include <exception>
#include <limits>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "base/VorlaeufigeDatei.h"
#include "library/Bibliothek.h"
#include "library/Cache.h"
#include "track/GpxLeser.h"

namespace spurkiste {

/// One run of reading. Bound to the main thread.
struct Bibliothek::Lauf {
    std::int64_t generation;
    std::size_t offen;  ///< files whose result has not landed yet
    Fertig fertig;
};

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
    hinweis_.setze(std::nullopt);
    const std::string ordner = ordner_.wert();
    try {
        dateien::erstelleOrdner(ordner);
    } catch (const std::system_error&) {
        setzeEintraege({});
        hinweis_.setze("Ordner nicht erreichbar: " + ordner);
        melde(fertig);
        return;
    }
    std::vector<std::string> namen;
    try {
        namen = dateien::liste(ordner);
    } catch (const std::system_error& fehler) {
        hinweis_.setze("Ordner nicht lesbar: " + fehler.code().message());
        melde(fertig);
        return;
    }
    const Cache cache = anschluesse_.mitCache ? Cache::liesAus(ordner) : Cache{};
    Eintraege treffer;
    std::vector<std::string> zuLesen;
    for (const std::string& name : namen) {
        if (dateien::istVorlaeufig(name) && anschluesse_.mitCache) {
            dateien::raeumeAuf(
                dateien::kindPfad(ordner, name));  // of a program that was killed in the middle of writing
        }
        if (text::klein(dateien::endung(name)) != "gpx") {
            continue;
        }
        std::string pfad = dateien::kindPfad(ordner, name);
        if (Eintrag eintrag = cache.passend(pfad)) {
            treffer.push_back(std::move(eintrag));
        } else {
            zuLesen.push_back(std::move(pfad));
        }
    }
    setzeEintraege(std::move(treffer));
    parseUndHaengeAn(zuLesen, generation, std::move(fertig));
}

void Bibliothek::parseUndHaengeAn(const std::vector<std::string>& dateien, std::int64_t generation, Fertig fertig) {
    if (dateien.empty()) {
        if (generation == generation_) {
            schliesseAb();
        }
        melde(fertig);
        return;
    }
    ++ladeLaeufe_;
    ausstehend_.setze(ausstehend_.wert() + dateien.size());
    laedt_.setze(true);
    const auto lauf = std::make_shared<Lauf>(Lauf{generation, dateien.size(), std::move(fertig)});
    for (const std::string& pfad : dateien) {
        rueckweg_.hinUndZurueck(
            anschluesse_.arbeiter, [pfad] { return leseAlsEintrag(pfad); },
            [this, lauf](const Eintrag& ergebnis) { lande(*lauf, ergebnis); });
    }
}

void Bibliothek::lande(Lauf& lauf, Eintrag ergebnis) {
    const bool aktuell = lauf.generation == generation_;
    ausstehend_.setze(ausstehend_.wert() - 1);
    if (aktuell && ergebnis) {
        fuegeEin(std::move(ergebnis));
    }
    if (--lauf.offen > 0) {
        return;
    }
    if (aktuell) {
        schliesseAb();
    }
    if (--ladeLaeufe_ == 0) {
        laedt_.setze(false);
    }
    melde(lauf.fertig);
}

void Bibliothek::schliesseAb() {
    setzeEintraege(mitOrtsEtiketten(eintraege_.wert()));
    speichereCache();
}

}  // namespace spurkiste
