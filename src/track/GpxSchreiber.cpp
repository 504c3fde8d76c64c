#include "track/GpxSchreiber.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {

namespace {

/// A file's bytes, read where they are needed, and which state of the file they are to be.
struct Fassung {
    XmlInhalt inhalt;
    dateien::Stand stand;
};

/// Opens the file. What says something of the file itself makes it unreadable; what says something of the machine (no
/// descriptors, no memory, a disk that fails) comes out in the system's own words.
dateien::Leser oeffne(const std::string& pfad) {
    try {
        return dateien::Leser(pfad);
    } catch (const std::system_error& fehler) {
        constexpr std::array derDatei = {ENOENT, ENOTDIR, EACCES, EPERM, ELOOP, EISDIR, EINVAL, ENAMETOOLONG};
        if (std::find(derDatei.begin(), derDatei.end(), fehler.code().value()) != derDatei.end()) {
            throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
        }
        throw;
    }
}

Fassung lies(const std::string& pfad) {
    const auto leser = std::make_shared<const dateien::Leser>(oeffne(pfad));
    const auto stand = leser->stand();
    if (!stand) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
    }
    const auto inhalt = [leser, groesse = static_cast<std::uint64_t>(stand->groesse)](std::uint64_t stelle,
                                                                                      std::span<char> puffer) {
        const std::uint64_t rest = groesse - std::min(stelle, groesse);
        std::error_code fehler;
        const auto anzahl = leser->liesAb(stelle, puffer.first(std::min<std::uint64_t>(puffer.size(), rest)), fehler);
        if (fehler) {
            throw std::system_error(fehler);
        }
        return anzahl;
    };
    return {inhalt, *stand};
}

/// Puts the new content in place of the bytes that were read. False when the file is no longer the one that they came
/// from: nothing is changed then.
bool ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    spleisse.wendeAn(fassung.inhalt, [&neu](std::string_view stueck) { neu.schreibe(stueck); });
    neu.sichere();
    if (dateien::stand(pfad) != fassung.stand) {
        return false;
    }
    neu.uebernimm();
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

std::size_t GpxSchreiber::setzeSportart(GpxSportart art, const std::string& pfad, const std::function<void()>& vorher) {
    constexpr int versuche = 3;
    for (int i = 0; i < versuche; ++i) {
        const Fassung fassung = lies(pfad);
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
        if (ersetze(pfad, fassung, *spleisse)) {
            return spleisse->ziele;
        }
    }
    throw std::runtime_error("Ein anderes Programm ändert die GPX-Datei gerade.");
}

}  // namespace spurkiste
