#include <QColor>
#include <QImage>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/Skizzenbau.h"
#include "ui/detail/SkizzenAnsicht.h"
#include "ui/teile/KistePapier.h"

namespace spurkiste {
namespace {

using Linien = std::vector<std::vector<Koordinate>>;

constexpr int kBreite = 334;
constexpr int kHoehe = SkizzenAnsicht::kHoehe;

Eintrag spur(const Linien& linien, std::optional<Koordinate> start = {}, std::optional<Koordinate> ende = {}) {
    GpxMetadaten eintrag;
    eintrag.skizze = skizzeAus(linien);
    eintrag.start = start;
    eintrag.ende = ende;
    return std::make_shared<const GpxMetadaten>(std::move(eintrag));
}

/// The widget as it paints a record, at the screen's device pixels per logical one.
QImage bild(const Eintrag& eintrag, QSize groesse = {kBreite, kHoehe}) {
    SkizzenAnsicht ansicht;
    ansicht.resize(groesse);
    ansicht.zeige(eintrag);
    return ansicht.grab().toImage();
}

/// Whether two colours look the same.
bool gleich(const QColor& a, const QColor& b) {
    return std::abs(a.red() - b.red()) <= 2 && std::abs(a.green() - b.green()) <= 2 &&
           std::abs(a.blue() - b.blue()) <= 2;
}

/// How large an area has a colour, in logical pixels.
double flaeche(const QImage& gemalt, const QColor& farbe) {
    int treffer = 0;
    for (int y = 0; y < gemalt.height(); ++y) {
        for (int x = 0; x < gemalt.width(); ++x) {
            treffer += gleich(gemalt.pixelColor(x, y), farbe);
        }
    }
    return treffer / (gemalt.devicePixelRatio() * gemalt.devicePixelRatio());
}

/// The colour in the middle.
QColor mitte(const QImage& gemalt) {
    return gemalt.pixelColor(gemalt.width() / 2, gemalt.height() / 2);
}

TEST(SkizzenAnsicht, degenerateTracksShowWhatTheyHave) {
    constexpr Koordinate hier{47, 8};
    constexpr Koordinate dort{47.01, 8};
    struct Fall {
        const char* was;
        Eintrag eintrag;
        double goldVon;
        double goldBis;
        bool gruen;
        bool rot;
    };
    for (const Fall& fall : std::vector<Fall>{
             {"nothing", nullptr, 0, 0, false, false},
             {"one point", spur({{hier}}, hier, hier), 12, 29, false, false},
             {"a line with ends", spur({{hier, dort}}, hier, dort), 1.2 * 150, 3 * 190, true, true},
             {"two lone points", spur({{hier}, {}, {dort}}), 2 * 4, 2 * 14, false, false},
             {"ends outside", spur({{hier, dort}}, Koordinate{60, 60}, Koordinate{-60, -60}), 1.2 * 150, 570, false,
              false},
             {"the finish hides the start", spur({{hier, dort}}, hier, hier), 1.2 * 150, 570, false, true},
             {"from pole to pole", spur({{{90, 0}, {-90, 0}}}), 1.2 * 150, 570, false, false},
             {"across the antimeridian", spur({{{1, 179}, {2, -179}}}), 1.2 * 260, 3 * 310, false, false},
             {"nonsense", spur({{{1e300, -1e300}, {-1e300, 1e300}}}, Koordinate{1e308, 0}), 0, 2000, false, false},
         }) {
        const QImage gemalt = bild(fall.eintrag);
        const double gold = flaeche(gemalt, KistePapier::gold);
        EXPECT_GE(gold, fall.goldVon) << fall.was;
        EXPECT_LE(gold, fall.goldBis) << fall.was;
        EXPECT_EQ(flaeche(gemalt, KistePapier::gruen) > 20, fall.gruen) << fall.was;
        EXPECT_EQ(flaeche(gemalt, KistePapier::rot) > 20, fall.rot) << fall.was;
    }
}

TEST(SkizzenAnsicht, paintsAtAnySize) {
    const Eintrag eintrag = spur({{{47, 8}, {47.1, 8.1}, {47, 8.2}}, {{47.05, 8.1}}}, Koordinate{47, 8});
    for (const int breite : {1, 19, 20, 45, 333, 2000}) {
        EXPECT_FALSE(bild(eintrag, {breite, kHoehe}).isNull());
    }
}

TEST(SkizzenAnsicht, aGapStaysAGap) {
    // Two lines along the equator with a tenth of the width between them, and one without a gap.
    EXPECT_TRUE(gleich(mitte(bild(spur({{{0, 0}, {0, 0.45}}, {{0, 0.55}, {0, 1}}}))), KistePapier::eierschale));
    EXPECT_TRUE(gleich(mitte(bild(spur({{{0, 0}, {0, 1}}}))), KistePapier::gold));
}

/// How far two pictures are apart at most, per channel, and on average.
std::pair<int, double> abstand(const QImage& a, const QImage& b) {
    int groesster = 0;
    double summe = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            const int hier =
                std::max({std::abs(p.red() - q.red()), std::abs(p.green() - q.green()), std::abs(p.blue() - q.blue())});
            groesster = std::max(groesster, hier);
            summe += hier;
        }
    }
    return {groesster, summe / (static_cast<double>(a.width()) * a.height())};
}

TEST(SkizzenAnsicht, aHundredThousandPointsLookLikeTheFewThatMatter) {
    // The same square, once with its corners only and once in tiny steps, whole and in pieces of two points.
    const std::vector<Koordinate> ecken{{0, 0}, {0, 1}, {1, 1}, {1, 0}, {0, 0}};
    const auto aufDemWeg = [&](double stelle) {
        const auto seite = std::min(static_cast<std::size_t>(stelle), ecken.size() - 2);
        const double rest = stelle - static_cast<double>(seite);
        const Koordinate& a = ecken[seite];
        const Koordinate& b = ecken[seite + 1];
        return Koordinate{a.breite + rest * (b.breite - a.breite), a.laenge + rest * (b.laenge - a.laenge)};
    };
    constexpr int anzahl = 100'000;
    Linien ganz(1);
    Linien stuecke;
    for (int i = 0; i <= anzahl; ++i) {
        const Koordinate ort = aufDemWeg(4.0 * i / anzahl);
        if (i > 0) {
            stuecke.push_back({ganz[0].back(), ort});
        }
        ganz[0].push_back(ort);
    }
    const QImage wenige = bild(spur({ecken}));
    for (const Linien& viele : {ganz, stuecke}) {
        const auto [groesster, mittel] = abstand(wenige, bild(spur(viele)));
        EXPECT_LE(groesster, 12) << viele.size();
        EXPECT_LE(mittel, 0.05) << viele.size();
    }
}

}  // namespace
}  // namespace spurkiste
