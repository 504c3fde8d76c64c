#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "places/OrtsEtiketten.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::Optional;

TEST(OrtsEtiketten, NenntGruppenNachDemOrtBeiIhrerMitteSonstNachIhr) {
    const Ortsbuch buch("Dorf\t47.0\t8.0\nWeiler\t47.003\t8.0\n");
    const std::vector<std::optional<Koordinate>> punkte{
        Koordinate{47.0012, 8.0},  // alone it would be in Dorf, but the group's centre is nearer to Weiler
        std::nullopt,
        Koordinate{47.0028, 8.0},
        Koordinate{46.0, 7.0},
        Koordinate{-0.123456789, -0.0},
        Koordinate{0.0, 1e300},
        Koordinate{0.0, 1.7e308},
        Koordinate{0.0, 1.7e308},
    };
    const auto etiketten = OrtsEtiketten::berechne(punkte, buch);
    EXPECT_THAT(std::vector(etiketten.begin(), etiketten.begin() + 5),
                ElementsAre(Optional(std::string("Weiler")), std::nullopt, Optional(std::string("Weiler")),
                            Optional(std::string("46.00000, 7.00000")), Optional(std::string("-0.12346, -0.00000"))));
    EXPECT_EQ(etiketten[5].value().size(), std::string("0.00000, .00000").size() + 301);
    EXPECT_EQ(etiketten[6], std::nullopt) << "the sum of the group has no number, so its centre has no name";
    EXPECT_EQ(etiketten[7], std::nullopt);
    EXPECT_THAT(OrtsEtiketten::berechne({}, buch), testing::IsEmpty());
}

}  // namespace
}  // namespace spurkiste
