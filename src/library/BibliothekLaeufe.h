#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "library/Bibliothek.h"
#include "library/Oeffnung.h"

namespace spurkiste {

/// One call of lade(), until the records of the cache are published. Bound to the main thread but for `abbruch`.
struct Bibliothek::Ladung {
    std::int64_t generation = 0;
    Fertig fertig;
    /// True once the load is overtaken: the folder need not be looked into.
    std::shared_ptr<std::atomic<bool>> abbruch = std::make_shared<std::atomic<bool>>(false);
};

/// One call of importiere(), or one file of oeffne(). Bound to the main thread.
struct Bibliothek::Import {
    std::deque<std::string> quellen;  ///< what is still to be copied
    std::string ordner;               ///< where to, whatever folder the library has meanwhile
    std::int64_t generation = 0;
    std::vector<std::string> neue;  ///< the copies that succeeded
    Fertig fertig;
    Gefunden gefunden = {};
    std::shared_ptr<oeffnung::Bestand> bestand = nullptr;  ///< what it has already is not copied but told
    std::vector<std::string> gefundene = {};
    std::size_t stapel = 1;  ///< how many files the next task gets: the first row comes soon, the others come fast
    /// True once only the copy in hand is still wanted.
    std::shared_ptr<std::atomic<bool>> abbruch = std::make_shared<std::atomic<bool>>(false);
};

/// One run of reading. Bound to the main thread.
struct Bibliothek::Lauf {
    std::int64_t generation = 0;
    std::size_t offen = 0;  ///< files whose result has not landed yet
    Fertig fertig;
    bool sindKopien = false;                                       ///< counts in importlaeufe_
    std::shared_ptr<const std::vector<std::string>> dateien = {};  ///< all that are to be read
    std::size_t naechste = 0;                                      ///< the first one that is not handed over yet
    std::unordered_map<std::string, std::string> umgelenkt;        ///< what is read under a path, and where that is now

    /// The file has another path, or the same but perhaps nothing there any more: who reads it now must read again.
    void lenkeUm(const std::string& alt, const std::string& neu) {
        for (auto& [gelesen, jetzt] : umgelenkt) {
            if (jetzt == alt) {
                jetzt = neu;
            }
        }
        umgelenkt[alt] = neu;
        umgelenkt[neu] = neu;
    }

    /// Where to read again what was read under this path; nothing when that still holds.
    [[nodiscard]] std::optional<std::string> nimmUmlenkung(const std::string& pfad) {
        const auto stelle = umgelenkt.find(pfad);
        if (stelle == umgelenkt.end()) {
            return std::nullopt;
        }
        std::string jetzt = std::move(stelle->second);
        umgelenkt.erase(stelle);
        return jetzt;
    }
};

/// One call of setzeSportart(). Bound to the main thread.
struct Bibliothek::Sportwechsel {
    std::string pfad;  ///< where the file is now: it may be renamed before the result lands
    GpxSportart art;
    std::int64_t generation;
    Fertig fertig;
    Verlauf::Nummer schritt;  ///< that it belongs to
    std::string anfangs;      ///< where the file was when the step began
};

}  // namespace spurkiste
