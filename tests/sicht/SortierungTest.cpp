#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/Ansichtsbau.h"
#include "sicht/Sortierung.h"

namespace spurkiste {

using Namen = std::vector<std::string>;
using Vergleiche = std::vector<Vergleich>;

TEST(SortierungTest, EinKlickStelltDieSpalteVornanUndEinZweiterKehrtSieUm) {
    Sortierung sortierung;
    const struct {
        Spalte klick;
        Vergleiche danach;
    } schritte[] = {
        {Spalte::datum, {{Spalte::datum, false}}},
        {Spalte::datum, {{Spalte::datum, true}}},
        {Spalte::start, {{Spalte::datum, true}}},
        {Spalte::name, {{Spalte::name, false}, {Spalte::datum, true}}},
        {Spalte::name, {{Spalte::name, true}, {Spalte::datum, true}}},
        {Spalte::art, {{Spalte::art, false}, {Spalte::name, true}, {Spalte::datum, true}}},
        {Spalte::datum, {{Spalte::datum, false}, {Spalte::art, false}, {Spalte::name, true}}},
        {Spalte::name, {{Spalte::name, false}, {Spalte::datum, false}, {Spalte::art, false}}},
    };
    EXPECT_EQ(sortierung.vergleiche(), (Vergleiche{{Spalte::datum, true}}));
    for (const auto& [klick, danach] : schritte) {
        sortierung.klicke(klick);
        EXPECT_EQ(sortierung.vergleiche(), danach);
    }
}

TEST(SortierungTest, NamenStehenWieInEinemDateimanagerDerSprache) {
    const struct {
        std::string sprache;
        std::vector<Namen> plaetze;  // in order; the names of one place are equal and keep the order of the library
    } faelle[] = {
        {"de", {{"Tour 2"}, {"tour 2a"}, {"Tour 10"}, {"Tour 10 b"}, {"Tour 100"}}},
        {"de", {{"alpen", "Alpen", "ALPEN"}, {"Alpen 1", "alpen 01"}, {"Alpenrand"}}},
        {"de", {{"Zug"}, {"Zürich"}, {"Zwiesel"}}},
        {"de", {{"apfel"}, {"a\xcc\x88pfel", "äpfel", "Äpfel"}, {"Apfelx"}}},
        {"de", {{"Oel"}, {"Öl"}, {"Ölz"}, {"Ozon"}}},
        {"sv", {{"Oel"}, {"Zug"}, {"Ångström"}, {"Älv"}, {"Öl"}}},
        {"cs", {{"Cyklo"}, {"Duha"}, {"Hora"}, {"Chalupa"}, {"Ivan"}}},
        {"zz", {{"Oel"}, {"Öl"}, {"Ozon"}, {"tour 2", "Tour 2"}, {"Tour 10"}}},
        {"kein Kürzel", {{"Tour 2"}, {"Tour 10"}}},
        {"", {{"Tour 2"}, {"Tour 10"}}},
        {"de", {{"T 99999999999999999998"}, {"T 99999999999999999999"}, {"T 100000000000000000000"}}},
        {"de", {{std::string(400, 'x') + "a"}, {std::string(400, 'X') + "b"}, {std::string(401, 'x')}}},
    };
    for (const auto& [sprache, plaetze] : faelle) {
        std::vector<Eintrag> richtig;
        std::vector<Eintrag> verkehrt;
        Namen aufsteigend;
        Namen absteigend;
        for (auto platz = plaetze.rbegin(); platz != plaetze.rend(); ++platz) {
            std::vector<Eintrag> eintraege;
            for (const auto& name : *platz) {
                eintraege.push_back(eintragMit(name));
                absteigend.push_back(name);
            }
            verkehrt.insert(verkehrt.end(), eintraege.begin(), eintraege.end());
            richtig.insert(richtig.begin(), eintraege.begin(), eintraege.end());
            aufsteigend.insert(aufsteigend.begin(), platz->begin(), platz->end());
        }
        SCOPED_TRACE(sprache + ": " + aufsteigend.front());
        Ansichtszustand zustand;
        zustand.sortierung = Sortierung({{Spalte::name, false}});
        EXPECT_EQ(namenVon(bildVon(verkehrt, zustand, texteIn(sprache))), aufsteigend);
        zustand.sortierung.klicke(Spalte::name);
        EXPECT_EQ(namenVon(bildVon(richtig, zustand, texteIn(sprache))), absteigend);
    }
}

}  // namespace spurkiste
