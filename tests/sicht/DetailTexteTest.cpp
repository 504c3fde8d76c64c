#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/SpeicherEinstellungen.h"
#include "i18n/AppSprache.h"
#include "sicht/DetailTexte.h"
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

TEST(DetailTexte, saysWhatIsKnownAndADashForWhatIsNot) {
    SpeicherEinstellungen einstellungen;
    einstellungen.schreibe("appLanguage", "de");
    AppSprache::richteEin(&einstellungen, nullptr);
    GpxMetadaten eintrag;
    eintrag.dateiName = "Tour";
    auto texte = DetailTexte::aus(eintrag, "de", "1,2 MB");
    EXPECT_EQ(texte.titel, "Tour");
    EXPECT_NE(texte.datum.find(" · Dateidatum"), std::string::npos);
    ASSERT_EQ(texte.kacheln.size(), 4U);
    EXPECT_EQ(texte.kacheln[0].wert, "0 m");
    EXPECT_EQ(texte.kacheln[1].wert, "–");
    EXPECT_EQ(texte.kacheln[2].wert, "–");
    EXPECT_EQ(texte.kacheln[3].wert, "0");
    EXPECT_EQ(texte.einordnungszeilen[0].wert, "Strecke");
    EXPECT_EQ(texte.einordnungszeilen[1].wert, "Keine Zeitstempel");
    EXPECT_EQ(texte.routenzeilen[0].wert, "–");
    EXPECT_EQ(texte.dateizeilen[0].wert, "Tour.gpx");
    EXPECT_EQ(texte.dateizeilen[1].wert, "1,2 MB");
    EXPECT_EQ(texte.zeigen, "IM ORDNER ZEIGEN");

    eintrag.spurName = "Runde";
    eintrag.datum = Zeitpunkt{1.0};
    eintrag.streckeMeter = 12'345;
    eintrag.dauerSekunden = 3600;
    eintrag.anstiegMeter = 0.4;
    eintrag.punkte = 123'456;
    eintrag.rundkurs = eintrag.hatZeitstempel = true;
    eintrag.startOrt = "Zürich";
    eintrag.zielOrt = "Zug";
    eintrag.ende = Koordinate{47.3769, 8.5417};
    eintrag.wetter = GpxWetter{};
    texte = DetailTexte::aus(eintrag, "de", "");
    EXPECT_EQ(texte.titel, "Runde");
    EXPECT_EQ(texte.datum.find("Dateidatum"), std::string::npos);
    ASSERT_EQ(texte.kacheln.size(), 5U);
    EXPECT_EQ(texte.kacheln[0].wert, "12,3 km");
    EXPECT_EQ(texte.kacheln[1].wert, "1:00:00");
    EXPECT_EQ(texte.kacheln[2].wert, "0 m");
    EXPECT_EQ(texte.kacheln[3].wert, "123456");
    EXPECT_EQ(texte.kacheln[4].wert, "Wetter");
    EXPECT_EQ(texte.einordnungszeilen[0].wert, "Rundkurs");
    EXPECT_EQ(texte.einordnungszeilen[1].wert, "Ghost-tauglich");
    EXPECT_EQ(texte.routenzeilen[0].wert, "Zürich · –");
    EXPECT_EQ(texte.routenzeilen[1].wert, "Zug · 47.37690, 8.54170");
    AppSprache::richteEin(nullptr, nullptr);
}

}  // namespace
}  // namespace spurkiste
