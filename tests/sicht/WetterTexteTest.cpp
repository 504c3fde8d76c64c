#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "sicht/WetterTexte.h"

namespace spurkiste {
namespace {

TEST(WetterTexte, everyConditionHasItsIconAndWords) {
    struct Fall {
        std::optional<std::string> lage;
        const char* symbol;
        const char* text;
    };
    for (const Fall& fall : std::vector<Fall>{
             {"klar", "sun.max", "Sonnig"},
             {"SONNIG", "sun.max", "Sonnig"},
             {"Leicht_Bewoelkt", "cloud.sun", "Leicht bewölkt"},
             {"bewoelkt", "cloud", "Bewölkt"},
             {"bedeckt", "cloud", "Bewölkt"},
             {"regen", "cloud.rain", "Regen"},
             {"regnerisch", "cloud.rain", "Regen"},
             {"gewitter", "cloud.bolt.rain", "Gewitter"},
             {"schnee", "cloud.snow", "Schnee"},
             {"nebel", "cloud.fog", "Nebel"},
             {"", "cloud", "Wetter"},
             {std::nullopt, "cloud", "Wetter"},
             {"light_snow", "cloud", "Light Snow"},
             {"ßtarker_ölregen", "cloud", "Sstarker Ölregen"},
             {"ÖDE_WINDE", "cloud", "Öde Winde"},
         }) {
        EXPECT_EQ(wettertexte::wetterSymbol(fall.lage), fall.symbol) << fall.text;
        EXPECT_EQ(wettertexte::wetterLage(fall.lage), fall.text);
    }
}

TEST(WetterTexte, saysWhatThereIs) {
    struct Fall {
        GpxWetter wetter;
        const char* wert;
        const char* details;
    };
    for (const Fall& fall : std::vector<Fall>{
             {{12.5, 80.4, 10.5, "NW", std::nullopt, 1}, "13 °C", "80 % · 11 km/h NW"},
             {{-12.5, {}, 0.0, {}, "klar", 1}, "-13 °C", "Sonnig · 0 km/h"},
             {{-0.4, {}, {}, "NW", {}, 1}, "0 °C", ""},
             {{{}, {}, {}, {}, "Leicht_Bewoelkt", 1}, "Leicht bewölkt", "Leicht bewölkt"},
             {{1e300, {}, {}, {}, {}, 1}, "9223372036854775807 °C", ""},
         }) {
        EXPECT_EQ(wettertexte::wetterWert(fall.wetter), fall.wert);
        EXPECT_EQ(wettertexte::wetterDetails(fall.wetter), fall.details);
    }
}

}  // namespace
}  // namespace spurkiste
