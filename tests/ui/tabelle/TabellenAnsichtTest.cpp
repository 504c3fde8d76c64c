// What the table shows of the rows and the selection that it is given.
#include <QAccessible>
#include <QApplication>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/tabelle/TabellenAnsicht.h"
#include "ui/tabelle/Tabellenbuehne.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kHoehe = ZellenZeichner::kZeilenhoehe;

class TabellenAnsichtTest : public testing::Test, protected Tabellenbuehne {
  protected:
    [[nodiscard]] int oben() const { return tabelle.verticalScrollBar()->value(); }
    void rolle(int wert) { tabelle.verticalScrollBar()->setValue(wert); }
};

TEST_F(TabellenAnsichtTest, keepsHiddenRowsSelected) {
    tabelle.setzeZeilen(zeilen(zahlen(0, 40)));
    tabelle.setzeAuswahl({pfad(3), pfad(7), pfad(8), "/anderswo.gpx"});
    EXPECT_THAT(markiert(), ElementsAre(3, 7, 8));

    tabelle.setzeZeilen(zeilen({8, 5, 2}));
    EXPECT_THAT(markiert(), ElementsAre(0));
    tabelle.setzeZeilen({});
    tabelle.setzeZeilen(zeilen(zahlen(5, 40)));
    EXPECT_THAT(markiert(), ElementsAre(2, 3));
    EXPECT_EQ(tabelle.auswahl().size(), 4U);

    // A file that is read again under its number, one that comes later, and all of it without a word.
    tabelle.setzeZeilen({zeileMit(50, "3"), zeileMit(7, "7")});
    EXPECT_THAT(markiert(), ElementsAre(0, 1));
    tabelle.setzeAuswahl({});
    EXPECT_THAT(markiert(), IsEmpty());
    EXPECT_THAT(gemeldet, IsEmpty());
}

TEST_F(TabellenAnsichtTest, keepsWhatIsAtTheTopWhileTheOrderStays) {
    const auto alle = zeilen(zahlen(0, 400));
    const auto ohne = [&](std::uint32_t von, std::uint32_t bis) {
        Zeilen rest = alle;
        rest.erase(rest.begin() + von, rest.begin() + bis);
        return rest;
    };
    struct Fall {
        const char* was;
        int oben;
        Zeilen nachher;
        int erwartet;
    };
    const std::vector<Fall> faelle{
        {"at the beginning, rows come and go", 0, ohne(0, 100), 0},
        {"rows above go", 200 * kHoehe + 5, ohne(10, 60), 150 * kHoehe + 5},
        {"rows below go", 200 * kHoehe + 5, ohne(300, 390), 200 * kHoehe + 5},
        {"the uppermost goes, the next keeps its place", 200 * kHoehe + 5, ohne(200, 201), 199 * kHoehe + 5},
        {"the whole page goes", 200 * kHoehe + 5, ohne(190, 290), 190 * kHoehe},
        {"another order", 200 * kHoehe + 5, Zeilen(alle.rbegin(), alle.rend()), 200 * kHoehe + 5},
        {"hardly anything stays", 200 * kHoehe + 5, ohne(10, 400), 0},
    };
    for (const Fall& fall : faelle) {
        tabelle.setzeZeilen(alle);
        rolle(fall.oben);
        tabelle.setzeZeilen(fall.nachher);
        EXPECT_EQ(oben(), fall.erwartet) << fall.was;
    }
    // New files arrive above.
    tabelle.setzeZeilen(ohne(0, 50));
    rolle(100 * kHoehe);
    tabelle.setzeZeilen(alle);
    EXPECT_EQ(oben(), 150 * kHoehe);
}

TEST_F(TabellenAnsichtTest, keepsTheKeyboardOnItsFile) {
    tabelle.setzeZeilen(zeilen(zahlen(0, 400)));
    klicke(5);
    tabelle.setzeZeilen(zeilen({9, 5, 1}));
    EXPECT_EQ(aktuelle(), 5U);
    tabelle.setzeZeilen(zeilen({9, 1}));
    EXPECT_EQ(aktuelle(), 1U);
    // While its row is hidden the keyboard goes on near by, and returns to it unless the user has moved on.
    tabelle.setzeZeilen(zeilen(zahlen(0, 400)));
    EXPECT_EQ(aktuelle(), 5U);
    tabelle.setzeZeilen(zeilen({2, 4, 9, 11}));
    EXPECT_EQ(aktuelle(), 9U);
    taste(Qt::Key_Down);  // marks where it stands, and skips nothing
    EXPECT_EQ(tabelle.auswahl(), TabellenAnsicht::Auswahl{pfad(9)});
    tabelle.setzeZeilen(zeilen(zahlen(0, 400)));
    EXPECT_EQ(aktuelle(), 9U);
    tabelle.setzeZeilen(zeilen({2, 4, 9, 11}));
    taste(Qt::Key_Down);
    tabelle.setzeZeilen(zeilen(zahlen(0, 400)));
    EXPECT_EQ(aktuelle(), 11U);
    taste(Qt::Key_Down);
    EXPECT_EQ(aktuelle(), 12U);
    // It does not drag the view along.
    rolle(300 * kHoehe);
    tabelle.setzeZeilen(zeilen(zahlen(1, 400)));
    EXPECT_EQ(oben(), 299 * kHoehe);
    tabelle.setzeZeilen({});
    EXPECT_EQ(aktuelle(), std::nullopt);
}

TEST_F(TabellenAnsichtTest, keepsTheSelectedRowInViewWhenItWasInView) {
    const auto alle = zahlen(0, 400);
    const auto rueckwaerts = std::vector<std::uint32_t>(alle.rbegin(), alle.rend());
    const auto zuSehen = [&](std::uint32_t kennung) {
        const int hoehe = tabelle.modell().liste().stelleVon(kennung) * kHoehe - oben();
        return hoehe >= 0 && hoehe + kHoehe <= tabelle.viewport()->height();
    };
    tabelle.setzeZeilen(zeilen({5, 200, 390}));
    klicke(1);
    for (const auto& reihen : {alle, rueckwaerts, alle}) {  // the search is over, another order, and back
        tabelle.setzeZeilen(zeilen(reihen));
        EXPECT_TRUE(zuSehen(200));
    }
    tabelle.setzeZeilen(zeilen({5, 390}));  // hidden for a while
    tabelle.setzeZeilen(zeilen(alle));
    EXPECT_TRUE(zuSehen(200));
    rolle(0);  // out of sight by the user's own hand
    tabelle.setzeZeilen(zeilen(zahlen(0, 399)));
    tabelle.setzeZeilen(zeilen(rueckwaerts));
    EXPECT_EQ(oben(), 0);
}

TEST_F(TabellenAnsichtTest, fitsItsColumnsAndRemembersTheUsers) {
    tabelle.setzeZeilen(zeilen(zahlen(0, 40)));
    const auto breite = [&](Spalte spalte) { return tabelle.columnWidth(static_cast<int>(spalte)); };
    EXPECT_EQ(breite(Spalte::name), 220);
    EXPECT_EQ(breite(Spalte::ziel), 120);
    tabelle.resize(1514, 638);
    EXPECT_EQ(breite(Spalte::name), 420);
    EXPECT_EQ(tabelle.horizontalScrollBar()->maximum(), 0);
    tabelle.resize(800, 638);
    EXPECT_EQ(breite(Spalte::name), 140);
    EXPECT_EQ(tabelle.horizontalScrollBar()->maximum(), 62);
    tabelle.resize(1055, 638);

    // As a pull on the border does.
    tabelle.horizontalHeader()->resizeSection(0, 260);
    EXPECT_EQ(breite(Spalte::name), 260);
    EXPECT_EQ(tabelle.horizontalScrollBar()->maximum(), 0);
    tabelle.horizontalHeader()->resizeSection(0, 10);
    EXPECT_EQ(breite(Spalte::name), 140);
    TabellenAnsicht zweite;
    zweite.setzeSpaltenbreiten(tabelle.spaltenbreiten());
    zweite.resize(1055, 638);
    zweite.show();
    EXPECT_EQ(zweite.columnWidth(0), 140);
    // Twice on a border: as wide as what can be seen.
    Zeilen lang = zeilen(zahlen(0, 40));
    lang[3] = zeileMit(3, "Ein Name, der breiter ist als die Spalte zuvor");
    tabelle.setzeZeilen(lang);
    tabelle.resizeColumnToContents(0);
    EXPECT_GT(breite(Spalte::name), 240);
    EXPECT_LT(breite(Spalte::name), 340);
}

TEST_F(TabellenAnsichtTest, cutsNoFigureAndTakesNothingForGood) {
    const Zeilen lange{zeileMit(0, "0", [](GpxMetadaten& e) {
        e.streckeMeter = 12'345'678;
        e.dauerSekunden = 1'234'567;
        e.anstiegMeter = 123'456;
        e.punkte = 1'234'567;
    })};
    Zahlentexte figuren;
    figuren.nimm(*lange.front());
    tabelle.setzeZeilen(lange);
    tabelle.setzeZahlen(figuren);
    ZellenZeichner mass;
    const auto heil = [&] {
        return std::all_of(kSpalten.begin(), kSpalten.end(), [&](const Spaltenangaben& spalte) {
            return !istZahl(spalte.spalte) || tabelle.columnWidth(static_cast<int>(*spalte.spalte)) >=
                                                  mass.idealbreite(*lange.front(), spalte.spalte);
        });
    };
    for (const int breite : {1055, 800, 720}) {
        tabelle.resize(breite, 638);
        EXPECT_TRUE(heil()) << breite;
    }
    QHeaderView* kopf = tabelle.horizontalHeader();
    const int vorher = kopf->length();
    kopf->setFocus();
    for (const Qt::Key hin : {Qt::Key_Right, Qt::Key_Left}) {
        for (int i = 0; i < 20; ++i) {
            QTest::keyClick(kopf, hin, Qt::ShiftModifier);
        }
        EXPECT_TRUE(heil());
        EXPECT_EQ(kopf->length(), vorher + (hin == Qt::Key_Right ? 200 : 0));
    }
    // Keyboard and wheel reach what stands beside the view, and the header goes along.
    QTest::keyClick(kopf, Qt::Key_End);
    QScrollBar* balken = tabelle.horizontalScrollBar();
    EXPECT_EQ(balken->value(), balken->maximum());
    EXPECT_EQ(kopf->offset(), balken->maximum());
    const QPointF wo(100, 100);
    QWheelEvent rad(wo, tabelle.mapToGlobal(wo), {}, {0, 2400}, Qt::NoButton, Qt::ShiftModifier, Qt::NoScrollPhase,
                    false);
    QApplication::sendEvent(tabelle.viewport(), &rad);
    EXPECT_EQ(balken->value(), 0);
    // The longest of figures takes no more than a figure's room.
    figuren.nimm(*zeileMit(1, "1", [](GpxMetadaten& e) { e.streckeMeter = 1e300; }));
    tabelle.setzeZahlen(figuren);
    EXPECT_LT(tabelle.columnWidth(static_cast<int>(Spalte::laenge)), 250);
}

TEST_F(TabellenAnsichtTest, canBeReadByAScreenReader) {
    tabelle.setzeZeilen({zeileMit(0, "Tour", [](GpxMetadaten& e) { e.hatZeitstempel = true; }), zeileMit(1, "Weg")});
    QAccessibleInterface* zugang = QAccessible::queryAccessibleInterface(&tabelle);
    ASSERT_NE(zugang, nullptr);
    EXPECT_EQ(zugang->role(), QAccessible::Table);
    EXPECT_EQ(zugang->text(QAccessible::Name), "GPX-Dateien");
    QAccessibleTableInterface* gitter = zugang->tableInterface();
    ASSERT_NE(gitter, nullptr);
    EXPECT_EQ(gitter->rowCount(), 2);
    EXPECT_EQ(gitter->columnDescription(8), "Art");
    EXPECT_EQ(gitter->cellAt(1, 0)->text(QAccessible::Name), "Weg");
    EXPECT_EQ(gitter->cellAt(0, 7)->text(QAccessible::Name), "Zeitstempel vorhanden — Ghost-tauglich");

    gitter->selectRow(1);  // a gesture as well
    EXPECT_THAT(gemeldet, ElementsAre(Pfade{"/bibliothek/Weg.gpx"}));
    EXPECT_TRUE(gitter->cellAt(1, 0)->state().selected);
    EXPECT_FALSE(gitter->cellAt(0, 0)->state().selected);
}

}  // namespace
}  // namespace spurkiste
