// What the user does with the table, and what it reports of it.
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QToolTip>
#include <limits>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/tabelle/Tabellenbuehne.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::string_literals;

class TabellenGestenTest : public testing::Test, protected Tabellenbuehne {
  protected:
    TabellenGestenTest() {
        tabelle.setzeZeilen(zeilen(zahlen(0, 100)));
        QObject::connect(&tabelle, &TabellenAnsicht::zeileGeoeffnet,
                         [this](const std::string& datei) { geoeffnet.push_back(datei); });
        QObject::connect(&tabelle, &TabellenAnsicht::kopfGeklickt, [this](Spalte spalte) { koepfe.push_back(spalte); });
        QObject::connect(&tabelle, &TabellenAnsicht::sportmenueGewuenscht,
                         [this](const std::string& datei, const QRect& kapsel) {
                             menues.push_back(datei);
                             kapseln.push_back(kapsel);
                         });
        QObject::connect(&tabelle, &TabellenAnsicht::kontextmenueGewuenscht,
                         [this](const QPoint& wo) { kontextmenues.push_back(wo); });
    }

    std::vector<std::string> geoeffnet;
    std::vector<Spalte> koepfe;
    std::vector<std::string> menues;
    std::vector<QRect> kapseln;
    std::vector<QPoint> kontextmenues;
};

TEST_F(TabellenGestenTest, aClickReplacesTheSelectionAndKeysExtendIt) {
    klicke(3);
    klicke(5, Qt::ControlModifier);
    klicke(7, Qt::ShiftModifier);
    klicke(5, Qt::ControlModifier);
    klicke(2);
    EXPECT_THAT(gemeldet, ElementsAre(pfade({3}), pfade({3, 5}), pfade({3, 5, 6, 7}), pfade({3, 6, 7}), pfade({2})));
    EXPECT_THAT(markiert(), ElementsAre(2));
    // Beside the rows: none.
    tabelle.setzeZeilen(zeilen({2, 4}));
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {}, QPoint(500, 500));
    EXPECT_EQ(gemeldet.back(), Pfade());
}

TEST_F(TabellenGestenTest, hiddenRowsGoWithAClickAndStayWithKeys) {
    tabelle.setzeAuswahl({pfad(3), pfad(50)});
    tabelle.setzeZeilen(zeilen(zahlen(0, 10)));
    klicke(5, Qt::ControlModifier);
    EXPECT_EQ(gemeldet.back(), pfade({3, 5, 50}));
    klicke(3, Qt::ControlModifier);
    EXPECT_EQ(gemeldet.back(), pfade({5, 50}));
    klicke(7, Qt::ShiftModifier);
    EXPECT_TRUE(gemeldet.back().contains(pfad(50)));
    tabelle.setzeAuswahl({pfad(4), pfad(50)});
    // A click on the one selected row that can be seen lets the hidden one go, though nothing seems to change.
    klicke(4);
    EXPECT_EQ(gemeldet.back(), pfade({4}));
    const std::size_t bisher = gemeldet.size();
    klicke(4);
    EXPECT_EQ(gemeldet.size(), bisher);

    tabelle.setzeAuswahl({pfad(50)});
    taste(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(gemeldet.back(), pfade(zahlen(0, 10)));
    tabelle.setzeZeilen(zeilen(zahlen(0, 100)));
    EXPECT_EQ(markiert().size(), 10U);
}

TEST_F(TabellenGestenTest, walksWithTheKeyboard) {
    struct Schritt {
        Qt::Key taste;
        Qt::KeyboardModifiers dazu;
        Tabellenbuehne::Pfade auswahl;
    };
    const int seite = tabelle.viewport()->height() / ZellenZeichner::kZeilenhoehe - 1;
    const auto bei = [](int reihe) { return pfade({static_cast<std::uint32_t>(reihe)}); };
    const std::vector<Schritt> weg{
        {Qt::Key_Down, {}, bei(0)},
        {Qt::Key_Down, {}, bei(1)},
        {Qt::Key_Down, Qt::ShiftModifier, pfade({1, 2})},
        {Qt::Key_Up, Qt::ShiftModifier, bei(1)},
        {Qt::Key_End, {}, bei(99)},
        {Qt::Key_Down, {}, bei(99)},
        {Qt::Key_PageUp, {}, bei(99 - seite)},
        {Qt::Key_Home, {}, bei(0)},
        {Qt::Key_PageDown, {}, bei(seite)},
        {Qt::Key_Up, {}, bei(seite - 1)},
    };
    for (const Schritt& schritt : weg) {
        taste(schritt.taste, schritt.dazu);
        EXPECT_EQ(sortiert(tabelle.auswahl()), schritt.auswahl) << schritt.taste;
        const QRect hier = tabelle.visualRect(tabelle.currentIndex());
        EXPECT_TRUE(tabelle.viewport()->rect().contains(QRect(1, hier.top(), 1, hier.height()))) << schritt.taste;
    }
    for (const auto& [sprung, reihe] : {std::pair(Qt::Key_End, 99), {Qt::Key_Home, 0}}) {
        taste(sprung);
        tabelle.setzeAuswahl({});
        taste(sprung);  // to where the keyboard is already
        EXPECT_EQ(sortiert(tabelle.auswahl()), bei(reihe));
    }
}

TEST_F(TabellenGestenTest, findsNamesByTheirLetters) {
    tabelle.setzeZeilen({zeileMit(0, "Alpstein"), zeileMit(1, "Bodensee"), zeileMit(2, "bern nach Brienz"),
                         zeileMit(3, "Älpli"), zeileMit(4, "Bern")});
    // However slow the machine is, these letters are one word.
    const int vorher = QApplication::keyboardInputInterval();
    QApplication::setKeyboardInputInterval(std::numeric_limits<int>::max());
    taste(Qt::Key_B);
    EXPECT_EQ(aktuelle(), 1U);
    taste(Qt::Key_E);
    taste(Qt::Key_R);
    taste(Qt::Key_N);
    EXPECT_EQ(aktuelle(), 2U);
    taste(Qt::Key_Space);
    QApplication::setKeyboardInputInterval(vorher);
    EXPECT_EQ(aktuelle(), 2U);
    EXPECT_THAT(menues, IsEmpty());
}

TEST_F(TabellenGestenTest, opensARowByDoubleClickOrKey) {
    klicke(4);
    QTest::mouseDClick(tabelle.viewport(), Qt::LeftButton, {}, mitte(4));
    QTest::mouseDClick(tabelle.viewport(), Qt::LeftButton, {}, mitte(5));  // the first click closed what lay above
    klicke(6);
    taste(Qt::Key_Return);
    taste(Qt::Key_F2);
    klicke(7, Qt::ControlModifier);
    taste(Qt::Key_Return);  // which of the two?
    EXPECT_THAT(geoeffnet, ElementsAre(pfad(4), pfad(6), pfad(6)));
}

TEST_F(TabellenGestenTest, theCapsuleIsAButton) {
    klicke(1);
    gemeldet.clear();
    const QRect zelle = tabelle.visualRect(tabelle.model()->index(4, static_cast<int>(Spalte::sport)));
    const QPoint kapsel = zelle.topLeft() + QPoint(15, 16);
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {}, kapsel);
    QTest::mouseDClick(tabelle.viewport(), Qt::LeftButton, {}, kapsel);
    EXPECT_THAT(menues, ElementsAre(pfad(4), pfad(4)));  // two quick clicks are two
    EXPECT_TRUE(kapseln.front().contains(tabelle.viewport()->mapToGlobal(kapsel)));
    EXPECT_NEAR(kapseln.front().height(), 25, 1);
    EXPECT_THAT(gemeldet, IsEmpty());
    EXPECT_THAT(geoeffnet, IsEmpty());
    // Beside it, and with a key held, the row is meant.
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, {}, QPoint(zelle.right() - 2, zelle.center().y()));
    QTest::mouseClick(tabelle.viewport(), Qt::LeftButton, Qt::ControlModifier, kapsel + QPoint(0, 32));
    EXPECT_THAT(gemeldet, ElementsAre(pfade({4}), pfade({4, 5})));
    taste(Qt::Key_F4);
    taste(Qt::Key_Space);
    EXPECT_THAT(menues, ElementsAre(pfad(4), pfad(4), pfad(5), pfad(5)));
}

TEST_F(TabellenGestenTest, asksForTheMenuOfTheSelectedRows) {
    klicke(1);
    klicke(2, Qt::ControlModifier);
    klicke(2, {}, Qt::RightButton);
    EXPECT_EQ(gemeldet.back(), pfade({1, 2}));
    klicke(8, {}, Qt::RightButton);
    EXPECT_EQ(gemeldet.back(), pfade({8}));
    const QPoint wo = tabelle.viewport()->mapToGlobal(mitte(8));
    QContextMenuEvent maus(QContextMenuEvent::Mouse, mitte(8), wo);
    QApplication::sendEvent(tabelle.viewport(), &maus);
    QContextMenuEvent taste(QContextMenuEvent::Keyboard, QPoint(), QPoint());
    QApplication::sendEvent(tabelle.viewport(), &taste);
    ASSERT_EQ(kontextmenues.size(), 2U);
    EXPECT_EQ(kontextmenues[0], wo);
    EXPECT_NEAR(kontextmenues[1].y(), wo.y(), 1);
}

TEST_F(TabellenGestenTest, aRightClickBesideTheRowsMeansNoneOfThem) {
    tabelle.setzeZeilen(zeilen({2, 4}));
    klicke(0);
    const QPoint daneben(60, tabelle.viewport()->height() - 10);
    QContextMenuEvent maus(QContextMenuEvent::Mouse, daneben, tabelle.viewport()->mapToGlobal(daneben));
    QApplication::sendEvent(tabelle.viewport(), &maus);
    EXPECT_THAT(kontextmenues, IsEmpty());
    EXPECT_THAT(markiert(), ElementsAre(0));
}

TEST_F(TabellenGestenTest, tooltipsShowNamesAsTheyAre) {
    const std::string name = "<h1>Wege &amp; Umwege " + std::string(200, 'x');
    tabelle.setzeZeilen({zeileMit(0, name, [](GpxMetadaten& e) {
        e.start = Koordinate{47.5, 8.25};
        e.startOrt = "Zürich";
    })});
    for (const auto& [spalte, text] : {std::pair(Spalte::name, name), std::pair(Spalte::start, "47.50000, 8.25000"s)}) {
        const QPoint wo = mitte(0, spalte);
        QHelpEvent hilfe(QEvent::ToolTip, wo, tabelle.viewport()->mapToGlobal(wo));
        QApplication::sendEvent(tabelle.viewport(), &hilfe);
        ASSERT_TRUE(Qt::mightBeRichText(QToolTip::text()));
        const QString gezeigt = QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
        EXPECT_EQ(QString(gezeigt).remove(QLatin1Char('\n')).toStdString(), text);  // what is long is broken
    }
}

TEST_F(TabellenGestenTest, aClickOnATitleSorts) {
    QHeaderView* kopf = tabelle.horizontalHeader();
    for (const Spalte spalte : {Spalte::punkte, Spalte::name, Spalte::start, Spalte::ghost}) {
        const int stelle = static_cast<int>(spalte);
        const QPoint mitte(kopf->sectionViewportPosition(stelle) + kopf->sectionSize(stelle) / 2, 15);
        QTest::mouseClick(kopf->viewport(), Qt::LeftButton, {}, mitte);
    }
    EXPECT_THAT(koepfe, ElementsAre(Spalte::punkte, Spalte::name, Spalte::ghost));
    EXPECT_THAT(gemeldet, IsEmpty());

    koepfe.clear();
    kopf->setFocus(Qt::TabFocusReason);
    QTest::keyClick(kopf, Qt::Key_Right);
    QTest::keyClick(kopf, Qt::Key_Space);
    EXPECT_EQ(kopf->accessibleName(), "Datum");
    QTest::keyClick(kopf, Qt::Key_End);
    QTest::keyClick(kopf, Qt::Key_Return);
    EXPECT_THAT(koepfe, ElementsAre(Spalte::datum));
}

TEST_F(TabellenGestenTest, everyOneOfQuickClicksOnATitleCountsAndNoneOnABorder) {
    QHeaderView* kopf = tabelle.horizontalHeader();
    const int rechts = kopf->sectionViewportPosition(1);  // where the names end
    const auto klickeSchnell = [&](int x) {
        const QPoint wo(x, 15);
        QTest::mouseClick(kopf->viewport(), Qt::LeftButton, {}, wo);
        QTest::mouseDClick(kopf->viewport(), Qt::LeftButton, {}, wo);
        QTest::mouseRelease(kopf->viewport(), Qt::LeftButton, {}, wo);
    };
    klickeSchnell(rechts / 2);
    EXPECT_THAT(koepfe, ElementsAre(Spalte::name, Spalte::name));
    EXPECT_EQ(kopf->sectionSize(0), rechts);

    klickeSchnell(rechts - 1);  // fits the column to its names, which are short
    EXPECT_EQ(koepfe.size(), 2U);
    EXPECT_EQ(kopf->sectionSize(0), Spaltenbreiten::kMindestens[0]);
}

TEST_F(TabellenGestenTest, showsTheKeyboardOnlyWhereItIsUsed) {
    const auto rahmen = [&] { return tabelle.findChild<Kartenrahmen*>()->fokus(); };
    ASSERT_TRUE(QTest::qWaitForWindowActive(&tabelle));
    tabelle.clearFocus();
    tabelle.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(rahmen());
    klicke(3);
    EXPECT_FALSE(rahmen());
    taste(Qt::Key_Down);
    EXPECT_TRUE(rahmen());
    tabelle.clearFocus();
    EXPECT_FALSE(rahmen());
}

TEST(TabellenTabTest, leadsThroughHeaderAndRows) {
    QWidget fenster;
    QLineEdit davor(&fenster);
    TabellenAnsicht tabelle(&fenster);
    QLineEdit danach(&fenster);
    fenster.show();
    fenster.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&fenster));
    davor.setFocus();
    std::vector<QWidget*> weg;
    for (const Qt::Key taste : {Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Backtab}) {
        QTest::keyClick(QApplication::focusWidget(), taste);
        weg.push_back(QApplication::focusWidget());
    }
    EXPECT_THAT(weg, ElementsAre(tabelle.horizontalHeader(), &tabelle, &danach, &tabelle));
}

TEST_F(TabellenGestenTest, theScrollBarIsPulled) {
    const auto balken = tabelle.findChildren<Rollbalken*>();
    Rollbalken* senkrecht = balken[0]->height() > balken[0]->width() ? balken[0] : balken[1];
    ASSERT_TRUE(senkrecht->isVisible());
    EXPECT_GE(senkrecht->y(), Tabellenkopf::kHoehe);
    QTest::mousePress(senkrecht, Qt::LeftButton, {}, QPoint(5, 10));
    QTest::mouseMove(senkrecht, QPoint(5, 2000));
    QTest::mouseRelease(senkrecht, Qt::LeftButton, {}, QPoint(5, 10));
    EXPECT_EQ(tabelle.verticalScrollBar()->value(), tabelle.verticalScrollBar()->maximum());
    EXPECT_LT(senkrecht->geometry().bottom(), tabelle.height());
    tabelle.setzeZeilen(zeilen({1}));
    EXPECT_FALSE(senkrecht->isVisible());
}

}  // namespace
}  // namespace spurkiste
