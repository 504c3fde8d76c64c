#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hilfe/BeispielEintrag.h"
#include "hilfe/Sprachbuehne.h"
#include "sicht/Formate.h"
#include "ui/detail/DetailAnsicht.h"
#include "ui/teile/Papier.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texte = std::vector<std::string>;

/// The children of a kind that can be seen, as they are read: line by line, from the left.
template <typename Art>
std::vector<Art*> sichtbare(const QWidget& in) {
    std::vector<Art*> alle;
    for (Art* kind : in.findChildren<Art*>()) {
        if (kind->isVisible()) {
            alle.push_back(kind);
        }
    }
    const auto stelle = [&in](const QWidget* kind) {
        const QPoint oben = kind->mapTo(&in, QPoint());
        return std::tuple(oben.y(), oben.x());
    };
    std::sort(alle.begin(), alle.end(), [&](const Art* a, const Art* b) { return stelle(a) < stelle(b); });
    return alle;
}

class DetailAnsichtTest : public testing::Test {
  protected:
    DetailAnsichtTest() {
        ansicht.resize(370, 780);
        ansicht.show();
        ansicht.activateWindow();
    }

    /// A record of which everything is known, and what `aendere` makes of it.
    template <typename Aenderung>
    static Eintrag voll(const std::string& pfad, Aenderung aendere) {
        GpxMetadaten eintrag = vollerEintrag(pfad);
        aendere(eintrag);
        return std::make_shared<const GpxMetadaten>(std::move(eintrag));
    }
    static Eintrag voll(const std::string& pfad = "/bibliothek/Tour.gpx") {
        return voll(pfad, [](GpxMetadaten&) {});
    }

    void zeige(const Eintrag& eintrag) {
        ansicht.zeige(eintrag);
        QCoreApplication::processEvents();  // first what scrolls gets its new height,
        QCoreApplication::processEvents();  // then the bar its new range
    }

    [[nodiscard]] static Texte texte(const QWidget& in) {
        Texte ergebnis;
        for (const QWidget* kind : sichtbare<QWidget>(in)) {
            if (const auto* absatz = qobject_cast<const Absatz*>(kind)) {
                ergebnis.push_back(absatz->toPlainText().toStdString());
            } else if (const auto* schild = qobject_cast<const QLabel*>(kind)) {
                ergebnis.push_back(schild->text().toStdString());
            }
        }
        return ergebnis;
    }
    template <typename Art>
    [[nodiscard]] std::vector<Texte> texteAller() const {
        std::vector<Texte> ergebnis;
        for (const Art* kasten : sichtbare<Art>(ansicht)) {
            ergebnis.push_back(texte(*kasten));
        }
        return ergebnis;
    }
    /// The three lines at the top.
    [[nodiscard]] Texte kopf() const {
        Texte alle = texte(ansicht);
        alle.resize(3);
        return alle;
    }
    [[nodiscard]] QScrollBar& balken() const { return *ansicht.findChild<QScrollArea*>()->verticalScrollBar(); }

    Sprachbuehne sprache;
    DetailAnsicht ansicht;
};

TEST_F(DetailAnsichtTest, saysEverythingThatIsKnown) {
    const Eintrag eintrag = voll();
    zeige(eintrag);
    EXPECT_THAT(kopf(), ElementsAre("AUSGEWÄHLTE ROUTE", "Rund um den See", Formate::datumZeitFormat(*eintrag->datum)));
    EXPECT_THAT(texteAller<Kachel>(),
                ElementsAre(Texte{"DISTANZ", "12,3 km"}, Texte{"ZEIT", "1:00:00"}, Texte{"ANSTIEG", "250 m"},
                            Texte{"PUNKTE", "4"}, Texte{"WETTER", "-4 °C", "Schnee · 80 % · 12 km/h NW"}));
    EXPECT_THAT(
        texteAller<DetailKarte>(),
        ElementsAre(Texte{"EINORDNUNG", "Sportart", "Art", "Rundkurs", "Ghost", "Ghost-tauglich"},
                    Texte{"ROUTE", "Start", "Seefeld · 47.50000, 11.25000", "Ziel", "Sydney · -33.85678, 151.21530"},
                    Texte{"DATEI", "Name", "Tour.gpx", "Datei", "123 kB"}));
    EXPECT_EQ(sichtbare<SportMenue>(ansicht).size(), 1U);
    EXPECT_EQ(sichtbare<Knopf>(ansicht).at(0)->text(), "IM ORDNER ZEIGEN");
    EXPECT_THAT(sichtbare<Leerbild>(ansicht), IsEmpty());
    // Nothing follows the button but the margin.
    const QWidget* inhalt = ansicht.findChild<QScrollArea*>()->widget();
    EXPECT_EQ(inhalt->childrenRect().bottom(), inhalt->height() - 1 - 18 + papier::kRingRand);
}

TEST_F(DetailAnsichtTest, aPlaceCalledByACoordinateIsReadOnce) {
    zeige(voll("/bibliothek/Tour.gpx", [](GpxMetadaten& e) { e.startOrt = "47.50012, -11.25000"; }));
    std::vector<std::string> namen;
    for (const Absatz* absatz : sichtbare<Absatz>(*sichtbare<DetailKarte>(ansicht).at(1))) {
        namen.push_back(absatz->accessibleName().toStdString());  // empty: what can be seen
    }
    EXPECT_THAT(namen, ElementsAre("", "47.50012, -11.25000", "", ""));
}

TEST_F(DetailAnsichtTest, saysWhatIsNotKnown) {
    GpxMetadaten leer;
    leer.pfad = "/bibliothek/Tour.GPX";
    leer.dateiName = "Tour";
    const auto eintrag = std::make_shared<const GpxMetadaten>(leer);
    zeige(eintrag);
    EXPECT_THAT(kopf(),
                ElementsAre("AUSGEWÄHLTE ROUTE", "Tour", Formate::datumsFormat(eintrag->dateiDatum) + " · Dateidatum"));
    EXPECT_THAT(texteAller<Kachel>(),
                ElementsAre(Texte{"DISTANZ", "0 m"}, Texte{"ZEIT", "–"}, Texte{"ANSTIEG", "–"}, Texte{"PUNKTE", "0"}));
    EXPECT_THAT(
        texteAller<DetailKarte>(),
        ElementsAre(Texte{"EINORDNUNG", "Sportart", "Art", "Strecke", "Ghost", "Keine Zeitstempel"},
                    Texte{"ROUTE", "Start", "–", "Ziel", "–"}, Texte{"DATEI", "Name", "Tour.gpx", "Datei", "0 Byte"}));
    // Half of it is not nothing.
    leer.anstiegMeter = 0.4;
    leer.startOrt = "Zürich";
    leer.ende = Koordinate{47.3769, 8.5417};
    leer.wetter = GpxWetter{};
    zeige(std::make_shared<const GpxMetadaten>(leer));
    EXPECT_EQ(texteAller<Kachel>().at(2), (Texte{"ANSTIEG", "0 m"}));
    EXPECT_EQ(texteAller<Kachel>().at(4).at(1), "Wetter");
    EXPECT_EQ(texteAller<DetailKarte>().at(1), (Texte{"ROUTE", "Start", "Zürich · –", "Ziel", "47.37690, 8.54170"}));
}

TEST_F(DetailAnsichtTest, saysWhyTheFileCouldNotBeRead) {
    const Eintrag eintrag = voll();
    ansicht.zeige(eintrag, "Kein Zugriff");
    EXPECT_EQ(texteAller<DetailKarte>().at(2).back(), "123 kB · nicht lesbar: Kein Zugriff");
    ansicht.zeige(eintrag);
    EXPECT_EQ(texteAller<DetailKarte>().at(2).back(), "123 kB");
}

TEST_F(DetailAnsichtTest, invitesToSelectWhenThereIsNothingToShow) {
    for (const bool vorher : {false, true}) {
        if (vorher) {
            zeige(voll());
            zeige(nullptr);
        }
        EXPECT_THAT(texte(ansicht), ElementsAre("Route auswählen",
                                                "Hier erscheinen Skizze, Sportart\nund alle "
                                                "GPX-Details."));
        EXPECT_THAT(sichtbare<Kachel>(ansicht), IsEmpty());
    }
}

TEST_F(DetailAnsichtTest, speaksTheChosenLanguageAtOnce) {
    zeige(voll());
    balken().setValue(100);
    sprache.sprich("ja");
    ansicht.kleide();
    QCoreApplication::processEvents();
    EXPECT_EQ(kopf().at(0), "選択中のルート");
    EXPECT_EQ(texteAller<DetailKarte>().at(2), (Texte{"DATEI", "Name", "Tour.gpx", "Datei", "123 KB"}));
    EXPECT_EQ(balken().value(), 100);
}

TEST_F(DetailAnsichtTest, sizesAreWrittenAsTheLanguageWritesThem) {
    struct Fall {
        std::int64_t bytes;
        const char* sprache;
        const char* text;
    };
    for (const Fall& fall : std::vector<Fall>{
             {1, "de", "1 Byte"},
             {1, "en", "1 byte"},
             {999, "en", "999 bytes"},
             {1'000, "de", "1 kB"},
             {999'499, "de", "999 kB"},
             {999'500, "de", "1,0 MB"},
             {1'234'567, "de", "1,2 MB"},
             {999'949'999, "de", "999,9 MB"},
             {999'950'000, "de", "1,0 GB"},
             {1'234'567, "en", "1.2 MB"},
             {2'500'000'000, "de", "2,5 GB"},
         }) {
        sprache.sprich(fall.sprache);
        zeige(voll("/bibliothek/Tour.gpx", [&](GpxMetadaten& eintrag) { eintrag.dateiGroesse = fall.bytes; }));
        EXPECT_EQ(texteAller<DetailKarte>().at(2).back(), fall.text) << fall.bytes;
    }
}

TEST_F(DetailAnsichtTest, staysWhereItIsForTheSameFileAndStartsAtTheTopForAnother) {
    zeige(voll());
    ASSERT_GT(balken().maximum(), 100);
    balken().setValue(100);
    zeige(voll());
    EXPECT_EQ(balken().value(), 100);
    zeige(voll("/bibliothek/Tour.gpx", [](GpxMetadaten& eintrag) { eintrag.sportRoh = "Running"; }));
    EXPECT_EQ(balken().value(), 100);
    zeige(voll("/bibliothek/Andere.gpx"));
    EXPECT_EQ(balken().value(), 0);
    balken().setValue(100);
    zeige(nullptr);
    zeige(voll("/bibliothek/Andere.gpx"));
    EXPECT_EQ(balken().value(), 0);
    // The same file, but with less to say: as far down as there is something.
    balken().setValue(balken().maximum());
    const int vorher = balken().value();
    zeige(voll("/bibliothek/Andere.gpx", [](GpxMetadaten& eintrag) { eintrag.wetter.reset(); }));
    EXPECT_LT(balken().value(), vorher);
    EXPECT_EQ(balken().value(), balken().maximum());
}

TEST_F(DetailAnsichtTest, nothingIsWiderThanThePanel) {
    const std::string wort(250, 'x');
    const Eintrag lang = voll("/bibliothek/Lang.gpx", [&](GpxMetadaten& eintrag) {
        eintrag.spurName = wort;
        eintrag.dateiName = wort;
        eintrag.startOrt = wort;
        eintrag.sportRoh = wort;
        eintrag.wetter = GpxWetter{1e300, 1e300, 1e300, wort, wort, 1};
        eintrag.streckeMeter = 1e300;
        eintrag.dauerSekunden = 1e15;
        eintrag.anstiegMeter = 1e300;
        eintrag.punkte = 9'000'000'000'000'000'000;
    });
    for (const int breite : {340, 370, 420}) {
        ansicht.resize(breite, 780);
        zeige(lang);
        const auto kacheln = sichtbare<Kachel>(ansicht);
        const int halb = (breite - 2 * 18 - 9) / 2;
        for (const Kachel* kachel : kacheln) {
            EXPECT_NEAR(kachel->width(), halb, 1);
        }
        for (const DetailKarte* karte : sichtbare<DetailKarte>(ansicht)) {
            EXPECT_EQ(karte->mapTo(&ansicht, QPoint()).x(), 18);
            EXPECT_EQ(karte->width(), breite - 2 * 18);
            for (const QWidget* inhalt : karte->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
                EXPECT_LE(inhalt->geometry().right(), karte->width() - 10) << inhalt->metaObject()->className();
            }
        }
    }
}

TEST_F(DetailAnsichtTest, whatIsShortenedIsWholeInItsTooltip) {
    const std::string wind = "NW <b>& so</b> auf allen Gipfeln ringsum";
    zeige(voll("/bibliothek/Tour.gpx", [&](GpxMetadaten& eintrag) {
        eintrag.wetter = GpxWetter{20.0, 58.0, 11.0, wind, "klar", 1};
        eintrag.spurName = wind;
    }));
    const auto kachel = sichtbare<Kachel>(ansicht).back();
    const auto zusatz = sichtbare<QLabel>(*kachel).back();
    EXPECT_LT(zusatz->width(), zusatz->sizeHint().width());
    const QString erwartet = QString::fromStdString("Sonnig · 58 % · 11 km/h " + wind);
    EXPECT_EQ(kachel->accessibleDescription(), erwartet);
    // Shown as text, not taken for markup.
    EXPECT_TRUE(zusatz->toolTip().contains(erwartet.toHtmlEscaped())) << zusatz->toolTip().toStdString();
    EXPECT_TRUE(Qt::mightBeRichText(zusatz->toolTip()));
}

TEST_F(DetailAnsichtTest, valuesCanBeMarkedAndCopied) {
    zeige(voll());
    balken().setValue(balken().maximum());
    Absatz* const name = sichtbare<Absatz>(*sichtbare<DetailKarte>(ansicht).back()).at(1);
    ASSERT_EQ(name->toPlainText(), "Tour.gpx");
    const auto kopiert = [](QWidget* woraus) {
        QGuiApplication::clipboard()->clear();
        QTest::keyClick(woraus, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(woraus, Qt::Key_C, Qt::ControlModifier);
        return QGuiApplication::clipboard()->text();
    };
    QTest::mouseDClick(name->viewport(), Qt::LeftButton, {}, QPoint(10, name->height() / 2));
    EXPECT_EQ(name->textCursor().selectedText(), "Tour");  // a word
    EXPECT_EQ(kopiert(name), "Tour.gpx");
    zeige(voll("/bibliothek/Tour.gpx", [](GpxMetadaten& eintrag) { eintrag.sportRoh = "Running"; }));
    EXPECT_TRUE(name->textCursor().hasSelection());
    // They cannot be changed.
    QTest::keyClicks(name, "x");
    EXPECT_EQ(name->toPlainText(), "Tour.gpx");
    Absatz* const strecke = sichtbare<Absatz>(*sichtbare<Kachel>(ansicht).at(0)).at(0);
    QTest::mouseDClick(strecke->viewport(), Qt::LeftButton, {}, QPoint(10, strecke->height() / 2));
    EXPECT_EQ(kopiert(strecke), "12,3 km");
}

TEST_F(DetailAnsichtTest, captionsAndValuesStandOnOneLineInEveryScript) {
    zeige(voll("/bibliothek/Tour.gpx", [](GpxMetadaten& eintrag) {
        eintrag.startOrt = "琵琶湖";
        eintrag.dateiName = "Київ";
    }));
    for (const char* code : {"de", "ja", "uk"}) {
        sprache.sprich(code);
        ansicht.kleide();
        QCoreApplication::processEvents();
        std::map<int, int> reihen;  // captions stand beside values, that of the capsule too
        for (const DetailKarte* karte : sichtbare<DetailKarte>(ansicht)) {
            for (const Absatz* absatz : sichtbare<Absatz>(*karte)) {
                const QTextLayout& satz = *absatz->document()->firstBlock().layout();
                const QTextLine zeile = satz.lineAt(0);
                // The document is twice as large as what is seen of it.
                EXPECT_NEAR((satz.position().y() + zeile.y() + zeile.ascent()) / 2, absatz->mass().grundlinie, 0.25)
                    << code;
                EXPECT_EQ(absatz->verticalScrollBar()->value(), 0);
                EXPECT_GE(absatz->height(), absatz->mass().hoehe);
                EXPECT_GE(absatz->x(), absatz->width() > 72 ? 13 + 72 + 8 : 13);
                ++reihen[absatz->mapTo(&ansicht, QPoint()).y()];
            }
        }
        EXPECT_EQ(reihen.size(), 7U) << code;
        const SportMenue* menue = sichtbare<SportMenue>(ansicht).at(0);
        EXPECT_EQ(menue->x() + 3, 13 + 72 + 8);
        EXPECT_LT(menue->y(), sichtbare<Absatz>(*menue->parentWidget()).at(0)->y());
    }
}

TEST_F(DetailAnsichtTest, reportsTheButtonAndTheSportWithTheRecordShown) {
    const Eintrag eintrag = voll();
    zeige(eintrag);
    std::vector<Eintrag> gezeigt;
    QObject::connect(&ansicht, &DetailAnsicht::zeigenGewuenscht, [&](const Eintrag& e) { gezeigt.push_back(e); });
    std::vector<std::pair<Eintrag, GpxSportart>> gewaehlt;
    QObject::connect(&ansicht, &DetailAnsicht::sportGewaehlt,
                     [&](const Eintrag& e, GpxSportart art) { gewaehlt.emplace_back(e, art); });
    QTest::mouseClick(sichtbare<Knopf>(ansicht).at(0), Qt::LeftButton);
    EXPECT_THAT(gezeigt, ElementsAre(eintrag));
    Q_EMIT sichtbare<SportMenue>(ansicht).at(0)->gewaehlt(eintrag, GpxSportart::ski);
    EXPECT_THAT(gewaehlt, ElementsAre(std::pair(eintrag, GpxSportart(GpxSportart::ski))));
}

}  // namespace
}  // namespace spurkiste
