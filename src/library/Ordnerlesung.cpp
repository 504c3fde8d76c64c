#include "library/Ordnerlesung.h"

#include <new>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Dateien.h"
#include "base/Text.h"
#include "base/VorlaeufigeDatei.h"
#include "library/Cache.h"
#include "library/Listenordnung.h"

namespace spurkiste {

namespace {

Cache holeCache(const Ordnerlesung::Auftrag& auftrag) {
    const auto& bekannter = auftrag.abdruck;
    if (bekannter && dateien::stand(dateien::kindPfad(auftrag.ordner, Cache::kDateiname)) == bekannter->stand) {
        return Cache::aus(bekannter);
    }
    return Cache::liesAus(auftrag.ordner, auftrag.helfer);
}

Ordnerlesung liesOrdner(const Ordnerlesung::Auftrag& auftrag, const std::atomic<bool>& abbruch) {
    using Ausgang = Ordnerlesung::Ausgang;
    const std::string& ordner = auftrag.ordner;
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
    const Cache cache = auftrag.mitCache ? holeCache(auftrag) : Cache{};
    lesung.abdruck = cache.abdruck;
    for (const std::string& name : namen) {
        if (abbruch) {
            return lesung;
        }
        if (auftrag.mitCache && dateien::istVorlaeufig(name)) {
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
    listenordnung::sortiereNachPfad(lesung.stand.eintraege);
    lesung.stand.verzeichnis = Pfadverzeichnis(lesung.stand.eintraege);
    lesung.ausgang = Ausgang::gelesen;
    return lesung;
}

}  // namespace

Ordnerlesung Ordnerlesung::lies(const Auftrag& auftrag, const std::atomic<bool>& abbruch) {
    try {
        return liesOrdner(auftrag, abbruch);
    } catch (const std::bad_alloc&) {
        Ordnerlesung lesung;
        lesung.ausgang = Ausgang::unlesbar;
        lesung.grund = std::make_error_code(std::errc::not_enough_memory).message();
        return lesung;
    }
}

}  // namespace spurkiste
