#include <algorithm>
#include <atomic>
#include <future>
#include <latch>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"

namespace spurkiste {

TEST(ArbeiterPoolTest, FuehrtAlleAufgabenAusAuchDieVonAufgaben) {
    constexpr int anzahl = 5000;
    std::atomic<int> summe = 0;
    std::latch fertig(2 * anzahl);
    ArbeiterPool pool(4);
    for (int i = 0; i < anzahl; ++i) {
        pool.fuehreAus([&, i] {
            summe += i;
            pool.fuehreAus([&] { fertig.count_down(); });
            fertig.count_down();
        });
    }
    fertig.wait();
    EXPECT_EQ(summe, anzahl * (anzahl - 1) / 2);
}

TEST(ArbeiterPoolTest, EinArbeiterHaeltDieReihenfolgeEin) {
    std::vector<int> reihe;  // unguarded: only one thread writes, and the latch orders the reading after it
    std::latch fertig(100);
    ArbeiterPool pool(1);
    for (int i = 0; i < 100; ++i) {
        pool.fuehreAus([&, i] {
            reihe.push_back(i);
            fertig.count_down();
        });
    }
    fertig.wait();
    EXPECT_TRUE(std::is_sorted(reihe.begin(), reihe.end()));
}

TEST(ArbeiterPoolTest, EndeLaesstWartendesFallenUndLaufendesZuEndeKommen) {
    std::promise<void> begonnen;
    std::promise<void> gefallen;
    bool zuEnde = false;
    std::atomic<bool> gelaufen = false;
    {
        ArbeiterPool pool(1);
        pool.fuehreAus([&] {
            begonnen.set_value();
            gefallen.get_future().wait();  // set when the waiting task is destroyed, so only by the pool's end
            zuEnde = true;
        });
        const std::shared_ptr<void> faellt(nullptr, [&](void*) { gefallen.set_value(); });
        pool.fuehreAus([&gelaufen, faellt] { gelaufen = true; });
        begonnen.get_future().wait();
    }
    EXPECT_TRUE(zuEnde);
    EXPECT_FALSE(gelaufen);
}

TEST(HauptschlangeTest, SammeltAufgabenAllerFaedenAufEinem) {
    Hauptschlange schlange;
    const auto hier = std::this_thread::get_id();
    int gelaufen = 0;
    {
        std::vector<std::jthread> faeden;
        for (int faden = 0; faden < 4; ++faden) {
            faeden.emplace_back([&] {
                for (int i = 0; i < 250; ++i) {
                    schlange.fuehreAus([&] {
                        EXPECT_EQ(std::this_thread::get_id(), hier);
                        if (++gelaufen == 1000) {
                            schlange.fuehreAus([&] { gelaufen = -1; });
                            schlange.beende();
                        }
                    });
                }
            });
        }
        schlange.laufe();
    }
    EXPECT_EQ(gelaufen, 1000) << "what waited at the end is dropped";
}

}  // namespace spurkiste
