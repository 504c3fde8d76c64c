#include "sicht/DetailTexte.h"

#include <utility>

#include "base/Text.h"
#include "base/Zahl.h"
#include "i18n/AppSprache.h"
#include "sicht/Ansichtstexte.h"
#include "sicht/Formate.h"
#include "sicht/WetterTexte.h"

namespace spurkiste {

namespace {

std::string ortstext(const std::optional<std::string>& name, const std::optional<Koordinate>& ort) {
    const std::string koordinate = ort ? Formate::koordinate(*ort) : std::string(kStrich);
    return name ? *name + " · " + koordinate : koordinate;
}

/// A place may be called by a coordinate, which is then read once.
std::string ortsvorlesetext(const std::optional<std::string>& name) {
    const bool istKoordinate = name && name->find_first_not_of("0123456789.,- ") == std::string::npos;
    return istKoordinate ? *name : std::string();
}

std::string datumstext(const GpxMetadaten& eintrag) {
    return eintrag.datum ? Formate::datumZeitFormat(*eintrag.datum)
                         : Formate::datumsFormat(eintrag.dateiDatum) + " · Dateidatum";
}

}  // namespace

DetailTexte DetailTexte::aus(const GpxMetadaten& eintrag, std::string_view sprache, std::string groesse) {
    const auto wort = [](std::string_view schluessel) { return AppSprache::text(schluessel); };
    const auto gross = [&](std::string_view schluessel) { return text::gross(wort(schluessel), sprache); };
    const std::string strich(kStrich);
    DetailTexte texte;
    texte.ueberzeile = wort("selectedRoute");
    texte.titel = eintrag.spurName.value_or(eintrag.dateiName);
    texte.datum = datumstext(eintrag);
    texte.kacheln = {
        {gross("distance"), "ruler", Formate::strecke(eintrag.streckeMeter)},
        {gross("time"), "clock", eintrag.dauerSekunden > 0 ? Formate::dauer(eintrag.dauerSekunden) : strich},
        {gross("ascent"), "mountain.2",
         eintrag.anstiegMeter > 0 ? std::to_string(zahl::ganz(eintrag.anstiegMeter)) + " m" : strich},
        {gross("points"), "point.3.connected.trianglepath.dotted", std::to_string(eintrag.punkte)},
    };
    if (eintrag.wetter) {
        texte.kacheln.push_back({gross("weather"), wettertexte::wetterSymbol(eintrag.wetter->lage),
                                 wettertexte::wetterWert(*eintrag.wetter),
                                 wettertexte::wetterDetails(*eintrag.wetter)});
    }
    texte.einordnung = gross("classification");
    texte.sport = wort("sport");
    texte.einordnungszeilen = {{{wort("type"), wort(eintrag.rundkurs ? "roundTrip" : "route")},
                                {"Ghost", wort(eintrag.hatZeitstempel ? "ghostReady" : "noTimestamps")}}};
    texte.routenzeilen = {
        {{wort("start"), ortstext(eintrag.startOrt, eintrag.start), ortsvorlesetext(eintrag.startOrt)},
         {wort("end"), ortstext(eintrag.zielOrt, eintrag.ende), ortsvorlesetext(eintrag.zielOrt)}}};
    texte.dateizeilen = {{{"Name", eintrag.dateiName + ".gpx"}, {"Datei", std::move(groesse)}}};
    texte.zeigen = gross("show");
    return texte;
}

}  // namespace spurkiste
