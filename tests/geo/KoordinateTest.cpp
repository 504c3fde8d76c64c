#include <cmath>

#include <gtest/gtest.h>

#include "geo/Koordinate.h"

namespace spurkiste {
namespace {

constexpr double kHalberUmfang = kErddurchmesser / 2.0 * 3.141592653589793;

TEST(Entfernung, WirdAlsGrosskreisGemessen) {
    struct Fall {
        const char* was;
        Koordinate a;
        Koordinate b;
        double meter;
    };
    const Fall faelle[] = {
        {"the same point", {47.3, 8.5}, {47.3, 8.5}, 0.0},
        {"a degree along the equator", {0, 0}, {0, 1}, 111194.93},
        {"a degree along a meridian", {46, 7}, {47, 7}, 111194.93},
        {"a degree along the parallel of 60", {60, 10}, {60, 11}, 55596.93},
        {"across the 180th degree", {0, 179.5}, {0, -179.5}, 111194.93},
        {"over the pole", {89, 0}, {89, 180}, 222389.85},
        {"at the pole longitude means nothing", {90, 0}, {90, 135}, 0.0},
        {"opposite points", {0, 0}, {0, 180}, kHalberUmfang},
        {"the full turn", {12, 5}, {12, 365}, 0.0},
    };
    for (const Fall& fall : faelle) {
        EXPECT_NEAR(entfernung(fall.a, fall.b), fall.meter, 0.005 + fall.meter * 1e-8) << fall.was;
        EXPECT_EQ(entfernung(fall.a, fall.b), entfernung(fall.b, fall.a)) << fall.was;
        const double kosinusA = std::cos(bogenmass(fall.a.breite));
        const double kosinusB = std::cos(bogenmass(fall.b.breite));
        EXPECT_EQ(entfernungMitKosinus(fall.a, kosinusA, fall.b, kosinusB), entfernung(fall.a, fall.b)) << fall.was;
    }
}

// Callers compare with "at most": whatever is no distance must fail that comparison, not pass it.
TEST(Entfernung, IstFuerUnmoeglicheKoordinatenNieKlein) {
    EXPECT_FALSE(entfernung({1e308, 0}, {1e308, 0}) <= 300.0);
    EXPECT_FALSE(entfernung({0, 1e308}, {0, -1e308}) <= 300.0);
    EXPECT_FALSE(entfernung({0, 0}, {INFINITY, 0}) <= 300.0);
    EXPECT_TRUE(entfernung({0, 1e308}, {0, 1e308}) <= 300.0);
}

}  // namespace
}  // namespace spurkiste
