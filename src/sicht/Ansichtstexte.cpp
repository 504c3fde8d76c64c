#include "sicht/Ansichtstexte.h"

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
                        .spalten = {AppSprache::text("name"), AppSprache::text("date"), AppSprache::text("sport"),
                                    AppSprache::text("length"), AppSprache::text("time"), AppSprache::text("ascent"),
                                    AppSprache::text("points"), "Ghost", AppSprache::text("type"), "Start", "Ziel"},
                        .alleSportarten = AppSprache::text("sportAll"),
                        .routen = AppSprache::text("routes"),
                        .dateien = AppSprache::text("files"),
                        .gesamt = AppSprache::text("total")};
    for (const auto sport : GpxSportart::allCases()) {
        texte.sportarten[static_cast<std::size_t>(sport)] = sport.deutsch();
    }
    return texte;
}

}  // namespace spurkiste
