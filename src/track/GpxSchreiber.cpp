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
constexpr int kVersuche = 3;
constexpr const char* kRastlos = "Ein anderes Programm ändert die GPX-Datei gerade.";

/// Puts the new content in place of the bytes that were read, and returns what takes that back. Nothing when the file
/// is no longer the one that they came from, or somebody has it open for writing: it is unchanged then.
std::optional<GpxUmkehr> ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    const XmlInhalt bisher = inhalt(fassung);
    GpxUmkehr umkehr;
    umkehr.vorher = fassung.stand;
    if (auto gegen = spleisse.alle ? GpxUmkehr::gegen(spleisse.spleisse, bisher) : std::nullopt) {
        umkehr.spleisse = std::move(*gegen);
    } else {
        umkehr.alle = false;
    }
    spleisse.wendeAn(bisher, [&](std::string_view stueck) {
        neu.schreibe(stueck);
        umkehr.summe.nimm(stueck);
    });
    dateien::uebernimmMerkmale(fassung.datei.nummer(), neu.nummer());
    if (const auto fehler = dateien::uebernimmRechte(fassung.datei.nummer(), neu.nummer(), kHoechstens)) {
        throw std::system_error(fehler);  // rather not at all than for more eyes
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
        // The sum as well: there are programs that change a file and put its date back.
        if (!umkehr.alle || fassung.stand != umkehr.stand || Bytesumme::von(inhalt(fassung)) != umkehr.summe) {
            return std::nullopt;
        }
        if (vorher) {
            vorher();
        }
        if (auto zurueck = ersetze(datei, fassung, {GpxSportart::rad, umkehr.spleisse, true, 0})) {
            return zurueck;
        }
    }
    throw std::runtime_error(kRastlos);
}

}  // namespace spurkiste
