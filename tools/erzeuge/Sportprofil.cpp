#include "erzeuge/Sportprofil.h"

namespace spurkiste::erzeuge {

namespace {

using enum GpxSportart::Wert;
using Texte = std::string_view[];

constexpr Texte kTypRad = {"cycling", "Ride", "road_biking", "cycling", "Cycling", "Radfahren", "1", "Rad", "biking"};
constexpr Texte kTypLaufen = {"running", "Run", "9", "Laufen", "running", "street_running", "Lauf"};
constexpr Texte kTypMotorrad = {"motorcycling", "Motorcycle", "Motorrad"};
constexpr Texte kTypAuto = {"driving", "car", "Auto"};
constexpr Texte kTypWandern = {"hiking", "Hike", "Wandern", "hiking", "4"};
constexpr Texte kTypGehen = {"walking", "Walk", "casual_walking", "10", "Gehen"};
constexpr Texte kTypMtb = {"mountain_biking", "MTB", "mountainbiking", "mountain_biking", "Mountainbike"};
constexpr Texte kTypGravel = {"gravel_cycling", "GravelRide", "gravel"};
constexpr Texte kTypEBike = {"e_bike", "EBikeRide", "e_bike_fitness", "E-Bike"};
constexpr Texte kTypTrail = {"trail_running", "TrailRun", "trailrunning"};
constexpr Texte kTypSchwimmen = {"open_water_swimming", "swimming", "Swim", "Schwimmen"};
constexpr Texte kTypSki = {"resort_skiing", "alpine_skiing", "Ski", "skiing", "AlpineSki"};
constexpr Texte kTypInline = {"inline_skating", "InlineSkate", "skating"};
constexpr Texte kTypRudern = {"rowing", "Rudern", "Rowing"};
constexpr Texte kTypKajak = {"kayaking", "Kajak", "canoeing", "Kayaking"};

constexpr Texte kAnlassRad = {"Feierabendrunde", "Rennradtour",  "Arbeitsweg",       "Genussrunde", "Seerunde",
                              "Pässefahrt",      "Morning Ride", "Sonntagsausfahrt", "Grundlage",   "Kaffeefahrt"};
constexpr Texte kAnlassLaufen = {"Feierabendlauf", "Morgenlauf",        "Intervalle",    "Long Run",   "Mittagsrunde",
                                 "10er",           "Regenerationslauf", "Afternoon Run", "Feierabend", "Läuferabend"};
constexpr Texte kAnlassMotorrad = {"Motorradtour", "Kurvenrunde", "Pässetour", "Ausfahrt mit Jörg"};
constexpr Texte kAnlassAuto = {"Heimfahrt", "Ferienfahrt", "Anfahrt", "Umzug"};
constexpr Texte kAnlassWandern = {"Wanderung",  "Gratwanderung", "Hüttentour",  "Rundwanderung",     "Höhenweg",
                                  "Gipfeltour", "Herbsttour",    "Schluchtweg", "Familienwanderung", "Etappe 3"};
constexpr Texte kAnlassGehen = {"Spaziergang", "Hunderunde", "Abendspaziergang", "Stadtbummel", "Evening Walk"};
constexpr Texte kAnlassMtb = {"MTB-Runde", "Trailrunde", "Flowtrail", "Nightride", "Feierabendtrail", "Hüttenrunde"};
constexpr Texte kAnlassGravel = {"Gravelrunde", "Schottertour", "Bikepacking Tag 2", "Kies & Kuchen"};
constexpr Texte kAnlassEBike = {"E-Bike-Tour", "Akkurunde", "Alpkäserunde", "Ausfahrt mit Großmutter"};
constexpr Texte kAnlassTrail = {"Trailrun", "Höhenmeter", "Morgentrail", "Bergläufchen"};
constexpr Texte kAnlassSchwimmen = {"Seeschwimmen", "Freiwasser", "Morgenschwimmen", "Querung"};
constexpr Texte kAnlassSki = {"Skitag", "Pistentag", "Tiefschnee", "Skiwochenende"};
constexpr Texte kAnlassInline = {"Skaterunde", "Inlinerunde"};
constexpr Texte kAnlassRudern = {"Ruderausfahrt", "Zweiertraining", "Morgenrudern", "Achter"};
constexpr Texte kAnlassKajak = {"Kajaktour", "Paddelrunde", "Abendpaddeln", "Picknickfahrt"};

constexpr Texte kFremd = {"paragliding", "Yoga", "Klettern", "sup", "Unknown", "multisport", "Schneeschuh"};

constexpr Sportworte kRad{kTypRad, kAnlassRad, "🚴"};
constexpr Sportworte kLaufen{kTypLaufen, kAnlassLaufen, "🏃"};
constexpr Sportworte kMotorrad{kTypMotorrad, kAnlassMotorrad, "🏍️"};
constexpr Sportworte kAuto{kTypAuto, kAnlassAuto, "🚗"};
constexpr Sportworte kWandern{kTypWandern, kAnlassWandern, "🥾"};
constexpr Sportworte kGehen{kTypGehen, kAnlassGehen, "🐕"};
constexpr Sportworte kMtb{kTypMtb, kAnlassMtb, "🚵"};
constexpr Sportworte kGravel{kTypGravel, kAnlassGravel, "🚲"};
constexpr Sportworte kEBike{kTypEBike, kAnlassEBike, "🔋"};
constexpr Sportworte kTrail{kTypTrail, kAnlassTrail, "⛰️"};
constexpr Sportworte kSchwimmen{kTypSchwimmen, kAnlassSchwimmen, "🏊"};
constexpr Sportworte kSki{kTypSki, kAnlassSki, "⛷️"};
constexpr Sportworte kInline{kTypInline, kAnlassInline, "🛼"};
constexpr Sportworte kRudern{kTypRudern, kAnlassRudern, "🚣"};
constexpr Sportworte kKajak{kTypKajak, kAnlassKajak, "🛶"};

constexpr std::string_view kGanzjahr = "445678887654";
constexpr std::string_view kSommer = "001379986200";
constexpr std::string_view kWandermonate = "112357898731";

// In the order of the fields: sport, weight, km/h, km from and to, memory, relief, uphill, at home, shapes, months,
// heart rate, place, words.
constexpr Sportprofil kProfile[] = {
    {rad, 22, 24, 12, 110, 260, 0.5, 7, 0.75, {6, 1, 3}, "235788887532", 138, Ortsart::stadt, kRad},
    {laufen, 16, 10.5, 4, 24, 90, 0.4, 4, 0.80, {6, 3, 1}, kGanzjahr, 152, Ortsart::stadt, kLaufen},
    {motorrad, 2, 58, 60, 340, 500, 0.60, 1, 0.80, {7, 1, 2}, kSommer, 88, Ortsart::stadt, kMotorrad},
    {auto_, 3, 72, 10, 290, 1200, 0.40, 0, 0.80, {0, 1, 9}, kGanzjahr, 76, Ortsart::stadt, kAuto},
    {wandern, 18, 4.3, 5, 26, 110, 1.3, 4, 0.10, {6, 2, 3}, kWandermonate, 112, Ortsart::berg, kWandern},
    {gehen, 8, 4.9, 1, 9, 70, 0.3, 3, 0.75, {6, 2, 2}, kGanzjahr, 98, Ortsart::stadt, kGehen},
    {mountainbike, 8, 15, 10, 48, 120, 1.1, 8, 0.35, {8, 1, 1}, kWandermonate, 145, Ortsart::berg, kMtb},
    {gravel, 6, 21, 20, 105, 220, 0.6, 8, 0.65, {7, 1, 2}, "124677787532", 136, Ortsart::stadt, kGravel},
    {eBike, 5, 22, 10, 75, 240, 0.9, 3, 0.50, {7, 1, 2}, kWandermonate, 108, Ortsart::berg, kEBike},
    {trailrunning, 4, 8.6, 6, 38, 80, 1.3, 5, 0.25, {7, 2, 1}, kWandermonate, 155, Ortsart::berg, kTrail},
    {schwimmen, 2, 2.6, 1, 4, 120, 0, 0, 0, {5, 4, 1}, "000029994000", 132, Ortsart::see, kSchwimmen},
    {ski, 3, 17, 12, 48, 250, 0.90, 3, 0, {9, 1, 0}, "998400000017", 118, Ortsart::piste, kSki},
    {inline_, 1, 17, 8, 35, 300, 0.08, 6, 0.60, {7, 2, 1}, kSommer, 140, Ortsart::stadt, kInline},
    {rudern, 1, 11, 5, 17, 500, 0, 0, 0, {4, 6, 0}, "013577776420", 142, Ortsart::see, kRudern},
    {kajak, 1, 5.8, 4, 18, 250, 0, 0, 0, {5, 3, 2}, kSommer, 115, Ortsart::see, kKajak},
};

}  // namespace

std::span<const Sportprofil> sportprofile() {
    return kProfile;
}

std::span<const std::string_view> fremdeTypen() {
    return kFremd;
}

}  // namespace spurkiste::erzeuge
