#include "track/GpxSchreiber.h"

#include <cerrno>
#include <optional>
#include <string_view>
#include <utility>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "base/Dateirechte.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {

namespace {

/// A file's bytes, which state of the file they are, and the file itself, open.
struct Fassung {
    std::string inhalt;
    dateien::Stand stand;
    dateien::Leser datei;
};

Fassung lies(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    const auto stand = leser ? leser->stand() : std::nullopt;
    if (!stand) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
    }
    Fassung fassung{std::string(static_cast<std::size_t>(stand->groesse), '\0'), *stand, std::move(*leser)};
    if (fassung.datei.lies(fassung.inhalt) < fassung.inhalt.size()) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
    }
    return fassung;
}

constexpr mode_t kHoechstens = 0777;

/// Puts the new content in place of the bytes that were read. False when the file is no longer the one that they came
/// from: nothing is changed then.
bool ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    spleisse.wendeAn(fassung.inhalt, [&neu](std::string_view stueck) { neu.schreibe(stueck); });
    dateien::uebernimmMerkmale(fassung.datei.nummer(), neu.nummer());
    if (!dateien::uebernimmRechte(fassung.datei.nummer(), neu.nummer(), kHoechstens)) {
        throw dateien::systemfehler(EPERM);  // rather not at all than for more eyes
    }
    neu.datiereNach(fassung.stand);
    neu.sichere();
    if (!neu.tausche(fassung.datei, fassung.stand)) {
        return false;
    }
    neu.sichereOrdner();
    return true;
}

}  // namespace

std::string beschreibung(GpxSchreibfehler fehler) {
    switch (fehler) {
        case GpxSchreibfehler::keineSpur:
            return "Die GPX-Datei enthält weder Track noch Route.";
        case GpxSchreibfehler::nichtLesbar:
            return "Die GPX-Datei ist kein lesbares XML.";
        case GpxSchreibfehler::nachSchreibenNichtLesbar:
            return "Die GPX-Datei konnte nach dem Schreiben nicht neu eingelesen werden.";
    }
    return {};
}

GpxSchreiber::Ergebnis GpxSchreiber::setzeSportart(GpxSportart art, const std::string& pfad,
                                                   const std::function<void()>& vorher) {
    constexpr int versuche = 3;
    const std::string datei = dateien::hinterVerweisen(pfad);
    for (int i = 0; i < versuche; ++i) {
        const Fassung fassung = lies(datei);
        const auto spleisse = GpxSpleisse::berechne(fassung.inhalt, art);
        if (!spleisse) {
            throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
        }
        if (spleisse->ziele == 0) {
            throw GpxSchreibausnahme(GpxSchreibfehler::keineSpur);
        }
        if (vorher) {
            vorher();
        }
        const std::uint64_t namen = fassung.datei.namen();
        if (ersetze(datei, fassung, *spleisse)) {
            return {spleisse->ziele, namen - 1};
        }
    }
    throw std::runtime_error("Ein anderes Programm ändert die GPX-Datei gerade.");
}

}  // namespace spurkiste
