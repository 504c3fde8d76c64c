#include <algorithm>
#include <numeric>

#include <gtest/gtest.h>

#include "sicht/Spaltenbreiten.h"

namespace spurkiste {
namespace {

using Breiten = Spaltenbreiten::Breiten;

int summe(const Breiten& breiten) {
    return std::accumulate(breiten.begin(), breiten.end(), 0);
}

TEST(SpaltenbreitenTest, fitsTheColumnsIntoTheRoom) {
    struct Fall {
        int platz;
        Breiten breiten;
    };
    const Fall faelle[] = {
        {1055, {220, 100, 118, 70, 65, 60, 56, 44, 82, 120, 120}},  // as they start
        {1114, {220, 120, 118, 76, 72, 66, 62, 48, 92, 120, 120}},  // all as they are best
        {1514, {420, 120, 118, 76, 72, 66, 62, 48, 92, 220, 220}},  // the rest to names and places, 2 : 1 : 1
        {915, {140, 100, 118, 70, 65, 60, 56, 44, 82, 90, 90}},     // names and places give way first
        {862, Spaltenbreiten::kMindestens},
        {500, Spaltenbreiten::kMindestens},  // and then it is scrolled
    };
    for (const Fall& fall : faelle) {
        EXPECT_EQ(Spaltenbreiten().verteile(fall.platz), fall.breiten) << fall.platz;
    }
    for (int platz = 862; platz < 1600; ++platz) {
        EXPECT_EQ(summe(Spaltenbreiten().verteile(platz)), platz);
    }
}

TEST(SpaltenbreitenTest, letsTheUserPullEveryBorder) {
    for (const int platz : {700, 1055, 1500}) {
        for (const Spaltenangaben& angaben : kSpalten) {
            const Spalte spalte = angaben.spalte;
            for (const int breite : {0, 80, 150, 400, 3000}) {
                SCOPED_TRACE(testing::Message() << platz << ' ' << static_cast<int>(spalte) << ' ' << breite);
                const auto stelle = static_cast<std::size_t>(spalte);
                Spaltenbreiten breiten;
                const Breiten vorher = breiten.verteile(platz);
                breiten.ziehe(spalte, breite, vorher, platz);
                const Breiten nachher = breiten.verteile(platz);
                EXPECT_GE(summe(nachher), platz);
                EXPECT_TRUE(
                    std::equal(nachher.begin(), nachher.begin() + static_cast<std::ptrdiff_t>(stelle), vorher.begin()));
                const int mindestens = Spaltenbreiten::kMindestens[stelle];
                if (spalte != Spalte::ziel) {
                    EXPECT_EQ(nachher[stelle], std::max(breite, mindestens));
                } else {
                    EXPECT_GE(nachher[stelle], std::max(breite, mindestens));  // nobody else fills the room
                }
                for (std::size_t i = 0; i < nachher.size(); ++i) {
                    EXPECT_GE(nachher[i], Spaltenbreiten::kMindestens[i]);
                }
                EXPECT_EQ(Spaltenbreiten::ausText(breiten.alsText()), breiten);
            }
        }
    }
}

TEST(SpaltenbreitenTest, givesBackWhatAPullTookAndRemembersItInOtherRooms) {
    Spaltenbreiten breiten;
    const Breiten anfang = breiten.verteile(1055);
    breiten.ziehe(Spalte::name, 300, anfang, 1055);
    EXPECT_EQ(summe(breiten.verteile(1055)), 1055);
    breiten.ziehe(Spalte::name, 220, anfang, 1055);
    EXPECT_EQ(breiten.verteile(1055), anfang);

    breiten.ziehe(Spalte::name, 600, anfang, 1055);
    const Breiten weit = breiten.verteile(1055);
    EXPECT_GT(summe(weit), 1055);
    EXPECT_NE(breiten.verteile(900), weit);
    EXPECT_EQ(breiten.verteile(1055), weit);
    // A table wider than its room gets narrower before its other columns take what comes free.
    breiten.ziehe(Spalte::name, 590, weit, 1055);
    Breiten erwartet = weit;
    erwartet[0] = 590;
    EXPECT_EQ(breiten.verteile(1055), erwartet);
}

TEST(SpaltenbreitenTest, startsAnewFromATextItDoesNotKnow) {
    for (const char* text :
         {"", "x", "1055", "1055 220 100 118 70 65 60 56 44 82 120", "1055 220 100 118 70 65 60 56 44 82 120 120 1",
          "1055 139 100 118 70 65 60 56 44 82 120 120", "0 220 100 118 70 65 60 56 44 82 120 120",
          "1055,220,100,118,70,65,60,56,44,82,120,120", "1055 220 100 118 70 65 60 56 44 82 120 999999999"}) {
        EXPECT_EQ(Spaltenbreiten::ausText(text), Spaltenbreiten()) << text;
    }
}

}  // namespace
}  // namespace spurkiste
