#include <cmath>
#include <functional>
#include <random>

#include <gtest/gtest.h>

#include "places/Gruppierung.h"

namespace spurkiste {
namespace {

using Punkte = std::vector<std::optional<Koordinate>>;

constexpr double kMeter = 1.0 / 111194.92664455873;  ///< in degrees of latitude

/// The grouping as it is meant: every point against every group in order of creation.
Gruppierung schlicht(const Punkte& punkte) {
    Gruppierung ergebnis;
    for (const auto& punkt : punkte) {
        if (!punkt) {
            ergebnis.gruppeZuPunkt.push_back(Gruppierung::kKeine);
            continue;
        }
        std::uint32_t nummer = 0;
        while (nummer < ergebnis.gruppen.size()) {
            const Gruppe& gruppe = ergebnis.gruppen[nummer];
            if (entfernung(*punkt, {gruppe.summeBreite / gruppe.anzahl, gruppe.summeLaenge / gruppe.anzahl}) <= 300.0) {
                break;
            }
            ++nummer;
        }
        if (nummer == ergebnis.gruppen.size()) {
            ergebnis.gruppen.emplace_back();
        }
        ergebnis.gruppen[nummer].summeBreite += punkt->breite;
        ergebnis.gruppen[nummer].summeLaenge += punkt->laenge;
        ergebnis.gruppen[nummer].anzahl += 1.0;
        ergebnis.gruppeZuPunkt.push_back(nummer);
    }
    return ergebnis;
}

/// A point that entfernung() puts at 300 m from (0, 0) to the last bit. Most longitudes have none, so it tries several.
Koordinate genau300Meter() {
    Koordinate punkt;
    for (int versuch = 0; versuch < 1000 && entfernung(punkt, {0, 0}) != 300.0; ++versuch) {
        double nah = 0.0;
        double fern = 0.01;
        while (std::nextafter(nah, fern) < fern) {
            punkt = {(nah + fern) / 2, versuch * 1e-7};
            (entfernung(punkt, {0, 0}) <= 300.0 ? nah : fern) = punkt.breite;
        }
        punkt.breite = nah;
    }
    return punkt;
}

TEST(Gruppierung, BedenktNamhafteFaelle) {
    constexpr auto keine = Gruppierung::kKeine;
    const Koordinate rand = genau300Meter();
    ASSERT_EQ(entfernung(rand, {0, 0}), 300.0);
    struct Fall {
        const char* was;
        Punkte punkte;
        std::vector<std::uint32_t> gruppen;
    };
    const auto nord = [](double meter) { return Koordinate{46.0 + meter * kMeter, 7.0}; };
    const Fall faelle[] = {
        {"nothing", {}, {}},
        {"missing points", {std::nullopt, nord(0), std::nullopt}, {keine, 0, keine}},
        {"the centre moves towards the second, so the third joins", {nord(0), nord(250), nord(420)}, {0, 0, 0}},
        {"in another order it does not", {nord(0), nord(420), nord(250)}, {0, 1, 0}},
        {"the older group wins, though the younger is nearer", {nord(0), nord(350), nord(250)}, {0, 1, 0}},
        {"300 m are near enough", {Koordinate{0, 0}, rand}, {0, 0}},
        {"a bit more is not", {Koordinate{0, 0}, Koordinate{rand.breite + 1e-15, rand.laenge}}, {0, 1}},
        {"across the 180th degree; the mean then lies elsewhere",
         {Koordinate{0, 179.9999}, Koordinate{0, -179.9999}, Koordinate{0, 179.9999}, Koordinate{0, 0}},
         {0, 0, 1, 0}},
        {"one pole, any longitude", {Koordinate{90, 0}, Koordinate{90, 120}, Koordinate{89.999, -60}}, {0, 0, 0}},
        {"latitudes that are no numbers in radians", {Koordinate{1e308, 0}, Koordinate{1e308, 0}}, {0, 1}},
        {"sums beyond a double", {Koordinate{0, 1e308}, Koordinate{0, 1e308}, Koordinate{0, 1e308}}, {0, 0, 1}},
        {"turns of the earth", {Koordinate{10, 5}, Koordinate{10, 3605}, Koordinate{10, 1805}}, {0, 0, 0}},
    };
    for (const Fall& fall : faelle) {
        EXPECT_EQ(Gruppierung::aus(fall.punkte).gruppeZuPunkt, fall.gruppen) << fall.was;
        EXPECT_EQ(schlicht(fall.punkte).gruppeZuPunkt, fall.gruppen) << fall.was;
    }
}

using Zufall = std::mt19937_64;

double zwischen(Zufall& zufall, double von, double bis) {
    return std::uniform_real_distribution<double>(von, bis)(zufall);
}

/// How the points of one run come about; called for each.
struct Welt {
    const char* was;
    std::function<Koordinate(Zufall&)> punkt;
};

TEST(Gruppierung, GleichtDemSchlichtenVergleichBitFuerBit) {
    const auto um = [](Zufall& z, const Koordinate& mitte, double meter) {
        return Koordinate{mitte.breite + zwischen(z, -meter, meter) * kMeter,
                          mitte.laenge + zwischen(z, -meter, meter) * kMeter};
    };
    const auto ganz = [](Zufall& z, int von, int bis) { return std::uniform_int_distribution<int>(von, bis)(z); };
    const Welt welten[] = {
        {"crowded: spots as near as their reach",
         [&](Zufall& z) {
             return um(z, {47.0, 8.5}, 3000);
         }},
        {"spots with noise",
         [&](Zufall& z) {
             return um(z, {40.0 + ganz(z, 0, 9) * 0.003, 9.0 + ganz(z, 0, 9) * 0.004}, 60);
         }},
        {"few decimals",
         [&](Zufall& z) {
             return Koordinate{ganz(z, 0, 40) / 1000.0, ganz(z, 0, 40) / 1000.0};
         }},
        {"north pole",
         [&](Zufall& z) {
             return Koordinate{90 - zwischen(z, 0, 0.02), zwischen(z, -180, 180)};
         }},
        {"a circle round the south pole",
         [&](Zufall& z) {
             return Koordinate{-89.995, zwischen(z, -180, 180)};
         }},
        {"the 180th degree",
         [&](Zufall& z) {
             Koordinate punkt = um(z, {-16.8, 180.0}, 900);
             punkt.laenge -= punkt.laenge > 180.0 ? 360.0 : 0.0;
             return punkt;
         }},
        {"a heap of means at longitude 0, and points beside it",
         [&](Zufall& z) {
             const double laengen[] = {180.0, -180.0, 280 * kMeter, 320 * kMeter, 335 * kMeter};
             return Koordinate{zwischen(z, -15, 15) * kMeter, laengen[ganz(z, 0, 4)]};
         }},
        {"a heap at the pole, and points beside it",
         [&](Zufall& z) {
             const double breite = zwischen(z, 30, 89);
             const double laenge = ganz(z, 0, 359);
             const int art = ganz(z, 0, 9);
             return art == 0
                        ? Koordinate{90 - zwischen(z, 250, 350) * kMeter, laenge}
                        : Koordinate{art < 5 ? std::floor(breite) : 180 - std::floor(breite), laenge + 180 * (art & 1)};
         }},
        {"turns of the earth and latitudes beyond the pole",
         [&](Zufall& z) {
             const Koordinate punkt = um(z, {88.0 + ganz(z, 0, 4), 5.0}, 400);
             return Koordinate{punkt.breite, punkt.laenge + 180.0 * ganz(z, -9, 9)};
         }},
        {"large numbers, to beyond where the grid ends",
         [&](Zufall& z) {
             const double mitte = std::ldexp(1.0, ganz(z, 10, 46));
             return um(z, {zwischen(z, 0, 1) < 0.5 ? mitte : 3.0, 360.0 * std::floor(mitte / 360.0) + 1}, 400);
         }},
        {"absurd ones among ordinary ones",
         [&](Zufall& z) {
             const double werte[] = {0.0,  -0.0, 1e-300, 45.0, 9999.0, 2147483647.0,
                                     1e10, 3e10, 1e15,   1e17, 1e300,  1.7e308};
             const auto wert = [&] { return werte[ganz(z, 0, 11)] * (ganz(z, 0, 3) == 0 ? -1.0 : 1.0); };
             return ganz(z, 0, 1) == 0 ? Koordinate{wert(), wert()} : Koordinate{45.0 * ganz(z, 0, 1), wert()};
         }},
    };
    for (const Welt& welt : welten) {
        for (unsigned saat = 1; saat <= 3; ++saat) {
            Zufall zufall(saat);  // NOLINT(cert-msc*): the same cases in every run
            Punkte punkte(2000);
            for (auto& punkt : punkte) {
                if (zwischen(zufall, 0, 1) > 0.03) {
                    punkt = welt.punkt(zufall);
                }
            }
            const Gruppierung erwartet = schlicht(punkte);
            const Gruppierung gefunden = Gruppierung::aus(punkte);
            ASSERT_EQ(gefunden.gruppeZuPunkt, erwartet.gruppeZuPunkt) << welt.was << ", seed " << saat;
            ASSERT_EQ(gefunden.gruppen, erwartet.gruppen) << welt.was << ", seed " << saat;
            ASSERT_GT(erwartet.gruppen.size(), 1) << welt.was;
        }
    }
}

}  // namespace
}  // namespace spurkiste
