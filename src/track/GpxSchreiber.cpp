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
constexpr int kVersuche = 3;
constexpr const char* kRastlos = "Ein anderes Programm ändert die GPX-Datei gerade.";

/// Puts the new content in place of the bytes that were read, and returns what takes that back. Nothing when the file
/// is no longer the one that they came from, or somebody has it open for writing: it is unchanged then.
std::optional<GpxUmkehr> ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    GpxUmkehr umkehr{GpxUmkehr::gegen(spleisse.spleisse, fassung.inhalt), {}, fassung.stand, {}};
    spleisse.wendeAn(fassung.inhalt, [&](std::string_view stueck) {
        neu.schreibe(stueck);
        umkehr.summe.nimm(stueck);
    });
    dateien::uebernimmMerkmale(fassung.datei.nummer(), neu.nummer());
    if (!dateien::uebernimmRechte(fassung.datei.nummer(), neu.nummer(), kHoechstens)) {
        throw dateien::systemfehler(EPERM);  // rather not at all than for more eyes
    }
    neu.datiereNach(fassung.stand);
    neu.sichere();
    umkehr.stand = neu.stand().value_or(dateien::Stand{});
    if (!neu.tausche(fassung.datei, fassung.stand)) {
        return std::nullopt;
    }
    neu.sichereOrdner();
    return umkehr;
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
    const std::string datei = dateien::hinterVerweisen(pfad);
    for (int i = 0; i < kVersuche; ++i) {
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
        if (auto umkehr = ersetze(datei, fassung, *spleisse)) {
            return {spleisse->ziele, namen - 1, std::move(*umkehr)};
        }
    }
    throw std::runtime_error(kRastlos);
}

std::optional<GpxUmkehr> GpxSchreiber::kehreUm(const GpxUmkehr& umkehr, const std::string& pfad,
                                               const std::function<void()>& vorher) {
    const std::string datei = dateien::hinterVerweisen(pfad);
    for (int i = 0; i < kVersuche; ++i) {
        if (dateien::stand(datei) != umkehr.stand) {
            return std::nullopt;
        }
        const Fassung fassung = lies(datei);
        Bytesumme summe;  // there are programs that change a file and put its date back
        summe.nimm(fassung.inhalt);
        if (fassung.stand != umkehr.stand || summe != umkehr.summe) {
            return std::nullopt;
        }
        if (vorher) {
            vorher();
        }
        if (auto zurueck = ersetze(datei, fassung, {umkehr.spleisse, 0})) {
            return zurueck;
        }
    }
    throw std::runtime_error(kRastlos);
}

}  // namespace spurkiste
