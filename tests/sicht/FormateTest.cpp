#include <cmath>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/Umgebung.h"
#include "sicht/Formate.h"

namespace spurkiste {

TEST(FormateTest, DauerRundetVorDerWahlDesFormats) {
    const std::vector<std::pair<double, std::string>> faelle = {
        {0.0, "0:00"},       {0.4, "0:00"},         {0.5, "0:01"},           {59.4, "0:59"},
        {59.5, "1:00"},      {3599.0, "59:59"},     {3599.6, "1:00:00"},     {3600.0, "1:00:00"},
        {3661.0, "1:01:01"}, {90061.0, "25:01:01"}, {360000.0, "100:00:00"}, {1e300, "2562047788015215:30:07"}};
    for (const auto& [sekunden, text] : faelle) {
        EXPECT_EQ(Formate::dauer(sekunden), text);
    }
}

TEST(FormateTest, StreckeHatEinKommaUndMeterWerdenAbgeschnitten) {
    const std::vector<std::pair<double, std::string>> faelle = {
        {0.0, "0 m"},       {0.9, "0 m"},       {850.7, "850 m"},     {999.99, "999 m"},   {1000.0, "1,0 km"},
        {1049.0, "1,0 km"}, {1051.0, "1,1 km"}, {12345.0, "12,3 km"}, {9999.0, "10,0 km"}, {1234567.0, "1234,6 km"}};
    for (const auto& [meter, text] : faelle) {
        EXPECT_EQ(Formate::strecke(meter), text);
    }
    EXPECT_EQ(Formate::strecke(1e300), "1e+297 km") << "no wider than a window";
    EXPECT_EQ(Formate::strecke(9.99e14), "999000000000,0 km");
}

TEST(FormateTest, KoordinateHatFuenfStellen) {
    EXPECT_EQ(Formate::koordinate({47.3769, 8.5417}), "47.37690, 8.54170");
    EXPECT_EQ(Formate::koordinate({-0.000004, 180.0}), "-0.00000, 180.00000");
    EXPECT_EQ(Formate::koordinate({1e22, -1e-9}), "10000000000000000000000.00000, -0.00000");
}

TEST(FormateTest, DatumStehtInDerZeitzoneDesProzesses) {
    const auto in = [](const char* zone, Zeitpunkt zeit) {
        std::string text;
        {
            const Umgebung umgebung({{"TZ", zone}});
            ::tzset();
            text = Formate::datumsFormat(zeit) + "|" + Formate::datumZeitFormat(zeit);
        }
        ::tzset();
        return text;
    };
    const Zeitpunkt silvester{757382399.75};  // 2024-12-31T23:59:59.75Z
    EXPECT_EQ(in("UTC0", silvester), "31.12.24|31.12.24 23:59");
    EXPECT_EQ(in("CET-1", silvester), "01.01.25|01.01.25 00:59");
    EXPECT_EQ(in("EST5", silvester), "31.12.24|31.12.24 18:59");
    // Summer time by a rule that needs no zone files.
    const Zeitpunkt sommer{741873600.0};  // 2024-07-05T12:00:00Z
    EXPECT_EQ(in("CET-1CEST,M3.5.0,M10.5.0/3", sommer), "05.07.24|05.07.24 14:00");
    EXPECT_EQ(in("UTC0", Zeitpunkt{-0.5}), "31.12.00|31.12.00 23:59");
    EXPECT_EQ(in("UTC0", Zeitpunkt{1e300}), "–|–") << "beyond every calendar";
    EXPECT_EQ(in("UTC0", Zeitpunkt{-1e300}), "–|–");
}

}  // namespace spurkiste
