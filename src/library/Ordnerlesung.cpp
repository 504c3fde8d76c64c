#include "library/Ordnerlesung.h"

#include <system_error>
#include <utility>
#include <vector>

#include "base/Dateien.h"
#include "base/Text.h"
#include "base/VorlaeufigeDatei.h"
#include "library/Cache.h"
#include "library/Ordnung.h"

namespace spurkiste {

Ordnerlesung Ordnerlesung::lies(const std::string& ordner, bool mitCache, const std::atomic<bool>& abbruch) {
    Ordnerlesung lesung;
    if (abbruch) {
        return lesung;
    }
    try {
        dateien::erstelleOrdner(ordner);
    } catch (const std::system_error&) {
        lesung.ausgang = Ausgang::unerreichbar;
        return lesung;
    }
    std::vector<std::string> namen;
    try {
        namen = dateien::liste(ordner);
    } catch (const std::system_error& fehler) {
        lesung.ausgang = Ausgang::unlesbar;
        lesung.grund = fehler.code().message();
        return lesung;
    }
    const Cache cache = mitCache ? Cache::liesAus(ordner) : Cache{};
    for (const std::string& name : namen) {
        if (abbruch) {
            return lesung;
        }
        if (mitCache && dateien::istVorlaeufig(name)) {
            dateien::raeumeAuf(dateien::kindPfad(ordner, name));
        }
        if (text::klein(dateien::endung(name)) != "gpx") {
            continue;
        }
        std::string pfad = dateien::kindPfad(ordner, name);
        if (Eintrag eintrag = cache.passend(pfad)) {
            lesung.stand.eintraege.push_back(std::move(eintrag));
        } else {
            lesung.stand.zuLesen.push_back(std::move(pfad));
        }
    }
    ordnung::sortiereNachPfad(lesung.stand.eintraege);
    lesung.stand.verzeichnis = Pfadverzeichnis(lesung.stand.eintraege);
    lesung.ausgang = Ausgang::gelesen;
    return lesung;
}

}  // namespace spurkiste
