#include "track/GpxSchreiber.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "base/Dateirechte.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {

namespace {

/// A file, open, and the state of it whose bytes are meant.
struct Fassung {
    dateien::Leser datei;
    dateien::Stand stand;
};

/// Opens the file. Where there is none, it is no readable XML; why one that is there cannot be had (rights, no
/// descriptors, a disk that fails) comes out in the system's own words.
dateien::Leser oeffne(const std::string& pfad) {
    try {
        return dateien::Leser(pfad);
    } catch (const std::system_error& fehler) {
        constexpr std::array keineDatei = {ENOENT, ENOTDIR, ELOOP, EISDIR, EINVAL, ENAMETOOLONG};
        if (std::find(keineDatei.begin(), keineDatei.end(), fehler.code().value()) != keineDatei.end()) {
            throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
        }
        throw;
    }
}

Fassung lies(const std::string& pfad) {
    dateien::Leser leser = oeffne(pfad);
    const auto stand = leser.stand();
    if (!stand) {
        throw dateien::systemfehler(errno);
    }
    return {std::move(leser), *stand};
}

/// The bytes, read where they are needed. The file must live as long.
XmlInhalt inhalt(const Fassung& fassung) {
    return [&fassung](std::uint64_t stelle, std::span<char> puffer) {
        const auto groesse = static_cast<std::uint64_t>(fassung.stand.groesse);
        const std::uint64_t rest = groesse - std::min(stelle, groesse);
        std::error_code fehler;
        const auto anzahl =
            fassung.datei.liesAb(stelle, puffer.first(std::min<std::uint64_t>(puffer.size(), rest)), fehler);
        if (fehler) {
            throw std::system_error(fehler);
        }
        return anzahl;
    };
}

constexpr mode_t kHoechstens = 0777;

/// Puts the new content in place of the bytes that were read. False when the file is no longer the one that they came
/// from: nothing is changed then.
bool ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    spleisse.wendeAn(inhalt(fassung), [&neu](std::string_view stueck) { neu.schreibe(stueck); });
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
        const auto spleisse = GpxSpleisse::berechne(inhalt(fassung), art);
        if (!spleisse) {
            if (fassung.datei.stand() != fassung.stand) {
                continue;  // torn by somebody who is writing into it
            }
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
