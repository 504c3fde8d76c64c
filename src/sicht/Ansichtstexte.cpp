#include "sicht/Ansichtstexte.h"

#include <algorithm>
#include <cstddef>

#include "i18n/AppSprache.h"

namespace spurkiste {

std::string_view Ansichtstexte::sportAnzeige(const GpxMetadaten& eintrag,
                                             const std::optional<GpxSportart>& geschrieben) const {
    if (geschrieben) {
        return sportarten[static_cast<std::size_t>(*geschrieben)];
    }
    if (eintrag.nenntSport()) {
        return *eintrag.sportRoh;
    }
    if (const auto vorschlag = eintrag.sportVorschlag()) {
        return sportarten[static_cast<std::size_t>(*vorschlag)];
    }
    return kStrich;
}

Ansichtstexte Ansichtstexte::aktuelle() {
    Ansichtstexte texte{.sprache = AppSprache::code(),
                        .sportarten = {},
                        .spalten = {},
                        .alle = {},
                        .routen = AppSprache::text("routes"),
                        .dateien = AppSprache::text("files"),
                        .gesamt = AppSprache::text("total")};
    std::transform(kSpalten.begin(), kSpalten.end(), texte.spalten.begin(),
                   [](const Spaltenangaben& spalte) { return spalte.titel->aktuell(); });
    std::transform(kFilter.begin(), kFilter.end(), texte.alle.begin(),
                   [](const Filterangaben& filter) { return filter.alle->aktuell(); });
    for (const auto sport : GpxSportart::allCases()) {
        texte.sportarten[static_cast<std::size_t>(sport)] = sport.deutsch();
    }
    return texte;
}

}  // namespace spurkiste
