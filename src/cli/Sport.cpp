#include "cli/Sport.h"

#include <cstdio>
#include <exception>
#include <new>
#include <system_error>

#include "cli/Abschluss.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace spurkiste {

namespace {

/// Writes, and reads once more what is there now.
GpxSchreiber::Ergebnis schreibeMitProbe(GpxSportart art, const std::string& pfad) {
    auto ergebnis = GpxSchreiber::setzeSportart(art, pfad);
    std::error_code fehler;
    if (!GpxLeser::lese(pfad, fehler) || fehler) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nachSchreibenNichtLesbar);
    }
    return ergebnis;
}

}  // namespace

int sport(GpxSportart art, const std::vector<std::string>& dateien, Textform form) {
    int ende = 0;
    const auto scheitere = [&](const std::string& datei, const std::string& warum) {
        schreibeZeile(stderr, datei + ": " + warum, form);
        ende = 1;
    };
    for (const std::string& datei : dateien) {
        try {
            const auto ergebnis = schreibeMitProbe(art, datei);
            const auto andereNamen = ergebnis.andereNamen;
            schreibeZeile(stdout, datei + ": " + std::to_string(ergebnis.elemente) + " elements", form);
            if (andereNamen > 0) {
                schreibeZeile(stderr,
                              datei + ": keeps the old content under " + std::to_string(andereNamen) +
                                  (andereNamen == 1 ? " other name (hard link)" : " other names (hard links)"),
                              form);
            }
        } catch (const std::system_error& fehler) {
            scheitere(datei, fehler.code().message());
        } catch (const std::bad_alloc&) {
            scheitere(datei, std::make_error_code(std::errc::not_enough_memory).message());
        } catch (const std::exception& fehler) {
            scheitere(datei, fehler.what());
        }
    }
    return schliesseAusgabeAb(ende);
}

}  // namespace spurkiste
