#include "track/GpxSchreiber.h"

#include <optional>
#include <string_view>
#include <utility>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {

namespace {

/// A file's bytes, and which state of the file they are.
struct Fassung {
    std::string inhalt;
    dateien::Stand stand;
};

Fassung lies(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    const auto stand = leser ? leser->stand() : std::nullopt;
    if (!stand) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
    }
    Fassung fassung{std::string(static_cast<std::size_t>(stand->groesse), '\0'), *stand};
    if (leser->lies(fassung.inhalt) < fassung.inhalt.size()) {
        throw GpxSchreibausnahme(GpxSchreibfehler::nichtLesbar);
    }
    return fassung;
}

/// Puts the new content in place of the bytes that were read, and returns what takes that back. Nothing when the file
/// is no longer the one that they came from: it is unchanged then.
std::optional<GpxUmkehr> ersetze(const std::string& pfad, const Fassung& fassung, const GpxSpleisse& spleisse) {
    dateien::AtomareDatei neu(pfad);
    GpxUmkehr umkehr{GpxUmkehr::gegen(spleisse.spleisse, fassung.inhalt), {}, fassung.stand, {}};
    spleisse.wendeAn(fassung.inhalt, [&](std::string_view stueck) {
        neu.schreibe(stueck);
        umkehr.summe.nimm(stueck);
    });
    neu.sichere();
    umkehr.stand = neu.stand().value_or(dateien::Stand{});
    if (dateien::stand(pfad) != fassung.stand) {
        return std::nullopt;
    }
    neu.uebernimm();
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
        if (auto umkehr = ersetze(pfad, fassung, *spleisse)) {
            return {spleisse->ziele, std::move(*umkehr)};
        }
    }
    throw std::runtime_error("Ein anderes Programm ändert die GPX-Datei gerade.");
}

std::optional<GpxUmkehr> GpxSchreiber::kehreUm(const GpxUmkehr& umkehr, const std::string& pfad,
                                               const std::function<void()>& vorher) {
    if (dateien::stand(pfad) != umkehr.stand) {
        return std::nullopt;
    }
    const Fassung fassung = lies(pfad);
    Bytesumme summe;  // there are programs that change a file and put its date back
    summe.nimm(fassung.inhalt);
    if (fassung.stand != umkehr.stand || summe != umkehr.summe) {
        return std::nullopt;
    }
    if (vorher) {
        vorher();
    }
    return ersetze(pfad, fassung, {umkehr.spleisse, 0});
}

}  // namespace spurkiste
