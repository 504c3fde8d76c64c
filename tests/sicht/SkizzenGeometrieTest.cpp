#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/Skizzenbau.h"
#include "sicht/SkizzenGeometrie.h"

namespace spurkiste {
namespace {

using Linien = std::vector<std::vector<Koordinate>>;
using Punkt = SkizzenGeometrie::Punkt;

constexpr double kBreite = 324;
constexpr double kHoehe = 204;

GpxMetadaten spur(const Linien& linien) {
    GpxMetadaten eintrag;
    eintrag.skizze = skizzeAus(linien);
    return eintrag;
}

/// The geometry with every point mapped.
struct Bild {
    std::vector<std::vector<Punkt>> linien;  ///< of two points and more
    std::vector<Punkt> einzelne;
    std::optional<Punkt> fleck;
    std::optional<Punkt> start;
    std::optional<Punkt> ende;
};

Bild geometrie(const GpxMetadaten& eintrag, double breite = kBreite, double hoehe = kHoehe) {
    const auto geometrie = SkizzenGeometrie::berechne(eintrag, breite, hoehe);
    Bild bild{{}, {}, geometrie.fleck(), geometrie.start(), geometrie.ende()};
    for (std::size_t nummer = 0; nummer < geometrie.linien().linien(); ++nummer) {
        std::vector<Punkt> linie;
        for (const Koordinate& ort : geometrie.linien().linie(nummer)) {
            linie.push_back(geometrie.bild(ort));
        }
        if (linie.size() == 1) {
            bild.einzelne.push_back(linie.front());
        } else if (!linie.empty()) {
            bild.linien.push_back(linie);
        }
    }
    return bild;
}

void erwarte(const Punkt& punkt, double x, double y) {
    EXPECT_NEAR(punkt.x, x, 1e-6);
    EXPECT_NEAR(punkt.y, y, 1e-6);
}

TEST(SkizzenGeometrie, northIsUpAndTheLimitingAxisFillsTheSurfaceButItsMargins) {
    // On the equator degrees are as long on both axes: 1 degree fills 180 points of height, and is centred in width.
    auto eintrag = spur({{{-0.5, 10}, {0.5, 11}}});
    eintrag.start = Koordinate{-0.5, 10};
    eintrag.ende = Koordinate{1.5, 13};  // outside the sketch: where the mapping puts it
    const auto bild = geometrie(eintrag);
    ASSERT_EQ(bild.linien.size(), 1U);
    erwarte(bild.linien[0][0], 72, 192);
    erwarte(bild.linien[0][1], 252, 12);
    erwarte(*bild.start, 72, 192);
    erwarte(*bild.ende, 612, -168);
    EXPECT_FALSE(bild.fleck);
}

TEST(SkizzenGeometrie, aDegreeOfLongitudeIsHalfAsLongAtSixtyDegrees) {
    const auto bild = geometrie(spur({{{59.5, 0}, {60.5, 2}}}));
    const auto& linie = bild.linien[0];
    EXPECT_NEAR(linie[1].x - linie[0].x, linie[0].y - linie[1].y, 0.01);
}

TEST(SkizzenGeometrie, straightTracksStandInTheMiddle) {
    const auto nordSued = geometrie(spur({{{47, 8}, {48, 8}}}));
    EXPECT_NEAR(nordSued.linien[0][0].x, kBreite / 2, 1e-3);
    EXPECT_NEAR(nordSued.linien[0][0].y - nordSued.linien[0][1].y, kHoehe - 24, 1e-6);
    const auto westOst = geometrie(spur({{{47, 8}, {47, 9}}}));
    EXPECT_NEAR(westOst.linien[0][0].y, kHoehe / 2, 1e-3);
    EXPECT_NEAR(westOst.linien[0][1].x - westOst.linien[0][0].x, kBreite - 24, 1e-6);
}

TEST(SkizzenGeometrie, oneplaceIsADotAndNoPlaceIsNothing) {
    auto ohne = spur({});
    ohne.start = Koordinate{1, 2};
    const auto nichts = geometrie(ohne);
    EXPECT_FALSE(nichts.start || nichts.fleck || !nichts.linien.empty());
    auto ort = spur({{{47, 8}, {47.00000005, 8}}, {{47, 8.00000005}}});
    ort.start = Koordinate{47, 8};
    const auto fleck = geometrie(ort);
    EXPECT_EQ(fleck.fleck, (Punkt{kBreite / 2, kHoehe / 2}));
    EXPECT_FALSE(fleck.start || !fleck.linien.empty() || !fleck.einzelne.empty());
}

TEST(SkizzenGeometrie, absurdTracksAndSurfacesGiveFiniteFigures) {
    constexpr double groesste = std::numeric_limits<double>::max();
    for (const auto& linie : std::vector<std::vector<Koordinate>>{{{9999, 9999}, {-9999, -9999}},
                                                                  {{1e300, 0}, {-1e300, 1e300}},
                                                                  {{groesste, -groesste}, {-groesste, groesste}}}) {
        auto eintrag = spur({linie});
        eintrag.start = linie[0];
        for (const auto& [breite, hoehe] : {std::pair{kBreite, kHoehe}, std::pair{10.0, 5.0}, std::pair{0.0, 0.0}}) {
            const auto bild = geometrie(eintrag, breite, hoehe);
            for (const Punkt& punkt : bild.linien[0]) {
                EXPECT_LE(std::abs(punkt.x), SkizzenGeometrie::kGrenze);
                EXPECT_LE(std::abs(punkt.y), SkizzenGeometrie::kGrenze);
            }
        }
    }
}

}  // namespace
}  // namespace spurkiste
