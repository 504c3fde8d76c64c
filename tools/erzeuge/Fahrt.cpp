#include "erzeuge/Fahrt.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "erzeuge/Namen.h"

namespace spurkiste::erzeuge {

namespace {

constexpr std::string_view kWindrichtungen[] = {"N", "NO", "O", "SO", "S", "SW", "W", "NW", "W", "SW"};

std::string_view erfindeLage(Zufall& zufall, double temperatur, unsigned monat) {
    static constexpr std::string_view kSommer[] = {"sonnig",          "sonnig",    "klar",  "leicht_bewoelkt",
                                                   "leicht_bewoelkt", "bewoelkt",  "regen", "regnerisch",
                                                   "gewitter",        "heavy_rain"};
    static constexpr std::string_view kUebrig[] = {"sonnig",  "klar",  "leicht_bewoelkt", "bewoelkt",  "bewoelkt",
                                                   "bedeckt", "nebel", "regen",           "regnerisch"};
    static constexpr std::string_view kWinter[] = {"sonnig", "klar",  "bedeckt",   "schnee",
                                                   "schnee", "nebel", "light_snow"};
    if (temperatur < 1.0) {
        return zufall.aus(std::span<const std::string_view>(kWinter));
    }
    return zufall.aus(monat >= 5 && monat <= 9 ? std::span<const std::string_view>(kSommer)
                                               : std::span<const std::string_view>(kUebrig));
}

// A sample an hour and one at the start: the season's temperature, less the height's.
std::vector<Wetterprobe> erfindeWetter(const Fahrt& fahrt, Zufall& zufall) {
    using namespace std::chrono;
    const year_month_day tag{floor<days>(sys_seconds{seconds{fahrt.vorhaben.beginn}})};
    const auto monat = static_cast<unsigned>(tag.month());
    const double jahreszeit = kosinus((static_cast<double>(monat) - 7.3) * 0.5235987755982988);
    double temperatur = 13.0 + 10.0 * jahreszeit - 0.006 * fahrt.vorhaben.ort->hoehe + 3.5 * zufall.glocke();
    double feuchte = zufall.zwischen(45.0, 95.0);
    double wind = 3.0 + 22.0 * zufall.einheit() * 0.8;
    const std::string_view richtung = zufall.aus(std::span<const std::string_view>(kWindrichtungen));
    const std::string_view lage = erfindeLage(zufall, temperatur, monat);
    const std::int64_t dauer = fahrt.weg.punkte.back().zeit - fahrt.weg.punkte.front().zeit;
    const auto proben = static_cast<std::size_t>(std::clamp<std::int64_t>(dauer / 3600, 0, 12)) + 1;
    std::vector<Wetterprobe> wetter;
    for (std::size_t i = 0; i < std::min(proben, fahrt.weg.punkte.size()); ++i) {
        wetter.push_back({temperatur, feuchte, wind, richtung, lage});
        temperatur += 0.8 * zufall.glocke();
        feuchte = std::clamp(feuchte + 4.0 * zufall.glocke(), 25.0, 100.0);
        wind = std::max(0.0, wind + 2.0 * zufall.glocke());
        if (zufall.mit(0.15)) {
            wetter.back().windrichtung = zufall.aus(std::span<const std::string_view>(kWindrichtungen));
        }
    }
    return wetter;
}

std::optional<std::string> erfindeTyp(const Sportprofil& profil, bool vollstaendig, Zufall& zufall) {
    if (vollstaendig) {
        return std::string(profil.worte.typen.front());
    }
    if (zufall.mit(0.25)) {
        return std::nullopt;
    }
    if (zufall.mit(0.04)) {
        return std::string(zufall.aus(fremdeTypen()));
    }
    return std::string(zufall.aus(profil.worte.typen));
}

}  // namespace

Fahrt erfinde(const Mensch& mensch, const Vorgabe& vorgabe, Zufall& zufall) {
    Fahrt fahrt;
    const bool voll = vorgabe.vollstaendig;
    fahrt.vorhaben = mensch.plane(zufall, vorgabe.sport);
    if (vorgabe.sekundenProPunkt) {
        fahrt.vorhaben.ziel.reset();
        fahrt.vorhaben.meter =
            static_cast<double>(vorgabe.punkte) * *vorgabe.sekundenProPunkt * fahrt.vorhaben.kmh / 3.6;
    }
    fahrt.titel = erfindeTitel(fahrt.vorhaben, zufall);
    fahrt.typ = erfindeTyp(*fahrt.vorhaben.profil, voll, zufall);
    if (voll || zufall.mit(0.8)) {
        fahrt.spurName = fahrt.titel;
    }
    if (zufall.mit(0.3)) {
        fahrt.metadatenName = fahrt.titel;
    }
    fahrt.route = !voll && zufall.mit(0.06);
    fahrt.zeiten = voll || (!fahrt.route && zufall.mit(0.91));
    fahrt.hoehen = voll || zufall.mit(fahrt.route ? 0.5 : 0.95);
    fahrt.puls = !fahrt.route && fahrt.vorhaben.profil->puls > 90.0 && zufall.mit(0.5);
    fahrt.weg = begehe(fahrt.vorhaben, fahrt.route ? vorgabe.punkte / 4 + 2 : vorgabe.punkte, fahrt.route, zufall);
    if (zufall.mit(voll ? 0.55 : 0.2)) {
        fahrt.wetter = erfindeWetter(fahrt, zufall);
        fahrt.wetterAmPunkt = zufall.mit(0.5);
    }
    return fahrt;
}

}  // namespace spurkiste::erzeuge
