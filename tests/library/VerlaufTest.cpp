#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "library/Verlauf.h"

namespace spurkiste {
namespace {

constexpr auto kZurueck = Richtung::zurueck;

std::size_t schritte(Verlauf verlauf) {
    std::size_t anzahl = 0;
    for (; verlauf.nimm(kZurueck); ++anzahl) {
    }
    return anzahl;
}

TEST(Verlauf, keepsSoManyStepsAndSoManyBytesAndTheNewestOnes) {
    Verlauf verlauf;
    for (std::size_t i = 0; i < Verlauf::kSchritte + 7; ++i) {
        verlauf.tue(Wegwurf{std::to_string(i), {}});
    }
    EXPECT_EQ(schritte(verlauf), Verlauf::kSchritte);
    EXPECT_EQ(std::get<Wegwurf>(verlauf.nimm(kZurueck)->front()).pfad, std::to_string(Verlauf::kSchritte + 6));

    const std::size_t viertel = Verlauf::kGewicht / 4;
    for (int i = 0; i < 5; ++i) {
        verlauf.tue(Umschrift{"a", {{{{0, 0}, std::string(viertel, 'x')}}, {}, {}, {}}});
    }
    EXPECT_EQ(schritte(verlauf), 3U);
    // What is too much alone bars the way to what came before: that would be another step than the one that is meant.
    verlauf.tue(Umschrift{"a", {{{{0, 0}, std::string(Verlauf::kGewicht, 'x')}}, {}, {}, {}}});
    EXPECT_EQ(schritte(verlauf), 0U);
}

}  // namespace
}  // namespace spurkiste
