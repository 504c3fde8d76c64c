#pragma once

#include <string>
#include <utility>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// A record in which every optional value is present.
inline GpxMetadaten vollerEintrag(const std::string& pfad) {
    Skizze::Bau skizze;
    skizze.beginneLinie();
    skizze.haengeAn({47.5, 11.25});
    skizze.haengeAn({1e300, 0.0});
    skizze.beginneLinie();
    skizze.beginneLinie();
    skizze.haengeAn({-33.8567844, 151.2152967});
    GpxMetadaten eintrag;
    eintrag.pfad = pfad;
    eintrag.dateiName = "Tour";
    eintrag.spurName = "Rund um den See";
    eintrag.datum = Zeitpunkt{700000000.25};
    eintrag.dateiDatum = Zeitpunkt{700100000.5};
    eintrag.dateiGroesse = 123456;
    eintrag.streckeMeter = 12345.678;
    eintrag.dauerSekunden = 3600.0;
    eintrag.anstiegMeter = 250.5;
    eintrag.punkte = 4;
    eintrag.start = Koordinate{47.5, 11.25};
    eintrag.ende = Koordinate{-33.8567844, 151.2152967};
    eintrag.rundkurs = true;
    eintrag.hatZeitstempel = true;
    eintrag.sportRoh = "cycling";
    eintrag.startOrt = "Seefeld";
    eintrag.zielOrt = "Sydney";
    eintrag.skizze = std::move(skizze).fertig();
    eintrag.wetter = GpxWetter{-3.5, 80.0, 12.25, "NW", "Schnee", 3};
    return eintrag;
}

}  // namespace spurkiste
