#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "i18n/AppSprache.h"
#include "track/GpxMetadaten.h"
#include "track/GpxSportart.h"

namespace spurkiste {

TEST(GpxSportartTest, JedeArtIstUnterIhrerKennungZuFinden) {
    std::set<std::string_view> kennungen;
    for (const GpxSportart art : GpxSportart::allCases()) {
        EXPECT_EQ(GpxSportart::ausRawValue(art.rawValue()), art);
        EXPECT_EQ(GpxSportart::aus(std::string(art.rawValue())), art);
        EXPECT_EQ(art.deutsch(), AppSprache::text(art.rawValue()));
        EXPECT_FALSE(art.symbol().empty());
        kennungen.insert(art.rawValue());
    }
    EXPECT_EQ(kennungen.size(), 15U);
    EXPECT_EQ(GpxSportart::allCases().front().rawValue(), "cycling");
    EXPECT_EQ(GpxSportart::allCases().back().rawValue(), "kayaking");
    EXPECT_EQ(GpxSportart::ausRawValue("Cycling"), std::nullopt);
    EXPECT_EQ(GpxSportart(GpxSportart::mountainbike).symbol(), "mountain.2");
    EXPECT_EQ(GpxSportart(GpxSportart::kajak).symbol(), "figure.outdoor.cycle");
}

TEST(GpxSportartTest, ErkenntDieWoerterDerDateien) {
    using Fall = std::pair<std::optional<std::string>, std::optional<GpxSportart>>;
    const std::vector<Fall> faelle = {
        {"  Cycling\n", GpxSportart::rad},
        {"Ride", GpxSportart::rad},
        {"MTB", GpxSportart::mountainbike},
        {"Gravel", GpxSportart::gravel},
        {"E-Bike", GpxSportart::eBike},
        {"E_BIKE_FITNESS", GpxSportart::eBike},
        {"Lauf", GpxSportart::laufen},
        {"TrailRunning", GpxSportart::trailrunning},
        {"hike", GpxSportart::wandern},
        {"casual_walking", GpxSportart::gehen},
        {"Open_Water_Swimming", GpxSportart::schwimmen},
        {"moto", GpxSportart::motorrad},
        {"car", GpxSportart::auto_},
        {"resort_skiing", GpxSportart::ski},
        {"skating", GpxSportart::inline_},
        {"rudern", GpxSportart::rudern},
        {"canoeing", GpxSportart::kajak},
        {"\xC2\xA0KAJAK\xE2\x80\xA8", GpxSportart::kajak},
        {"mountainbike", std::nullopt},
        {"inline", std::nullopt},
        {"cycling_indoor", std::nullopt},
        {"road biking", std::nullopt},
        {"9", std::nullopt},
        {" ", std::nullopt},
        {"", std::nullopt},
        {std::nullopt, std::nullopt},
    };
    for (const auto& [text, art] : faelle) {
        EXPECT_EQ(GpxSportart::aus(text), art) << text.value_or("(none)");
    }
}

TEST(GpxSportartTest, SchaetztNachTempoWennDieDateiSchweigt) {
    struct Fall {
        std::optional<std::string> roh;
        double kmh;
        std::optional<GpxSportart> vorschlag;
    };
    const std::vector<Fall> faelle = {
        {{}, 0.0, GpxSportart::wandern}, {{}, 6.49, GpxSportart::wandern}, {{}, 6.51, GpxSportart::laufen},
        {"", 13.9, GpxSportart::laufen}, {{}, 14.01, GpxSportart::rad},    {{}, 44.9, GpxSportart::rad},
        {{}, 45.1, GpxSportart::auto_},  {{}, 159.9, GpxSportart::auto_},  {{}, 160.1, std::nullopt},
        {"Yoga", 10.0, std::nullopt},    {"running", 3.0, std::nullopt},   {" ", 10.0, std::nullopt},
    };
    for (const Fall& fall : faelle) {
        GpxMetadaten eintrag;
        eintrag.sportRoh = fall.roh;
        eintrag.dauerSekunden = 7200;
        eintrag.streckeMeter = fall.kmh * 2000;
        EXPECT_EQ(eintrag.sportVorschlag(), fall.vorschlag) << fall.kmh;
        eintrag.dauerSekunden = 0;
        EXPECT_EQ(eintrag.sportVorschlag(), std::nullopt);
    }
    for (const auto& [kmh, art] :
         {std::pair(6.5, GpxSportart::laufen), {14.0, GpxSportart::rad}, {45.0, GpxSportart::auto_}}) {
        EXPECT_EQ(GpxSport::schaetzung(kmh), art);
    }
    EXPECT_EQ(GpxSport::schaetzung(160.0), std::nullopt);
    EXPECT_EQ(GpxSport::schaetzung(std::stod("nan")), std::nullopt);
}

TEST(GpxSportartTest, ZeigtDieErsteRegelDiePasst) {
    GpxMetadaten eintrag;
    EXPECT_EQ(eintrag.sportAnzeige(), "\u2013");
    eintrag.dauerSekunden = 3600;
    eintrag.streckeMeter = 10000;
    EXPECT_EQ(eintrag.sportAnzeige(), AppSprache::text("running"));
    eintrag.sportRoh = "";
    EXPECT_EQ(eintrag.sportAnzeige(), AppSprache::text("running"));
    eintrag.sportRoh = " Yoga";
    EXPECT_EQ(eintrag.sportAnzeige(), " Yoga");
    eintrag.sportRoh = "MTB";
    EXPECT_EQ(eintrag.sportAnzeige(), AppSprache::text("mountain_biking"));
}

}  // namespace spurkiste
