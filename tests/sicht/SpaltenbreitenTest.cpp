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
                EXPECT_EQ(nachher[stelle], std::max(breite, Spaltenbreiten::kMindestens[stelle]));
                for (std::size_t i = 0; i < nachher.size(); ++i) {
                    // Only places right of it give way, and take what comes free.
                    if (i < stelle || (i > stelle && kSpalten[i].breite->dehnung == 0)) {
                        EXPECT_EQ(nachher[i], vorher[i]) << i;
                    }
                    EXPECT_GE(nachher[i], Spaltenbreiten::kMindestens[i]);
                }
                EXPECT_TRUE(spalte == Spalte::ziel || summe(nachher) >= platz);  // behind the last one it is free
                EXPECT_EQ(Spaltenbreiten::ausText(breiten.alsText()), breiten);
            }
        }
    }
}

TEST(SpaltenbreitenTest, figuresAreNeverCutWhateverGivesWay) {
    Breiten bedarf = Spaltenbreiten::kMindestens;
    bedarf[static_cast<std::size_t>(Spalte::laenge)] = 90;
    bedarf[static_cast<std::size_t>(Spalte::punkte)] = 75;
    const Spaltenbreiten breiten;
    // At the usual size names and places make the room for them.
    EXPECT_EQ(breiten.verteile(1055, bedarf), (Breiten{198, 100, 118, 90, 65, 60, 75, 44, 82, 112, 111}));
    Breiten engste = Spaltenbreiten::kMindestens;
    engste[3] = 90;
    engste[6] = 75;
    EXPECT_EQ(breiten.verteile(700, bedarf), engste);
    Spaltenbreiten eigene;
    eigene.ziehe(Spalte::laenge, 60, eigene.verteile(1055), 1055, bedarf);
    EXPECT_EQ(eigene.verteile(1055, bedarf)[3], 90);
}

TEST(SpaltenbreitenTest, whatAPullTookComesBackWithTheNextOne) {
    Spaltenbreiten breiten;
    const auto ziehe = [&](Spalte spalte, int breite, int platz = 1055) {
        breiten.ziehe(spalte, breite, breiten.verteile(platz), platz);
        return breiten.verteile(platz);
    };
    const Breiten anfang = breiten.verteile(1055);
    EXPECT_EQ(ziehe(Spalte::name, 600), (Breiten{600, 100, 118, 70, 65, 60, 56, 44, 82, 90, 90}));
    EXPECT_EQ(ziehe(Spalte::name, 220), anfang);
    // A width of the user's own is taken by nothing, neither by another pull nor for want of room.
    (void)ziehe(Spalte::start, 150);
    EXPECT_EQ(ziehe(Spalte::name, 300), (Breiten{300, 100, 118, 70, 65, 60, 56, 44, 82, 150, 90}));
    EXPECT_EQ(breiten.verteile(800), (Breiten{300, 100, 96, 60, 60, 56, 52, 42, 76, 150, 90}));
    EXPECT_EQ(breiten.verteile(1055), (Breiten{300, 100, 118, 70, 65, 60, 56, 44, 82, 150, 90}));
    EXPECT_EQ(Spaltenbreiten::ausText(breiten.alsText()), breiten);
    // In a wider room the others take what there is.
    EXPECT_EQ(summe(breiten.verteile(1500)), 1500);
    EXPECT_EQ(breiten.verteile(1500)[0], 300);
}

TEST(SpaltenbreitenTest, readsWidthsFromBeforeTheUsersOwnWereMarked) {
    const auto breiten = Spaltenbreiten::ausText("1055 300 100 104 62 61 57 53 43 78 95 102");
    EXPECT_EQ(breiten.verteile(1055), (Breiten{300, 100, 104, 62, 61, 57, 53, 43, 78, 95, 102}));
    EXPECT_EQ(summe(breiten.verteile(1300)), 1300);
}

TEST(SpaltenbreitenTest, startsAnewFromATextItDoesNotKnow) {
    for (const char* text :
         {"", "x", "1055", "1055 220 100 118 70 65 60 56 44 82 120", "1055 220 100 118 70 65 60 56 44 82 120 120 1",
          "1055 139 100 118 70 65 60 56 44 82 120 120", "0 220 100 118 70 65 60 56 44 82 120 120",
          "1055 220 100* * 118 70 65 60 56 44 82 120 120", "1055* 220 100 118 70 65 60 56 44 82 120 120",
          "1055,220,100,118,70,65,60,56,44,82,120,120", "1055 220 100 118 70 65 60 56 44 82 120 999999999"}) {
        EXPECT_EQ(Spaltenbreiten::ausText(text), Spaltenbreiten()) << text;
    }
}

}  // namespace
}  // namespace spurkiste
