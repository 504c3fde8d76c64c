#include "erzeuge/Erzeuger.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "erzeuge/Namen.h"
#include "erzeuge/Zeittext.h"

namespace spurkiste::erzeuge {

namespace {

// Of every seed's streams one is for the person, the others for the files.
constexpr std::uint64_t kMensch = ~std::uint64_t{0};

const Stil& waehleStil(Zufall& zufall) {
    std::vector<double> gewichte;
    for (const Stil& stil : stile()) {
        gewichte.push_back(stil.gewicht);
    }
    return stile()[zufall.gewichtet(gewichte)];
}

Defekt zerstoere(std::string& inhalt, Zufall& zufall) {
    static constexpr std::string_view kFremdes[] = {
        "<!DOCTYPE html>\n<html><head><title>404 Not Found</title></head><body><p>Not Found</body></html>\n",
        "Datum;Breite;Länge\n2021-05-03 17:20;47,3769;8,5417\n",
        "<?xml version=\"1.0\"?>\n<kml xmlns=\"http://www.opengis.net/kml/2.2\"><Document/></kml>\n",
        "PK\x03\x04\x14",
    };
    static constexpr std::array<double, 3> kGewichte = {5, 2, 3};
    switch (zufall.gewichtet(kGewichte)) {
        case 0:
            inhalt.resize(static_cast<std::size_t>(zufall.ganz(1, static_cast<std::int64_t>(inhalt.size()) - 20)));
            return Defekt::abgeschnitten;
        case 1:
            inhalt.clear();
            return Defekt::leer;
        default:
            inhalt = zufall.aus(std::span<const std::string_view>(kFremdes));
            return Defekt::fremd;
    }
}

void schreibeDatei(const std::string& ordner, const std::string& name, const std::string& inhalt,
                   std::int64_t geaendert) {
    const std::filesystem::path pfad = std::filesystem::path(ordner) / name;
    std::ofstream strom(pfad, std::ios::binary | std::ios::trunc);
    strom.write(inhalt.data(), static_cast<std::streamsize>(inhalt.size()));
    strom.close();
    if (!strom) {
        throw std::system_error(std::make_error_code(std::errc::io_error), "cannot write " + pfad.native());
    }
    using namespace std::chrono;
    std::filesystem::last_write_time(pfad, file_clock::from_sys(sys_seconds{seconds{geaendert}}));
}

}  // namespace

Erzeuger::Erzeuger(const Wunsch& wunsch)
    : wunsch_(wunsch), mensch_(Zufall::teilsaat(wunsch.saat, kMensch), wunsch.anzahl) {}

Datei Erzeuger::naechste() {
    assert(nummer_ < wunsch_.anzahl);
    Zufall zufall(Zufall::teilsaat(wunsch_.saat, nummer_));
    Vorgabe vorgabe;
    vorgabe.punkte = static_cast<std::size_t>(static_cast<double>(wunsch_.punkte) * zufall.zwischen(0.25, 1.75)) + 2;
    if (wunsch_.beispiel) {
        vorgabe.sport = GpxSportart::allCases()[nummer_ % GpxSportart::allCases().size()];
        vorgabe.vollstaendig = true;
    }
    ++nummer_;

    Datei datei;
    datei.fahrt = erfinde(mensch_, vorgabe, zufall);
    const std::string stamm =
        wunsch_.beispiel ? datei.fahrt.titel : erfindeDateinamen(datei.fahrt.titel, datei.fahrt.vorhaben, zufall);
    datei.name = eindeutig(stamm) + (!wunsch_.beispiel && zufall.mit(0.02) ? ".GPX" : ".gpx");
    datei.stil = wunsch_.beispiel ? &stile().front() : &waehleStil(zufall);
    datei.inhalt = alsGpx(datei.fahrt, *datei.stil);
    if (!wunsch_.beispiel && zufall.mit(wunsch_.defekt)) {
        datei.defekt = zerstoere(datei.inhalt, zufall);
    }
    datei.geaendert = datei.fahrt.weg.punkte.back().zeit + zufall.ganz(60, 90'000);
    return datei;
}

std::string Erzeuger::eindeutig(const std::string& name) {
    std::string ergebnis = name;
    for (std::int64_t i = 2; !namen_.insert(ergebnis).second; ++i) {
        ergebnis = name + ' ';
        haengeGanz(ergebnis, i);
    }
    return ergebnis;
}

std::string erzeugeSpur(std::uint64_t saat, std::size_t bytes) {
    // A point of the first style with elevation, time and heart rate.
    constexpr std::size_t kBytesProPunkt = 278;
    const Mensch mensch(Zufall::teilsaat(saat, kMensch), 1);
    Zufall zufall(saat);
    Vorgabe vorgabe;
    vorgabe.vollstaendig = true;
    vorgabe.punkte = bytes / kBytesProPunkt;
    vorgabe.sport = zufall.mit(0.5) ? GpxSportart::rad : GpxSportart::laufen;
    vorgabe.sekundenProPunkt = zufall.mit(0.5) ? 1.0 : 4.0;
    Fahrt fahrt = erfinde(mensch, vorgabe, zufall);
    fahrt.puls = true;
    return alsGpx(fahrt, stile().front());
}

Umfang schreibeBibliothek(const std::string& ordner, const Wunsch& wunsch) {
    Erzeuger erzeuger(wunsch);
    Umfang umfang;
    for (; umfang.dateien < wunsch.anzahl; ++umfang.dateien) {
        const Datei datei = erzeuger.naechste();
        schreibeDatei(ordner, datei.name, datei.inhalt, datei.geaendert);
        umfang.bytes += datei.inhalt.size();
    }
    return umfang;
}

Umfang schreibeSpuren(const std::string& ordner, std::uint64_t saat, std::uint64_t gesamt) {
    Umfang umfang;
    for (; umfang.bytes < gesamt; ++umfang.dateien) {
        const std::string inhalt = erzeugeSpur(Zufall::teilsaat(saat, umfang.dateien), 1'000'000);
        std::string name = "spur_";
        haengeGanz(name, static_cast<std::int64_t>(umfang.dateien), 5);
        schreibeDatei(ordner, name + ".gpx", inhalt, 1'700'000'000 + static_cast<std::int64_t>(umfang.dateien));
        umfang.bytes += inhalt.size();
    }
    return umfang;
}

}  // namespace spurkiste::erzeuge
