#include <algorithm>
#include <map>
#include <string>

#include "erzeuge/Erzeuger.h"
#include "erzeuge/Namen.h"
#include "erzeuge/Zeittext.h"

namespace spurkiste::erzeuge {

namespace {

// A record is about as believable from this many points, and its sketch is as long as one of a long recording.
constexpr std::size_t kPunkteDerSkizze = 300;
constexpr std::size_t kPunkteOhneSkizze = 24;

Skizze zeichne(const Weg& weg) {
    Skizze::Bau bau;
    std::size_t segment = 0;
    for (std::size_t i = 0; i < weg.punkte.size(); ++i) {
        if (segment < weg.segmente.size() && weg.segmente[segment] == i) {
            bau.beginneLinie();
            ++segment;
        }
        bau.haengeAn(weg.punkte[i].ort);
    }
    return std::move(bau).fertig();
}

GpxWetter fasseZusammen(const std::vector<Wetterprobe>& proben) {
    GpxWetter wetter;
    wetter.temperaturCelsius = proben.front().temperatur;
    wetter.luftfeuchteProzent = proben.front().feuchte;
    wetter.windKmh = proben.front().wind;
    wetter.windrichtung = std::string(proben.front().windrichtung);
    wetter.lage = std::string(proben.front().lage);
    wetter.messpunkte = static_cast<std::int64_t>(proben.size());
    return wetter;
}

GpxMetadaten alsEintrag(const Fahrt& fahrt, bool mitSkizze, Zufall& zufall) {
    const Weg& weg = fahrt.weg;
    GpxMetadaten eintrag;
    eintrag.dateiName = erfindeDateinamen(fahrt.titel, fahrt.vorhaben, zufall);
    eintrag.spurName = fahrt.spurName && !fahrt.route ? fahrt.spurName : fahrt.metadatenName;
    eintrag.dateiDatum = Zeitpunkt::ausUnix(weg.punkte.back().zeit + 3600, 250'000'000);
    eintrag.streckeMeter = weg.meter;
    eintrag.anstiegMeter = fahrt.hoehen ? weg.anstieg : 0.0;
    eintrag.start = weg.punkte.front().ort;
    eintrag.ende = weg.punkte.back().ort;
    eintrag.rundkurs = fahrt.vorhaben.form != Form::strecke && weg.meter >= 1000.0;
    const std::int64_t dauer = weg.punkte.back().zeit - weg.punkte.front().zeit;
    if (fahrt.zeiten) {
        eintrag.datum = Zeitpunkt::ausUnix(fahrt.vorhaben.beginn, 0);
        eintrag.dauerSekunden = static_cast<double>(dauer);
        eintrag.hatZeitstempel = true;
    }
    eintrag.punkte = std::max<std::int64_t>(dauer / zufall.ganz(1, 6), 2);
    eintrag.dateiGroesse = 700 + eintrag.punkte * zufall.ganz(95, 280);
    eintrag.sportRoh = fahrt.typ;
    eintrag.startOrt = std::string(fahrt.vorhaben.ort->name);
    eintrag.zielOrt = std::string((fahrt.vorhaben.ziel ? fahrt.vorhaben.ziel->ort : fahrt.vorhaben.ort)->name);
    if (mitSkizze) {
        eintrag.skizze = zeichne(weg);
    }
    if (!fahrt.wetter.empty()) {
        eintrag.wetter = fasseZusammen(fahrt.wetter);
    }
    return eintrag;
}

}  // namespace

std::vector<Eintrag> erzeugeEintraege(std::size_t anzahl, std::uint64_t saat, bool mitSkizze) {
    const Mensch mensch(saat, anzahl);
    std::map<std::string, std::int64_t> namen;
    std::vector<Eintrag> eintraege;
    eintraege.reserve(anzahl);
    for (std::size_t i = 0; i < anzahl; ++i) {
        Zufall zufall(Zufall::teilsaat(saat, i));
        Vorgabe vorgabe;
        vorgabe.punkte = mitSkizze ? kPunkteDerSkizze : kPunkteOhneSkizze;
        GpxMetadaten eintrag = alsEintrag(erfinde(mensch, vorgabe, zufall), mitSkizze, zufall);
        if (const std::int64_t mal = ++namen[eintrag.dateiName]; mal > 1) {
            eintrag.dateiName += '~';
            haengeGanz(eintrag.dateiName, mal);
        }
        eintrag.pfad = "/bibliothek/" + eintrag.dateiName + ".gpx";
        eintraege.push_back(std::make_shared<const GpxMetadaten>(std::move(eintrag)));
    }
    return eintraege;
}

}  // namespace spurkiste::erzeuge
