#include "cli/Sport.h"

#include <cstddef>
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
std::size_t schreibeMitProbe(GpxSportart art, const std::string& pfad) {
    const std::size_t elemente = GpxSchreiber::setzeSportart(art, pfad);
    std::error_code fehler;
    if (!GpxLeser::lese(pfad, fehler) || fehler) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nachSchreibenNichtLesbar);
    }
    return elemente;
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
            const std::size_t elemente = schreibeMitProbe(art, datei);
            schreibeZeile(stdout, datei + ": " + std::to_string(elemente) + " elements", form);
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
