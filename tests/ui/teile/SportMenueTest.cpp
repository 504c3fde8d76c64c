#include <QAction>
#include <QApplication>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QTest>
#include <QTextDocument>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hilfe/Ansichtsbau.h"
#include "hilfe/Sprachbuehne.h"
#include "ui/teile/AuswahlPopup.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/SportMenue.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

constexpr auto kAusDatei = "Sportart aus der GPX-Datei — wählen, um <type> zu ändern";
constexpr auto kVorschlag = "Automatischer Vorschlag — wählen, um <type> dauerhaft in die GPX-Datei zu schreiben";

/// A record that names a sport, or one that went so fast (kilometres per hour) that one is suggested.
Eintrag mitSport(const std::string& sport) {
    return eintragMit("Tour", [&](GpxMetadaten& eintrag) { eintrag.sportRoh = sport; });
}
Eintrag mitTempo(double kmh) {
    return eintragMit("Tour", [&](GpxMetadaten& eintrag) {
        eintrag.dauerSekunden = kmh > 0 ? 3600 : 0;
        eintrag.hatZeitstempel = kmh > 0;
        eintrag.streckeMeter = 1000 * kmh;
    });
}

/// Types letters in quick succession, after a pause, however slow the machine is.
class Tippbuehne {
  public:
    Tippbuehne() = default;
    ~Tippbuehne() { QApplication::setKeyboardInputInterval(tempo_); }
    Tippbuehne(const Tippbuehne&) = delete;
    Tippbuehne& operator=(const Tippbuehne&) = delete;

    static void tippe(QWidget& wohin, const QString& text) {
        QApplication::setKeyboardInputInterval(0);
        for (const QChar zeichen : text) {
            QTest::keyClick(&wohin, zeichen.toLatin1());
            QApplication::setKeyboardInputInterval(std::numeric_limits<int>::max());
        }
        QApplication::setKeyboardInputInterval(0);
    }

  private:
    int tempo_ = QApplication::keyboardInputInterval();
};

class SportMenueTest : public testing::Test {
  protected:
    SportMenueTest() {
        fenster.resize(400, 300);
        fenster.show();
        fenster.activateWindow();
        // A press where the pointer was when the menu opened closes it; without a pointer, newer versions take any so.
        QTest::mouseMove(&fenster, QPoint(1, 1));
    }

    /// The menu that is open now; the test fails without one.
    static QMenu& menue(QWidget& eltern) {
        const auto alle = eltern.findChildren<QMenu*>();
        EXPECT_EQ(alle.size(), 1);
        return *alle.front();
    }
    QMenu& oeffne(const Eintrag& eintrag) {
        for (QMenu* altes : fenster.findChildren<QMenu*>()) {
            delete altes;
        }
        SportMenue::oeffne(*eintrag, &fenster, QRect(10, 10, 80, 25),
                           [this](GpxSportart art) { gewaehlt.push_back(art); });
        return menue(fenster);
    }
    static void klicke(QMenu& menue, int stelle) {
        QTest::mouseClick(&menue, Qt::LeftButton, {}, menue.actionGeometry(menue.actions().at(stelle)).center());
    }

    Sprachbuehne sprache;
    QWidget fenster;
    std::vector<GpxSportart> gewaehlt;
};

TEST_F(SportMenueTest, listsAllSportsAndMarksTheCurrentOne) {
    struct Fall {
        Eintrag eintrag;
        std::optional<int> marke;
    };
    for (const Fall& fall : std::vector<Fall>{
             {mitSport("Running"), 1},
             {mitSport("paragliding"), std::nullopt},
             {mitTempo(20), std::nullopt},  // what is only suggested is not chosen
             {mitTempo(0), std::nullopt},
         }) {
        const QMenu& menue = oeffne(fall.eintrag);
        std::vector<std::string> namen;
        std::vector<int> marken;
        for (const QAction* zeile : menue.actions()) {
            namen.push_back(zeile->text().toStdString());
            EXPECT_TRUE(zeile->isEnabled());
            if (zeile->isChecked()) {
                marken.push_back(static_cast<int>(namen.size()) - 1);
            }
        }
        EXPECT_THAT(namen, ElementsAre("Rad", "Laufen", "Motorrad", "Auto", "Wandern", "Gehen", "MTB", "Gravel",
                                       "E-Bike", "Trailrunning", "Schwimmen", "Ski", "Inline", "Rudern", "Kajak"));
        EXPECT_EQ(marken, fall.marke ? std::vector{*fall.marke} : std::vector<int>());
    }
}

TEST_F(SportMenueTest, aSportOfTheFileHasACheckMarkAndASuggestionAWand) {
    // The same row marked in three ways; what differs is the icon alone.
    const auto bild = [&](const Eintrag& eintrag) {
        QMenu& menue = oeffne(eintrag);
        menue.setActiveAction(menue.actions().at(0));
        return menue.grab().toImage();
    };
    const QImage ohne = bild(mitSport("paragliding"));
    const auto mit = [&](std::string_view symbol) {
        const QMenu& menue = oeffne(mitTempo(0));
        const QRectF zeile = menue.actionGeometry(menue.actions().at(0));
        QImage gemalt = ohne;
        QPainter maler(&gemalt);
        Symbole::zeichne(maler, QRectF(zeile.right() - 26, zeile.center().y() - 8, 16, 16), symbol,
                         KistePapier::goldDunkel);
        return gemalt;
    };
    EXPECT_EQ(bild(mitSport("cycling")), mit("checkmark"));
    EXPECT_EQ(bild(mitTempo(20)), mit("wand.and.stars"));
    EXPECT_NE(mit("checkmark"), mit("wand.and.stars"));
    EXPECT_NE(mit("checkmark"), ohne);
}

TEST_F(SportMenueTest, aChoiceIsReportedOnceAndTheCurrentOneIsAChoiceToo) {
    klicke(oeffne(mitSport("Running")), 4);
    EXPECT_THAT(gewaehlt, ElementsAre(GpxSportart::wandern));
    gewaehlt.clear();
    klicke(oeffne(mitSport("Running")), 1);
    EXPECT_THAT(gewaehlt, ElementsAre(GpxSportart::laufen));
    gewaehlt.clear();

    QMenu& menue = oeffne(mitSport("Running"));  // the keyboard starts from the current one
    QTest::keyClick(&menue, Qt::Key_Down);
    QTest::keyClick(&menue, Qt::Key_Return);
    EXPECT_THAT(gewaehlt, ElementsAre(GpxSportart::motorrad));
    gewaehlt.clear();
    QMenu& weitere = oeffne(mitSport("Running"));
    QTest::keyClick(&weitere, Qt::Key_End);
    QTest::keyClick(&weitere, Qt::Key_Return);
    EXPECT_THAT(gewaehlt, ElementsAre(GpxSportart::kajak));
    gewaehlt.clear();
    QTest::keyClick(&oeffne(mitSport("Running")), Qt::Key_Escape);
    EXPECT_THAT(gewaehlt, IsEmpty());
}

TEST_F(SportMenueTest, lettersLeadToASport) {
    const Tippbuehne tippen;
    QMenu& menue = oeffne(mitSport("Running"));
    for (const auto& [text, sport] : std::vector<std::pair<const char*, const char*>>{{"g", "Gehen"},
                                                                                      {"g", "Gravel"},
                                                                                      {"gg", "Gravel"},
                                                                                      {"sch", "Schwimmen"},
                                                                                      {"SK", "Ski"},
                                                                                      {"x", "Ski"},
                                                                                      {"r", "Rudern"},
                                                                                      {"ra", "Rad"}}) {
        Tippbuehne::tippe(menue, text);
        EXPECT_EQ(menue.activeAction()->text(), sport) << text;
    }
    Tippbuehne::tippe(menue, " ");
    EXPECT_THAT(gewaehlt, ElementsAre(GpxSportart::rad));
}

TEST(AuswahlPopupTest, lettersAndBlanksLeadToAPlaceAndManyPlacesHaveABar) {
    const Tippbuehne tippen;
    QWidget fenster;
    fenster.show();
    QStringList orte{"Start: alle", "Bad Ems", "Bad Ragaz", "Basel", "Zürich"};
    for (int i = 0; i < 300; ++i) {
        orte << QStringLiteral("Ort %1").arg(i);
    }
    for (const auto& [text, gewaehlt] : std::vector<std::pair<const char*, int>>{
             {"ba", 1}, {"bad r", 2}, {"bas", 3}, {"ort 299", 304}, {"start: ", 0}}) {
        int wahl = -1;
        auto* popup = new AuswahlPopup(
            orte, 0, [&](int zeile) { wahl = zeile; }, &fenster);
        popup->oeffneUnter(fenster, "Start");
        auto* liste = popup->findChild<QListView*>();
        EXPECT_TRUE(popup->findChild<Rollbalken*>()->isVisible());
        EXPECT_LE(popup->height(), popup->screen()->availableGeometry().height() + 100);
        Tippbuehne::tippe(*liste, text);
        EXPECT_EQ(wahl, -1) << text;  // a blank within a name chooses nothing
        EXPECT_TRUE(liste->viewport()->rect().intersects(liste->visualRect(liste->currentIndex())));
        Tippbuehne::tippe(*liste, " ");
        EXPECT_EQ(wahl, gewaehlt) << text;
    }
}

TEST_F(SportMenueTest, theCapsuleOpensTheMenuAndReportsTheRecordItWasOpenedFor) {
    const Eintrag eintrag = mitSport("Running");
    for (const bool ausfuehrlich : {false, true}) {
        SportMenue knopf(ausfuehrlich, &fenster);
        std::vector<std::pair<Eintrag, GpxSportart>> gemeldet;
        QObject::connect(&knopf, &SportMenue::gewaehlt,
                         [&](const Eintrag& e, GpxSportart art) { gemeldet.emplace_back(e, art); });
        const auto erwarte = [&](GpxSportart art) {
            EXPECT_THAT(gemeldet, ElementsAre(std::pair(eintrag, art)));
            gemeldet.clear();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        };
        knopf.zeige(eintrag);
        knopf.resize(knopf.sizeHint());
        knopf.show();
        QTest::mouseClick(&knopf, Qt::LeftButton);
        knopf.zeige(mitSport("Cycling"));  // the record is published anew while the menu is open
        klicke(menue(knopf), 2);
        erwarte(GpxSportart::motorrad);
        knopf.zeige(eintrag);
        for (const Qt::Key taste : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Down, Qt::Key_F4}) {
            QTest::keyClick(&knopf, taste);
            QTest::keyClick(&menue(knopf), Qt::Key_Return);
            erwarte(GpxSportart::laufen);
        }
    }
}

TEST_F(SportMenueTest, saysWhatItShowsAndWhereThatComesFrom) {
    struct Fall {
        Eintrag eintrag;
        const char* name;
        const char* kurzhilfe;
    };
    for (const Fall& fall : std::vector<Fall>{
             {mitSport("Running"), "Sportart Laufen", kAusDatei},
             {mitSport("paragliding"), "Sportart paragliding", kAusDatei},
             {mitTempo(20), "Sportart Rad", kVorschlag},
             {mitTempo(0), "Sportart –", kVorschlag},
         }) {
        SportMenue knapp(false, &fenster);
        knapp.zeige(fall.eintrag);
        knapp.resize(knapp.sizeHint());
        EXPECT_EQ(knapp.accessibleName(), fall.name);
        EXPECT_EQ(knapp.toolTip(), fall.kurzhilfe);
        EXPECT_FALSE(Qt::mightBeRichText(knapp.toolTip()));  // the brackets are shown
        SportMenue ausfuehrlich(true, &fenster);
        ausfuehrlich.zeige(fall.eintrag);
        EXPECT_EQ(ausfuehrlich.accessibleName(), "Sportart ändern");
        EXPECT_EQ(ausfuehrlich.toolTip(), fall.kurzhilfe);
    }
}

TEST_F(SportMenueTest, saysASportWholeThatItCuts) {
    const std::string name = "Gleitschirmfliegen mit <b>Motor</b> & Hund über den ganzen See";
    for (const bool ausfuehrlich : {false, true}) {
        SportMenue knopf(ausfuehrlich, &fenster);
        knopf.zeige(mitSport(name));
        knopf.resize(knopf.sizeHint());
        QTextDocument hilfe;
        hilfe.setHtml(knopf.toolTip());
        EXPECT_EQ(hilfe.toPlainText().remove(QChar::LineFeed).toStdString(), name + " · " + kAusDatei);
        EXPECT_EQ(knopf.accessibleDescription().toStdString(), name + " · " + kAusDatei);
    }
}

TEST_F(SportMenueTest, growsWithItsTextUpToALimit) {
    const auto breite = [&](bool ausfuehrlich, const Eintrag& eintrag) {
        SportMenue knopf(ausfuehrlich, &fenster);
        knopf.zeige(eintrag);
        knopf.resize(knopf.sizeHint());
        EXPECT_FALSE(knopf.grab().isNull());
        return knopf.sizeHint();
    };
    for (const bool ausfuehrlich : {false, true}) {
        const QSize kurz = breite(ausfuehrlich, mitSport("Yoga am See von Genf"));
        const QSize lang = breite(ausfuehrlich, mitSport(std::string(5000, 'x')));
        EXPECT_EQ(kurz.height(), lang.height());
        EXPECT_GT(lang.width(), kurz.width());
        EXPECT_LT(lang.width(), 334);
    }
    EXPECT_LT(breite(false, mitSport("Ski")).width(), breite(false, mitSport("Running")).width());
}

}  // namespace
}  // namespace spurkiste
