#include "cli/Sport.h"

#include <cstdio>
#include <exception>
#include <system_error>

#include "cli/Abschluss.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace spurkiste {

namespace {

/// Writes, and reads once more what is there now.
GpxSchreiber::Ergebnis schreibeMitProbe(GpxSportart art, const std::string& pfad) {
    auto ergebnis = GpxSchreiber::setzeSportart(art, pfad);
    if (!GpxLeser::lese(pfad)) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nachSchreibenNichtLesbar);
    }
    return ergebnis;
}

}  // namespace

int sport(GpxSportart art, const std::vector<std::string>& dateien) {
    int ende = 0;
    const auto scheitere = [&](const std::string& datei, const std::string& warum) {
        schreibe(stderr, datei + ": " + warum + "\n");
        ende = 1;
    };
    for (const std::string& datei : dateien) {
        try {
            const auto ergebnis = schreibeMitProbe(art, datei);
            const auto andereNamen = ergebnis.andereNamen;
            schreibe(stdout, datei + ": " + std::to_string(ergebnis.elemente) + " elements\n");
            if (andereNamen > 0) {
                schreibe(stderr, datei + ": keeps the old content under " + std::to_string(andereNamen) +
                                     (andereNamen == 1 ? " other name (hard link)\n" : " other names (hard links)\n"));
            }
        } catch (const std::system_error& fehler) {
            scheitere(datei, fehler.code().message());
        } catch (const std::exception& fehler) {
            scheitere(datei, fehler.what());
        }
    }
    return schliesseAusgabeAb(ende);
}

}  // namespace spurkiste
