#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "track/GpxStatistik.h"

namespace spurkiste {

namespace {

constexpr double kOhne = std::numeric_limits<double>::quiet_NaN();

/// Points on the equator with these elevations in one segment.
std::vector<GpxPunkt> mitHoehen(const std::vector<double>& hoehen) {
    std::vector<GpxPunkt> punkte;
    for (const double hoehe : hoehen) {
        punkte.push_back({{0.0, 0.0}, hoehe, 0});
    }
    return punkte;
}

std::vector<std::size_t> laengen(const Skizze& skizze) {
    std::vector<std::size_t> ergebnis;
    for (std::size_t i = 0; i < skizze.linien(); ++i) {
        ergebnis.push_back(skizze.linie(i).size());
    }
    return ergebnis;
}

}  // namespace

TEST(GpxStatistikTest, StreckeUeberbruecktKeineSegmente) {
    const auto von = [](std::vector<GpxPunkt> punkte) { return GpxStatistik::strecke(punkte); };
    EXPECT_EQ(von({}), 0.0);
    EXPECT_EQ(von({{{5, 5}}}), 0.0);
    EXPECT_NEAR(von({{{0, 0}}, {{0, 1}}}), 111194.93, 0.005);
    EXPECT_EQ(von({{{0, 0}, kOhne, 0}, {{0, 1}, kOhne, 1}}), 0.0);
    // 1 to 2 again belong together although segment 0 came back in between.
    EXPECT_NEAR(von({{{0, 0}, 0, 0}, {{0, 1}, 0, 1}, {{0, 2}, 0, 1}, {{0, 3}, 0, 0}}), 111194.93, 0.005);
    // The kept cosines change no bit of the plain sum.
    const std::vector<GpxPunkt> punkte = {{{47.1, 8.3}}, {{47.1234567, 8.3000001}}, {{-12.5, 179.9}}, {{90, 0}}};
    double summe = 0.0;
    for (std::size_t i = 1; i < punkte.size(); ++i) {
        summe += entfernung(punkte[i - 1].ort, punkte[i].ort);
    }
    EXPECT_EQ(GpxStatistik::strecke(punkte), summe);
}

TEST(GpxStatistikTest, EinSegmentAusEinemPunktGehoertZuKeinemNachbarn) {
    const auto segmente = [](const std::vector<std::vector<double>>& hoehen) {
        std::vector<GpxPunkt> punkte;
        for (std::size_t i = 0; i < hoehen.size(); ++i) {
            for (const double hoehe : hoehen[i]) {
                punkte.push_back({{0.0, 0.0}, hoehe, static_cast<int>(i)});
            }
        }
        return GpxStatistik::anstieg(punkte);
    };
    const std::vector<double> steil = {0, 100, 300, 700, 1500, 3100, 6300};
    const double allein = segmente({steil});
    ASSERT_GT(allein, 0);
    for (const double einzelner : {0.0, 50.0, 9000.0}) {
        EXPECT_EQ(segmente({{einzelner}, steil}), allein) << einzelner;
        EXPECT_EQ(segmente({steil, {einzelner}}), allein) << einzelner;
        EXPECT_EQ(segmente({steil, {einzelner}, steil}), 2 * allein) << einzelner;
        EXPECT_EQ(segmente({{einzelner}, {0.0}, {einzelner}, steil}), allein) << einzelner;
    }
}

TEST(GpxStatistikTest, AnstiegZaehltJedenStiegDerGeglaettetenLinie) {
    const std::vector<std::pair<std::vector<double>, double>> faelle = {
        {{}, 0},
        {{7}, 0},
        {{100, 110}, 0},
        {{0, 50, 100}, 0},
        {{0, 10, 20, 30, 40}, 20},
        {{0, 0, 0, 100, 100, 100}, 100},
        {{40, 30, 20, 10, 0}, 0},
        {{0, 0, 0, 0, 10, 0, 0, 0, 0}, 2},
        {{100, kOhne, 105, 110}, 0},
        {{0, 10, 20, 30, 40, kOhne, 0, 10, 20, 30, 40}, 40},
        {{kOhne, kOhne, 0, 10, 20, 30, 40, kOhne}, 20},
    };
    for (const auto& [hoehen, anstieg] : faelle) {
        EXPECT_DOUBLE_EQ(GpxStatistik::anstieg(mitHoehen(hoehen)), anstieg) << testing::PrintToString(hoehen);
    }
    auto punkte = mitHoehen({0, 0, 0, 100, 100, 100});
    for (std::size_t i = 3; i < 6; ++i) {
        punkte[i].segment = 1;
    }
    EXPECT_EQ(GpxStatistik::anstieg(punkte), 0.0) << "no rise from one segment to the next";
}

TEST(GpxStatistikTest, AbsurdePunkteKostenNurIhreEigenenSchritte) {
    const double strecke = GpxStatistik::strecke(std::vector<GpxPunkt>{{{0, 0}}, {{0, 1}}});
    for (const Koordinate absurd : {Koordinate{1e308, 0}, {0, -1e308}, {1.7e308, -1.7e308}}) {
        const std::vector<GpxPunkt> punkte = {{{0, 0}}, {{0, 1}}, {absurd}, {{0, 1}}, {{0, 0}}};
        EXPECT_DOUBLE_EQ(GpxStatistik::strecke(punkte), 2 * strecke);
    }
    EXPECT_TRUE(std::isfinite(GpxStatistik::strecke(std::vector<GpxPunkt>{{{100, 0}}, {{80, 180}}, {{1e300, 7}}})));
    constexpr double riese = 1.7e308;
    const auto zickzack = mitHoehen({-riese, riese, -riese, riese, riese, riese, riese, riese, -riese, riese, 0, 0, 0});
    EXPECT_TRUE(std::isfinite(GpxStatistik::anstieg(zickzack)));
    EXPECT_FALSE(GpxStatistik::istRundkurs(5000, {1e308, 0}, {0, 0}));
}

TEST(GpxStatistikTest, RundkursAbTausendMeternUndUnterZweihundertAbstand) {
    const double gradJeMeter = 360.0 / (kErddurchmesser * 3.141592653589793);
    const auto ist = [&](double strecke, double abstand) {
        return GpxStatistik::istRundkurs(strecke, {0, 0}, {0, abstand * gradJeMeter});
    };
    EXPECT_TRUE(ist(1000, 0));
    EXPECT_FALSE(ist(999.99, 0));
    EXPECT_TRUE(ist(5000, 199.99));
    EXPECT_FALSE(ist(5000, 200.01));
}

TEST(GpxStatistikTest, SkizzeBehaeltJedenSchrittUndDasEnde) {
    using Laengen = std::vector<std::size_t>;
    const std::vector<std::pair<std::vector<std::size_t>, Laengen>> faelle = {
        {{}, {}},         {{1}, {1}},     {{300}, {300}},
        {{511}, {511}},   {{512}, {257}}, {{500, 500}, {168, 168}},
        {{767}, {384}},   {{768}, {257}}, {{766, 1, 1}, {256, 1, 1}},
        {{10000}, {258}},
    };
    for (const auto& [segmente, erwartet] : faelle) {
        std::vector<GpxPunkt> punkte;
        for (std::size_t s = 0; s < segmente.size(); ++s) {
            for (std::size_t i = 0; i < segmente[s]; ++i) {
                punkte.push_back({{static_cast<double>(i), 0.0}, kOhne, static_cast<std::int64_t>(s)});
            }
        }
        const Skizze skizze = GpxStatistik::skizze(punkte);
        EXPECT_EQ(laengen(skizze), erwartet) << testing::PrintToString(segmente);
        for (std::size_t s = 0; s < segmente.size(); ++s) {
            EXPECT_EQ(skizze.linie(s).front().breite, 0.0);
            EXPECT_EQ(skizze.linie(s).back().breite, static_cast<double>(segmente[s] - 1));
        }
    }
}

TEST(GpxStatistikTest, WetterMitteltUndWaehltDieHaeufigstenTexte) {
    EXPECT_EQ(WetterBilanz().zusammenfassung(), std::nullopt);

    WetterBilanz bilanz;
    bilanz.nimm({});
    EXPECT_EQ(bilanz.zusammenfassung(), (GpxWetter{{}, {}, {}, {}, {}, 1}));
    bilanz.nimm({10.0, {}, 1e308, "NW", " "});
    bilanz.nimm({11.0, 50.0, 1.7e308, " NW\n", "heiter"});
    bilanz.nimm({12.5, {}, 1e308, "SW", "Heiter"});
    bilanz.nimm({{}, 61.0, {}, "SW", "Heiter"});
    const auto wetter = bilanz.zusammenfassung();
    ASSERT_TRUE(wetter);
    EXPECT_DOUBLE_EQ(wetter->temperaturCelsius.value(), 33.5 / 3);
    EXPECT_EQ(wetter->luftfeuchteProzent, 55.5);
    EXPECT_EQ(wetter->windKmh, 1e308) << "a summand beyond the range of a double is left out";
    EXPECT_EQ(wetter->windrichtung, "NW") << "the first of equally frequent ones";
    EXPECT_EQ(wetter->lage, "Heiter");
    EXPECT_EQ(wetter->messpunkte, 5);
}

}  // namespace spurkiste
