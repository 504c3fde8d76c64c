#include <QImage>
#include <algorithm>
#include <cmath>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "ui/tabelle/Zeilenbau.h"
#include "ui/tabelle/ZellenZeichner.h"
#include "ui/teile/KistePapier.h"

namespace spurkiste {
namespace {

constexpr int kBreite = 1055;
constexpr int kHoehe = ZellenZeichner::kZeilenhoehe;

std::vector<ZellenZeichner::Lage> lagen() {
    std::vector<ZellenZeichner::Lage> ergebnis;
    int x = 0;
    for (const Spaltenangaben& spalte : kSpalten) {
        ergebnis.push_back({spalte.spalte, x, spalte.breite->anfangs});
        x += spalte.breite->anfangs;
    }
    return ergebnis;
}

QRect zelle(Spalte spalte) {
    const auto lage = lagen()[static_cast<std::size_t>(spalte)];
    return {lage.links, 0, lage.breite, kHoehe};
}

QImage gemalt(const Zeile& zeile, ZellenZeichner::Zustand zustand = {}, double verhaeltnis = 1.0) {
    ZellenZeichner zeichner;
    QImage bild((QSizeF(kBreite, kHoehe) * verhaeltnis).toSize(), QImage::Format_RGB32);
    bild.setDevicePixelRatio(verhaeltnis);
    bild.fill(KistePapier::karte);
    QPainter maler(&bild);
    zeichner.zeichne(maler, QRect(0, 0, kBreite, kHoehe), zeile, lagen(), zustand);
    return bild;
}

/// The colours of a cell that are as they are in the palette; edges of letters are mixed.
std::set<QRgb> farben(const QImage& bild, const QRect& flaeche) {
    std::set<QRgb> ergebnis;
    for (int y = flaeche.top(); y <= flaeche.bottom(); ++y) {
        for (int x = flaeche.left(); x <= flaeche.right(); ++x) {
            ergebnis.insert(bild.pixel(x, y));
        }
    }
    return ergebnis;
}

/// Whether some point of the cell comes near a colour: thin strokes do not reach it quite.
bool hat(const QImage& bild, Spalte spalte, const QColor& farbe) {
    const auto punkte = farben(bild, zelle(spalte));
    return std::any_of(punkte.begin(), punkte.end(), [&](QRgb punkt) {
        return std::abs(qRed(punkt) - farbe.red()) + std::abs(qGreen(punkt) - farbe.green()) +
                   std::abs(qBlue(punkt) - farbe.blue()) <
               60;
    });
}

TEST(ZellenZeichnerTest, coloursSayWhatTheFileKnows) {
    const auto voll = gemalt(*zeileMit(0, "Tour", [](GpxMetadaten& e) {
        e.datum = Zeitpunkt{};
        e.hatZeitstempel = true;
        e.sportRoh = "rowing";
        e.startOrt = "Zürich";
        e.ende = Koordinate{47.5, 8.5};
    }));
    const auto karg = gemalt(*zeileMit(1, "Tour"));
    EXPECT_TRUE(hat(voll, Spalte::datum, KistePapier::tinte));
    EXPECT_FALSE(hat(karg, Spalte::datum, KistePapier::tinte));
    EXPECT_TRUE(hat(voll, Spalte::ghost, KistePapier::gruen));
    EXPECT_FALSE(hat(karg, Spalte::ghost, KistePapier::gruen));
    EXPECT_TRUE(hat(voll, Spalte::start, KistePapier::tinte));
    EXPECT_FALSE(hat(voll, Spalte::ziel, KistePapier::tinte));
    EXPECT_TRUE(hat(voll, Spalte::name, KistePapier::blau));
    EXPECT_TRUE(hat(karg, Spalte::name, KistePapier::gold));
    EXPECT_TRUE(hat(voll, Spalte::sport, KistePapier::tinte));
    EXPECT_FALSE(hat(karg, Spalte::sport, KistePapier::tinte));
    EXPECT_FALSE(hat(voll, Spalte::art, KistePapier::tinte));
}

TEST(ZellenZeichnerTest, theBandLiesOverTheWholeRow) {
    const auto zeile = zeileMit(0, "Tour");
    for (const double verhaeltnis : {1.0, 2.0}) {
        const QImage ohne = gemalt(*zeile, {}, verhaeltnis);
        const QImage mit = gemalt(*zeile, {.ueberfahren = false, .gewaehlt = true}, verhaeltnis);
        const auto& band = KistePapier::auswahlband;
        for (int y = 0; y < ohne.height(); ++y) {
            for (int x = 0; x < ohne.width(); ++x) {
                const QColor vorher = ohne.pixelColor(x, y);
                const QColor nachher = mit.pixelColor(x, y);
                const auto erwartet = [&](int unten, int oben) {
                    return unten + (oben - unten) * static_cast<double>(band.alphaF());
                };
                ASSERT_NEAR(nachher.red(), erwartet(vorher.red(), band.red()), 2) << x << ' ' << y;
                ASSERT_NEAR(nachher.blue(), erwartet(vorher.blue(), band.blue()), 2) << x << ' ' << y;
            }
        }
    }
    const QImage ohne = gemalt(*zeile);
    const QImage ueber = gemalt(*zeile, {.ueberfahren = true, .gewaehlt = false});
    EXPECT_NE(ueber.pixel(0, 0), ohne.pixel(0, 0));
    EXPECT_NE(ueber.pixel(kBreite - 1, kHoehe - 1), ohne.pixel(kBreite - 1, kHoehe - 1));
    // The hairline keeps off both edges.
    const QRgb grund = KistePapier::karte.rgb();
    for (const auto& [x, linie] : {std::pair(13, false), {14, true}, {kBreite - 15, true}, {kBreite - 14, false}}) {
        EXPECT_EQ(ohne.pixel(x, kHoehe - 1) != grund, linie) << x;
    }
}

TEST(ZellenZeichnerTest, theCapsuleIsAsWideAsItsContent) {
    ZellenZeichner zeichner;
    const QRect feld = zelle(Spalte::sport);
    const auto breite = [&](const char* roh, bool schnell = false) {
        return zeichner
            .kapsel(feld, *zeileMit(0, "Tour",
                                    [&](GpxMetadaten& e) {
                                        if (*roh != '\0') {
                                            e.sportRoh = roh;
                                        } else if (schnell) {
                                            e.streckeMeter = 20'000;
                                            e.dauerSekunden = 3'600;
                                            e.hatZeitstempel = true;
                                        }
                                    }))
            .width();
    };
    // The same label with and without the wand: its place and one gap.
    EXPECT_NEAR(breite("", true) - breite("cycling"), 16.0, 0.01);
    // No icon for what nobody knows, and no wand, as the file names it.
    EXPECT_LT(breite("X"), 8 + 5 + 9 + 8 + 12);
    EXPECT_GT(breite("Gleitschirmfliegen mit Motor"), 111.9);
    EXPECT_LE(breite("Gleitschirmfliegen mit Motor"), 112.0);
    EXPECT_EQ(zeichner.kapsel(feld, *zeileMit(0, "Tour")).left(), feld.left() + 4);
}

/// Names of any kind stay in their cells, and the cells in their row.
TEST(ZellenZeichnerTest, oddTextsStayInTheirCells) {
    const QImage leer = gemalt(*zeileMit(0, "", [](GpxMetadaten& e) { e.sportRoh = "x"; }));
    for (const std::string& name :
         {std::string(500, 'W'), std::string("a\nb\tc"), std::string("\u202everkehrt \u200f"),
          std::string("🚵🏽‍♀️ 🏔️"), std::string("עברית العربية ") + std::string(200, 'x'),
          std::string("e\u0301\u0302\u0303")}) {
        const QImage bild = gemalt(*zeileMit(0, name, [&](GpxMetadaten& e) {
            e.sportRoh = "x";
            e.zielOrt = name;
            e.streckeMeter = 1e300;
            e.anstiegMeter = 1e300;
        }));
        const QRect danach = zelle(Spalte::datum);
        EXPECT_EQ(farben(bild, danach), farben(leer, danach)) << name;
        const QRect rand(zelle(Spalte::ziel).right() - 7, 0, 8, kHoehe - 1);
        EXPECT_EQ(farben(bild, rand), std::set<QRgb>{KistePapier::karte.rgb()}) << name;
        const QRect ghost = zelle(Spalte::ghost);
        EXPECT_EQ(farben(bild, ghost), farben(leer, ghost)) << name;
    }
}

}  // namespace
}  // namespace spurkiste
