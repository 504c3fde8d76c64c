#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "base/Zahl.h"
#include "places/Ortsbuch.h"
#include "platform/Ressourcen.h"

namespace spurkiste {
namespace {

constexpr double kUnendlich = std::numeric_limits<double>::infinity();
constexpr double kKeineZahl = std::numeric_limits<double>::quiet_NaN();

using Name = std::optional<std::string_view>;

TEST(Ortsbuch, LiestBrauchbareZeilenUndUebergehtAndere) {
    struct Fall {
        std::string text;
        std::size_t anzahl;
        Name beiZuerich;  ///< what is found at 47.37, 8.54
    };
    const Fall faelle[] = {
        {"", 0, std::nullopt},
        {"\n\n\n", 0, std::nullopt},
        {"A\t47.37\t8.54\n", 1, "A"},
        {"A\t47.37\t8.54", 1, "A"},
        {"\n\nA\t47.37\t8.54\n\nB\t1\t2", 2, "A"},
        {"\t\tA\t\t47.37\t8.54\t\n", 1, "A"},
        {"A\t47.37\t8.54\r\n", 0, std::nullopt},
        {"A\t47.37\r\t8.54\n", 0, std::nullopt},
        {"A\r\t47.37\t8.54\n", 1, "A\r"},
        {"A\t47.37\n8.54\n", 0, std::nullopt},
        {"A\t47.37\t8.54\tCH\n", 0, std::nullopt},
        {"A 47.37 8.54\n", 0, std::nullopt},
        {"A\t 47.37\t8.54\n", 0, std::nullopt},
        {"A\t47,37\t8.54\n", 0, std::nullopt},
        {"A\t47.37N\t8.54\n", 0, std::nullopt},
        {"A\t4.7.37\t8.54\n", 0, std::nullopt},
        {"A\t-\t8.54\n", 0, std::nullopt},
        {"A\t--47.37\t8.54\n", 0, std::nullopt},
        {"A\t.\t8.54\n", 0, std::nullopt},
        {"A\tnan\t8.54\nA\t47.37\tinf\nA\t1e999\t8.54\n", 0, std::nullopt},
        {"A\t1e300\t8.54\nA\t47.37\t-1e300\n", 0, std::nullopt},
        {"A\t1e17\t8.54\nA\t47.37\t9.3e17\n", 0, std::nullopt},
        {"A\t47.37000000\t8.540000000\n", 1, "A"},
        {"A\t+4737e-2\t085.4e-1\n", 1, "A"},
        {"A\t47.37000000000000000001\t8.539999999999\n", 1, "A"},
        {"A\t47.\t8.\nB\t.5\t-.5\n", 2, std::nullopt},
        {"A\t95\t8.54\nB\t47.37\t1000\n", 2, std::nullopt},
        {"Z\u00fcrich\t47.37\t8.54\n\u4e2d\u6587\t1\t2\n", 2, "Z\u00fcrich"},
        {"A\t47.37\t8.54\nB\xff\t1\t2\n", 0, std::nullopt},
    };
    for (const Fall& fall : faelle) {
        const Ortsbuch buch(fall.text);
        EXPECT_EQ(buch.anzahl(), fall.anzahl) << fall.text;
        EXPECT_EQ(buch.naechster({47.37, 8.54}, 15000), fall.beiZuerich) << fall.text;
    }
}

TEST(Ortsbuch, NimmtDieGrenzeMitUndBeiGleichstandDenErsten) {
    // A and B lie alike far east and west of the point, in cells side by side; a and b in the same cell and spot.
    const Ortsbuch buch(
        "B\t0.05\t10.0625\nA\t0.05\t9.9375\nb\t20\t20\na\t20\t20\n"
        "N\t0.0625\t30\nS\t-0.0625\t30\n");
    const Koordinate mitte{0.05, 10.0};
    ASSERT_EQ(entfernung(mitte, {0.05, 10.0625}), entfernung(mitte, {0.05, 9.9375}));
    EXPECT_EQ(buch.naechster(mitte, 15000), "A") << "the western cell is visited first";
    EXPECT_EQ(buch.naechster({0, 30}, 15000), "S") << "and the southern one, though it is not in the point's own row";
    EXPECT_EQ(buch.naechster({20.01, 20.01}, 15000), "b") << "the order in the file";

    const double genau = entfernung({20.01, 20.01}, {20, 20});
    EXPECT_EQ(buch.naechster({20.01, 20.01}, genau), "b");
    EXPECT_EQ(buch.naechster({20.01, 20.01}, std::nextafter(genau, 0.0)), std::nullopt);
    EXPECT_EQ(buch.naechster({20, 20}, 0.0), "b");
    EXPECT_EQ(buch.naechster({20, 20}, -1.0), std::nullopt);
    EXPECT_EQ(buch.naechster({20, 20}, kKeineZahl), std::nullopt);
}

TEST(Ortsbuch, SuchtNurInDenNachbarzellen) {
    const Ortsbuch buch("Ost\t70\t-179.99\nNord\t70\t20.35\n");
    EXPECT_EQ(buch.naechster({70, 179.85}, 15000), std::nullopt) << "6 km away, across the 180th degree";
    EXPECT_EQ(buch.naechster({70, 179.95}, 15000), "Ost") << "the numbers of a row run on into the next row's";
    EXPECT_EQ(buch.naechster({70, 20.05}, 15000), std::nullopt) << "11 km away, three cells";
    EXPECT_EQ(buch.naechster({70, 20.15}, 15000), "Nord");
    EXPECT_EQ(buch.naechster({1e300, 20}, kUnendlich), std::nullopt);
    EXPECT_EQ(buch.naechster({70, -1.7e308}, kUnendlich), std::nullopt);
}

/// The search as it is meant: a map of cells, every place of 25 cells in turn, nothing left out.
class SchlichteSuche {
  public:
    void nimm(const std::string& name, const Koordinate& lage) {
        if (const auto nummer = zelle(lage, 0, 0)) {
            gitter_[*nummer].push_back({name, lage});
        }
    }

    [[nodiscard]] std::optional<std::string> naechster(const Koordinate& punkt, double maxMeter) const {
        double bester = kUnendlich;
        std::optional<std::string> name;
        for (std::int64_t zeile = -2; zeile <= 2; ++zeile) {
            for (std::int64_t spalte = -2; spalte <= 2; ++spalte) {
                const auto nummer = zelle(punkt, zeile, spalte);
                const auto orte = nummer ? gitter_.find(*nummer) : gitter_.end();
                for (std::size_t i = 0; orte != gitter_.end() && i < orte->second.size(); ++i) {
                    const double abstand = entfernung(punkt, orte->second[i].second);
                    if (abstand <= maxMeter && abstand < bester) {
                        bester = abstand;
                        name = orte->second[i].first;
                    }
                }
            }
        }
        return name;
    }

  private:
    static std::optional<std::int64_t> zelle(const Koordinate& lage, std::int64_t zeilen, std::int64_t spalten) {
        const double zeile = (lage.breite + 90) * 10;
        const double spalte = (lage.laenge + 180) * 10;
        if (std::fabs(zeile) > 2e15 || std::fabs(spalte) > 1e18) {
            return std::nullopt;
        }
        return (static_cast<std::int64_t>(zeile) + zeilen) * 3601 + static_cast<std::int64_t>(spalte) + spalten;
    }

    std::map<std::int64_t, std::vector<std::pair<std::string, Koordinate>>> gitter_;
};

/// One corner of the world, or beyond it, to strew places and points in.
struct Gegend {
    const char* was;
    Koordinate mitte;
    double streuung;
    int stellen;  ///< decimals of the places; few make many ties
};

TEST(Ortsbuch, FindetUeberallDasselbeWieDieSchlichteSuche) {
    const Gegend gegenden[] = {
        {"dense", {47.3, 8.5}, 0.3, 5},
        {"dense, many decimals", {-33.9, 151.2}, 0.3, 12},
        {"ties", {0.0, 0.0}, 0.4, 1},
        {"ties in the north", {66.0, 25.0}, 0.4, 2},
        {"row and column 0", {-90.0, -180.0}, 0.4, 3},
        {"the 180th degree in the west", {-16.8, -180.0}, 0.5, 4},
        {"the 180th degree in the east", {-16.8, 180.0}, 0.5, 4},
        {"north pole", {90.0, 0.0}, 0.6, 4},
        {"near the north pole", {89.0, 100.0}, 0.4, 4},
        {"near the south pole", {-88.9, -60.0}, 0.4, 4},
        {"beyond the east end, cells of the next rows", {10.0, 540.1}, 0.5, 4},
        {"beyond the pole", {100.0, 9.0}, 0.5, 4},
        {"far outside", {9999.0, -9999.0}, 0.5, 3},
        {"huge", {1e9, 3e9}, 0.5, 3},
        {"at the end of the cell numbers", {1.5e14, 9e16}, 1e3, 0},
    };
    std::mt19937_64 zufall(20);  // NOLINT(cert-msc*): the same cases in every run
    std::uniform_real_distribution<double> um(-1.0, 1.0);
    std::string text;
    SchlichteSuche schlicht;
    for (const Gegend& gegend : gegenden) {
        for (int i = 0; i < 250; ++i) {
            const std::string breite = zahl::fest(gegend.mitte.breite + um(zufall) * gegend.streuung, gegend.stellen);
            const std::string laenge = zahl::fest(gegend.mitte.laenge + um(zufall) * gegend.streuung, gegend.stellen);
            const std::string name = std::string(gegend.was).append(" ").append(std::to_string(i));
            text.append(name).append("\t").append(breite).append("\t").append(laenge).append("\n");
            schlicht.nimm(name, {zahl::lies(breite).value(), zahl::lies(laenge).value()});
        }
    }
    const Ortsbuch buch(text);
    EXPECT_EQ(buch.anzahl(), 250 * std::size(gegenden));
    int treffer = 0;
    for (const Gegend& gegend : gegenden) {
        for (int i = 0; i < 400; ++i) {
            Koordinate punkt{gegend.mitte.breite + um(zufall) * gegend.streuung * 1.5,
                             gegend.mitte.laenge + um(zufall) * gegend.streuung * 1.5};
            if (i % 4 == 0) {  // halfway between places and on the borders of cells
                punkt = {std::round(punkt.breite * 20) / 20, std::round(punkt.laenge * 20) / 20};
            }
            for (const double maxMeter : {15000.0, 700.0, kUnendlich}) {
                const auto erwartet = schlicht.naechster(punkt, maxMeter);
                const Name gefunden = buch.naechster(punkt, maxMeter);
                ASSERT_EQ(gefunden, erwartet ? Name(*erwartet) : std::nullopt)
                    << gegend.was << " " << punkt.breite << " " << punkt.laenge << " " << maxMeter;
                treffer += gefunden ? 1 : 0;
            }
        }
    }
    EXPECT_GT(treffer, 6000);
}

TEST(Ortsbuch, LiestDieMitgelieferteDateiStueckweiseWieAufEinmal) {
    const auto pfad = ressourcen::finde("orte", "tsv");
    ASSERT_TRUE(pfad);
    const std::string inhalt = dateien::liesGanz(*pfad).value();
    const Ortsbuch ganz(inhalt);
    const Ortsbuch& geteilt = Ortsbuch::geteilt();
    EXPECT_EQ(ganz.anzahl(), std::count(inhalt.begin(), inhalt.end(), '\n')) << "every line is a place";
    EXPECT_EQ(geteilt.anzahl(), ganz.anzahl());
    EXPECT_EQ(&geteilt, &Ortsbuch::geteilt());
    std::mt19937_64 zufall(3);  // NOLINT(cert-msc*)
    std::uniform_real_distribution<double> breite(36.0, 60.0);
    std::uniform_real_distribution<double> laenge(-10.0, 30.0);
    for (int i = 0; i < 2000; ++i) {
        const Koordinate punkt{breite(zufall), laenge(zufall)};
        ASSERT_EQ(geteilt.naechster(punkt, 15000), ganz.naechster(punkt, 15000));
    }
    EXPECT_EQ(geteilt.naechster({46.0207, 7.7491}, 15000), "Zermatt");
    EXPECT_EQ(geteilt.naechster({0.0, -30.0}, 15000), std::nullopt) << "in the middle of the Atlantic";
}

}  // namespace
}  // namespace spurkiste
