#include <gtest/gtest.h>

#include "cli/Fortschritt.h"

namespace spurkiste {
namespace {

TEST(Fortschritt, growsWithWhatWasReadAndCleansUpAfterItself) {
    Fortschritt leer(80);
    EXPECT_EQ(leer.zeile(0), std::nullopt);
    EXPECT_EQ(leer.raeumeAuf(), "");

    Fortschritt balken(80);
    EXPECT_EQ(balken.zeile(4), "\r\x1b[K[                              ] 0 / 4");
    EXPECT_EQ(balken.zeile(4), std::nullopt);
    EXPECT_EQ(balken.zeile(3), "\r\x1b[K[=======                       ] 1 / 4");
    EXPECT_EQ(balken.zeile(0), "\r\x1b[K[==============================] 4 / 4");
    EXPECT_EQ(balken.raeumeAuf(), "\r\x1b[K");
    EXPECT_EQ(balken.raeumeAuf(), "");
}

TEST(Fortschritt, neverWrapsANarrowTerminal) {
    EXPECT_EQ(Fortschritt(20).zeile(1000), "\r\x1b[K0 / 1000");
    EXPECT_EQ(Fortschritt(8).zeile(1000), std::nullopt);
}

}  // namespace
}  // namespace spurkiste
