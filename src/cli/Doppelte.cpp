#include "cli/Doppelte.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <map>
#include <system_error>
#include <utility>

#include "cli/Abschluss.h"
#include "cli/Dateiauswahl.h"
#include "track/GpxLeser.h"

namespace spurkiste {

namespace {

/// Stands for a list of coordinates; two different lists may share one, so it only finds candidates.
struct Fingerabdruck {
    std::size_t punkte = 0;
    std::uint64_t wert = 0;

    friend auto operator<=>(const Fingerabdruck&, const Fingerabdruck&) = default;
};

Fingerabdruck fingerabdruck(const std::vector<Koordinate>& orte) {
    // FNV-1a over whole numbers instead of bytes, http://www.isthe.com/chongo/tech/comp/fnv/
    std::uint64_t wert = 0xcbf29ce484222325U;
    const auto nimm = [&wert](double zahl) {
        wert = (wert ^ std::bit_cast<std::uint64_t>(zahl + 0.0)) * 0x100000001b3U;  // + 0.0 makes -0 and 0 one
    };
    for (const Koordinate& ort : orte) {
        nimm(ort.breite);
        nimm(ort.laenge);
    }
    return {orte.size(), wert};
}

/// Whether a file could not be read, rather than being none: folders and what has vanished are no tracks.
bool istHindernis(const std::error_code& fehler) {
    return fehler && fehler != std::errc::is_a_directory && fehler != std::errc::invalid_argument &&
           fehler != std::errc::no_such_file_or_directory;
}

/// Parts candidates into those that really are the same.
std::vector<std::vector<std::string>> trenneNachSpuren(const std::vector<std::string>& kandidaten,
                                                       std::map<std::string, std::error_code>& unlesbar) {
    std::vector<std::pair<std::vector<Koordinate>, std::vector<std::string>>> arten;
    for (const std::string& pfad : kandidaten) {
        std::error_code fehler;
        std::vector<Koordinate> orte = GpxLeser::orte(pfad, fehler);
        if (istHindernis(fehler)) {
            unlesbar.emplace(pfad, fehler);
        }
        const auto gleiche =
            std::find_if(arten.begin(), arten.end(), [&](const auto& art) { return art.first == orte; });
        if (gleiche != arten.end()) {
            gleiche->second.push_back(pfad);
        } else {
            arten.emplace_back(std::move(orte), std::vector{pfad});
        }
    }
    std::vector<std::vector<std::string>> gruppen;
    for (auto& [orte, pfade] : arten) {
        if (pfade.size() > 1 && !orte.empty()) {  // a file that vanished meanwhile has no points any more
            gruppen.push_back(std::move(pfade));
        }
    }
    return gruppen;
}

}  // namespace

Doppelgaenger findeDoppelte(const std::vector<std::string>& pfade) {
    Doppelgaenger ergebnis;
    std::vector<Fingerabdruck> abdruecke(pfade.size());
    std::vector<std::error_code> fehler(pfade.size());
    dateiauswahl::fuerAlle(pfade.size(),
                           [&](std::size_t i) { abdruecke[i] = fingerabdruck(GpxLeser::orte(pfade[i], fehler[i])); });
    for (std::size_t i = 0; i < pfade.size(); ++i) {
        if (istHindernis(fehler[i])) {
            ergebnis.unlesbar.emplace(pfade[i], fehler[i]);
        }
    }
    std::map<Fingerabdruck, std::vector<std::size_t>> nachAbdruck;
    for (std::size_t i = 0; i < pfade.size(); ++i) {
        if (abdruecke[i].punkte > 0) {
            nachAbdruck[abdruecke[i]].push_back(i);
        }
    }
    std::vector<std::pair<std::size_t, std::vector<std::string>>> gefunden;  // with the place of the first file
    for (const auto& [abdruck, stellen] : nachAbdruck) {
        std::vector<std::string> kandidaten;
        std::transform(stellen.begin(), stellen.end(), std::back_inserter(kandidaten),
                       [&](std::size_t i) { return pfade[i]; });
        if (kandidaten.size() > 1) {
            for (auto& gruppe : trenneNachSpuren(kandidaten, ergebnis.unlesbar)) {
                gefunden.emplace_back(stellen.front(), std::move(gruppe));
            }
        }
    }
    std::stable_sort(gefunden.begin(), gefunden.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(gefunden.begin(), gefunden.end(), std::back_inserter(ergebnis.gruppen),
                   [](auto& paar) { return std::move(paar.second); });
    return ergebnis;
}

int doppelte(const std::string& ordner, Textform form) {
    Doppelgaenger gefunden;
    try {
        gefunden = findeDoppelte(dateiauswahl::imOrdner(ordner));
    } catch (const std::system_error& fehler) {
        schreibeZeile(stderr, ordner + ": nicht lesbar: " + fehler.code().message(), form);
        return 1;
    }
    for (const auto& [pfad, fehler] : gefunden.unlesbar) {
        schreibeZeile(stderr, pfad + ": nicht lesbar: " + fehler.message(), form);
    }
    bool erste = true;
    for (const auto& gruppe : gefunden.gruppen) {
        if (!std::exchange(erste, false)) {
            schreibe(stdout, "\n");
        }
        for (const std::string& pfad : gruppe) {
            schreibeZeile(stdout, pfad, form);
        }
    }
    return schliesseAusgabeAb(gefunden.unlesbar.empty() ? 0 : 1);
}

}  // namespace spurkiste
