#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QSplitter>
#include <QTest>
#include <algorithm>
#include <array>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <system_error>
#include <tuple>
#include <utility>

#include <gmock/gmock.h>

#include "ui/fenster/Fensteraufbau.h"
#include "ui/fenster/Filterleiste.h"
#include "ui/teile/AuswahlPopup.h"
#include "ui/teile/PapierMenue.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using InhaltsAnsichtTest = Fensteraufbau;

TEST_F(InhaltsAnsichtTest, TheFirstFrameClaimsNothingAndWhatTakesLongerSaysSo) {
    einstellungen.schreibe("appLanguage", "de");
    ordner.schreibe("Alpen.gpx", gpx(47.0, 8.0));
    bibliothek = mach();
    fenster = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel);
    const auto texte = [&] {
        QString alle;
        for (const QWidget* stueck : fenster->findChildren<QWidget*>()) {
            alle += stueck->isVisible() ? stueck->accessibleName() : QString();
            const auto* schild = qobject_cast<const QLabel*>(stueck);
            alle += schild != nullptr && schild->isVisible() ? schild->text() : QString();
        }
        return alle;
    };
    fenster->show();
    bis([&] { return wartende() > 0; });
    EXPECT_FALSE(texte().contains(QStringLiteral("Keine GPX-Dateien"))) << texte().toStdString();
    EXPECT_FALSE(texte().contains(QStringLiteral("0 "))) << texte().toStdString();
    bis([&] { return texte().contains(QStringLiteral("Bibliothek wird geöffnet")); });
    setzeDurch();
    EXPECT_FALSE(texte().contains(QStringLiteral("wird geöffnet")));
    EXPECT_THAT(gezeigte(), ElementsAre("Alpen"));
}

TEST_F(InhaltsAnsichtTest, DoesNothingToSelectedFilesThatTheSearchHides) {
    oeffne({"Alpen.gpx", "Aare.gpx", "Bodensee.gpx"});
    waehle({"Alpen.gpx", "Bodensee.gpx"});
    suchfeld().setText(QStringLiteral("alp"));
    EXPECT_THAT(gezeigte(), ElementsAre("Alpen"));
    EXPECT_THAT(kontextmenue(), ElementsAre("Umbenennen", "Im Finder zeigen", "-", "In den Papierkorb"));
    QTest::keyClick(&tabelle(), Qt::Key_Delete);
    ASSERT_EQ(papierkorb.anfragen.size(), 1U);
    EXPECT_THAT(papierkorb.anfragen[0].pfade, ElementsAre(ordner.in("Alpen.gpx")));
    suchfeld().setText(QStringLiteral("aare"));
    QTest::keyClick(&tabelle(), Qt::Key_Delete);
    EXPECT_EQ(papierkorb.anfragen.size(), 1U);
    EXPECT_THAT(kontextmenue(), IsEmpty());
}

TEST_F(InhaltsAnsichtTest, TheMenuOfRowsFitsTheirNumber) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    waehle({});
    EXPECT_THAT(kontextmenue(), IsEmpty());
    waehle({"Alpen.gpx", "Bodensee.gpx"});
    EXPECT_THAT(kontextmenue(), ElementsAre("In den Papierkorb"));
    waehle({"Alpen.gpx"});
    waehleAusMenue(QStringLiteral("Im Finder zeigen"));
    EXPECT_THAT(dateimanager.gezeigte, ElementsAre(ordner.in("Alpen.gpx")));
    waehleAusMenue(QStringLiteral("Umbenennen"));
    EXPECT_NE(blatt(), nullptr);
}

TEST_F(InhaltsAnsichtTest, ARenamedFileStaysSelectedEvenWhereTheSearchHidesIt) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    suchfeld().setText(QStringLiteral("alp"));
    waehle({"Alpen.gpx"});
    QTest::keyClick(&tabelle(), Qt::Key_F2);
    ASSERT_NE(blatt(), nullptr);
    auto* feld = blatt()->findChild<QLineEdit*>();
    EXPECT_EQ(feld->text(), QStringLiteral("Alpen"));
    EXPECT_EQ(feld->selectedText(), feld->text());
    feld->setText(QStringLiteral("Churfirsten"));
    QTest::keyClick(feld, Qt::Key_Return);
    EXPECT_THAT(imOrdner(), ElementsAre("Bodensee.gpx", "Churfirsten.gpx"));
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(ordner.in("Churfirsten.gpx")));
    EXPECT_THAT(gezeigte(), IsEmpty());
    EXPECT_TRUE(sagt(QStringLiteral("Churfirsten")));
}

TEST_F(InhaltsAnsichtTest, ANameThatIsNotUtf8StaysUntilAnotherIsTyped) {
    const std::string roh = "kaputt\xFF";
    oeffne({roh + ".gpx"});
    const auto benenne = [&](const QString& name) {
        waehle({imOrdner().front()});
        QTest::keyClick(&tabelle(), Qt::Key_F2);
        ASSERT_NE(blatt(), nullptr);
        auto* feld = blatt()->findChild<QLineEdit*>();
        feld->setText(name.isNull() ? feld->text() : name);
        QTest::keyClick(feld, Qt::Key_Return);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    benenne(QString());
    EXPECT_THAT(imOrdner(), ElementsAre(roh + ".gpx"));
    benenne(QStringLiteral("ganz"));
    EXPECT_THAT(imOrdner(), ElementsAre("ganz.gpx"));
}

TEST_F(InhaltsAnsichtTest, ASheetWhoseFileVanishedDoesNoHarm) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    waehle({"Alpen.gpx"});
    QTest::keyClick(&tabelle(), Qt::Key_F2);
    ASSERT_NE(blatt(), nullptr);
    std::filesystem::remove(ordner.in("Alpen.gpx"));
    bibliothek->lade();
    setzeDurch();
    EXPECT_THAT(gezeigte(), ElementsAre("Bodensee"));
    blatt()->findChild<QLineEdit*>()->setText(QStringLiteral("Bodensee 2"));
    QTest::keyClick(blatt()->findChild<QLineEdit*>(), Qt::Key_Return);
    EXPECT_THAT(imOrdner(), ElementsAre("Bodensee.gpx"));
    const std::string grund =
        std::make_error_code(std::errc::no_such_file_or_directory).message();  // in the user's language
    bis([&] { return sagt(QString::fromStdString("Umbenennen fehlgeschlagen: " + grund)); });
}

TEST_F(InhaltsAnsichtTest, TheWindowsKeysRestWhileASheetIsOpen) {
    oeffne({"Alpen.gpx"});
    waehle({"Alpen.gpx"});
    QTest::keyClick(&tabelle(), Qt::Key_F2);
    ASSERT_NE(blatt(), nullptr);
    ordner.schreibe("Neu.gpx", gpx(47.0, 8.0));
    QTest::keyClick(blatt()->findChild<QLineEdit*>(), Qt::Key_F5);
    EXPECT_EQ(wartende(), 0U);
    QTest::keyClick(blatt()->findChild<QLineEdit*>(), Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(blatt(), nullptr);
    QTest::keyClick(fenster.get(), Qt::Key_F5);
    EXPECT_EQ(hintergrund.wartende(), 1U);
}

TEST_F(InhaltsAnsichtTest, TheLastWindowStaysUntilAllIsCopiedOrTheUserStopsIt) {
    oeffne({"Tour.gpx"});
    const TempOrdner fremd;
    const auto importiere = [&] {
        for (const char* name : {"a.gpx", "b.gpx", "c.gpx"}) {
            bibliothek->importiere({fremd.schreibe(name, gpx(46.0, 9.0))});
        }
    };
    const auto klicke = [&](const QString& text) {
        for (auto* knopf : fenster->findChildren<Knopf*>()) {
            if (knopf->text() == text) {
                QTest::mouseClick(knopf, Qt::LeftButton);
            }
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    };
    const auto kopiere = [&] {
        kopierer.fuehre(0);
        hauptfaden.fuehreAlle();
    };
    importiere();
    EXPECT_FALSE(fenster->close());
    EXPECT_TRUE(sagt(QStringLiteral("Noch 3 Dateien, dann schließt sich das Fenster.")));
    kopiere();
    bis([&] { return sagt(QStringLiteral("Noch 2 Dateien, dann schließt sich das Fenster.")); });
    klicke(QStringLiteral("Fenster offen lassen"));
    kopiere();
    kopiere();
    arbeiteAb();
    EXPECT_TRUE(fenster->isVisible());
    EXPECT_EQ(imOrdner().size(), 4U);

    importiere();
    EXPECT_FALSE(fenster->close());
    EXPECT_FALSE(fenster->close());
    klicke(QStringLiteral("Nicht weiter kopieren"));
    bis([&] { return sagt(QStringLiteral("Noch 1 Datei, dann schließt sich das Fenster.")); });
    kopiere();
    bis([&] { return !fenster->isVisible(); });
    EXPECT_EQ(imOrdner().size(), 5U);
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 0U);
}

TEST_F(InhaltsAnsichtTest, SaysThatThereIsNoFileManager) {
    oeffne({"Tour.gpx"});
    dateimanager.da = false;
    waehle({"Tour.gpx"});
    waehleAusMenue(QStringLiteral("Im Finder zeigen"));
    bis([&] { return sagt(QStringLiteral("Kein Dateimanager gefunden, der „Tour.gpx“ zeigt")); });
}

TEST_F(InhaltsAnsichtTest, AChosenFolderIsToldInTheSystemsBytes) {
    oeffne({"Tour.gpx"});
    std::string gewaehlt;
    QObject::connect(fenster.get(), &InhaltsAnsicht::ordnerGewaehlt, [&](const std::string& pfad) { gewaehlt = pfad; });
    Q_EMIT fenster->findChild<Werkzeuge*>()->ordnerwechselGewuenscht();
    auto* waehler = fenster->findChild<QFileDialog*>();
    ASSERT_NE(waehler, nullptr);
    Q_EMIT waehler->fileSelected(QStringLiteral("/T\u00e4ler"));
    EXPECT_EQ(gewaehlt, "/T\xC3\xA4ler");
    EXPECT_EQ(bibliothek->ordner().wert(), ordner.pfad());  // the program decides
}

TEST_F(InhaltsAnsichtTest, ComesToTheFrontFromBelow) {
    oeffne({"Tour.gpx"});
    fenster->showMinimized();
    EXPECT_TRUE(fenster->isMinimized());
    fenster->kommNachVorn();
    EXPECT_FALSE(fenster->isMinimized());
}

TEST_F(InhaltsAnsichtTest, TheResetStaysInSightHoweverNarrowTheBarIs) {
    oeffne({"Alpen.gpx"});
    auto* leiste = fenster->findChild<Filterleiste*>();
    Knopf* zurueck = nullptr;
    for (Knopf* knopf : leiste->findChildren<Knopf*>()) {
        zurueck = knopf->text() == QStringLiteral("Zurücksetzen") ? knopf : zurueck;
    }
    ASSERT_NE(zurueck, nullptr);
    suchfeld().setText(QStringLiteral("a"));
    for (const int breite : {700, 600, 500}) {
        leiste->setFixedWidth(breite);
        QCoreApplication::processEvents();
        EXPECT_TRUE(zurueck->isVisible());
        EXPECT_EQ(zurueck->visibleRegion().boundingRect(), zurueck->rect()) << breite;
    }
}

TEST_F(InhaltsAnsichtTest, AChosenLanguageIsSpokenByAllWindows) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    InhaltsAnsicht zweites(*bibliothek, einstellungen, dateimanager, sprachwechsel);
    auto* werkzeuge = fenster->findChild<Werkzeuge*>();
    Q_EMIT werkzeuge->spracheGewaehlt(QStringLiteral("en"));
    EXPECT_EQ(einstellungen.lies("appLanguage"), "en");
    for (const InhaltsAnsicht* eines : std::initializer_list<const InhaltsAnsicht*>{fenster.get(), &zweites}) {
        const auto& titel = eines->findChild<TabellenAnsicht*>()->modell();
        EXPECT_EQ(titel.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Date"));
    }
    Q_EMIT werkzeuge->spracheGewaehlt(QStringLiteral("de"));
    EXPECT_EQ(tabelle().modell().headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), QStringLiteral("Datum"));
}

TEST_F(InhaltsAnsichtTest, AWindowOpensAsTheLastOneWasClosed) {
    oeffne({"Alpen.gpx"});
    const auto teiler = [&] { return fenster->findChild<QSplitter*>(); };
    const auto zustand = [&] {
        QCoreApplication::processEvents();
        return std::tuple(fenster->height(), teiler()->sizes(), tabelle().spaltenbreiten());
    };
    fenster->resize(fenster->width() + 200, 500);
    QCoreApplication::processEvents();
    teiler()->setSizes({fenster->width() - 346, 345});
    tabelle().horizontalHeader()->resizeSection(0, 400);
    const auto vorher = zustand();
    const int breite = fenster->width();
    fenster->close();
    fenster = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel);
    fenster->show();
    EXPECT_EQ(fenster->height(), std::get<0>(vorher));
    fenster->resize(breite, fenster->height());
    EXPECT_EQ(zustand(), vorher);
}

TEST_F(InhaltsAnsichtTest, AFilterCanBeTakenBackWhereNothingIsFoundAndASportGoesWithItsLanguage) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    auto* leiste = fenster->findChild<Filterleiste*>();
    const auto knopf = [&](const QString& text) {
        const auto alle = leiste->findChildren<Knopf*>();
        return *std::find_if(alle.begin(), alle.end(), [&](const Knopf* k) { return k->text() == text; });
    };
    knopf(QStringLiteral("Sport: alle"))->click();
    auto* liste = fenster->findChild<AuswahlPopup*>()->findChild<QListView*>();
    QTest::keyClick(liste, Qt::Key_Down);
    QTest::keyClick(liste, Qt::Key_Return);
    EXPECT_EQ(gezeigte().size(), 1U);
    Knopf* zurueck = knopf(QStringLiteral("Zurücksetzen"));
    suchfeld().setText(QStringLiteral("nirgends"));
    EXPECT_THAT(gezeigte(), IsEmpty());
    EXPECT_TRUE(zurueck->isVisible());
    suchfeld().clear();
    Q_EMIT fenster->findChild<Werkzeuge*>()->spracheGewaehlt(QStringLiteral("en"));
    EXPECT_EQ(gezeigte().size(), 2U);
    EXPECT_FALSE(zurueck->isVisible());
}

TEST_F(InhaltsAnsichtTest, TheMenuOfLanguagesMarksTheOneThatIsSet) {
    oeffne({"Alpen.gpx"});
    auto* werkzeuge = fenster->findChild<Werkzeuge*>();
    const QString system = QString::fromStdString(AppSprache::text("system"));
    const std::array<std::pair<const char*, QString>, 4> faelle{
        {{"", system}, {"system", system}, {"de", QStringLiteral("Deutsch")}, {"en", QStringLiteral("English")}}};
    for (const auto& [code, name] : faelle) {
        einstellungen.schreibe("appLanguage", code);
        werkzeuge->findChildren<Knopf*>()[3]->click();
        const std::unique_ptr<PapierMenue> menue(werkzeuge->findChild<PapierMenue*>());
        ASSERT_NE(menue, nullptr);
        QStringList markierte;
        for (const QAction* wahl : menue->actions()) {
            if (wahl->isChecked()) {
                markierte << wahl->text();
            }
        }
        EXPECT_THAT(markierte, ElementsAre(name)) << code;
    }
}

}  // namespace
}  // namespace spurkiste
