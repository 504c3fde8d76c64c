#include <atomic>
#include <latch>
#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "base/ArbeiterPool.h"
#include "base/Gemeinsam.h"
#include "hilfe/HandAusfuehrer.h"

namespace spurkiste {

TEST(Gemeinsam, WaitsForNobodyWhoHasNotBegun) {
    int mal = 0;
    arbeiteGemeinsam(nullptr, 3, [&mal] { ++mal; });
    EXPECT_EQ(mal, 1);
    HandAusfuehrer spaete;
    arbeiteGemeinsam(&spaete, 3, [&mal] { ++mal; });
    EXPECT_EQ(mal, 2);
    EXPECT_EQ(spaete.wartende(), 3u);
    spaete.fuehreAlle();
    EXPECT_EQ(mal, 2) << "the door was closed";
}

TEST(Gemeinsam, WaitsForAllWhoHaveBegun) {
    ArbeiterPool pool(3);
    for (int runde = 0; runde < 300; ++runde) {
        std::atomic<int> aufgaben = 50;
        std::atomic<int> erledigte = 0;
        arbeiteGemeinsam(&pool, 3, [&] {
            while (--aufgaben >= 0) {
                ++erledigte;
            }
        });
        ASSERT_EQ(erledigte, 50);
    }
}

TEST(Gemeinsam, BringsExceptionsToTheCallerWhenAllHaveEnded) {
    ArbeiterPool pool(1);
    std::latch beide(2);
    std::atomic<int> drinnen = 2;
    const auto arbeite = [&, ich = std::this_thread::get_id()] {
        beide.arrive_and_wait();
        --drinnen;
        if (std::this_thread::get_id() != ich) {
            throw std::runtime_error("of a helper");
        }
    };
    EXPECT_THROW(arbeiteGemeinsam(&pool, 1, arbeite), std::runtime_error);
    EXPECT_EQ(drinnen, 0);
}

}  // namespace spurkiste
