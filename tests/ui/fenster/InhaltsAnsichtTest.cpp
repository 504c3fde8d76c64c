#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QTest>
#include <algorithm>
#include <filesystem>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>

#include "base/Meldestelle.h"
#include "i18n/AppSprache.h"
#include "library/Bibliotheksaufbau.h"
#include "platform/Dateimanager.h"
#include "ui/fenster/Filterleiste.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/UmbenennenDialog.h"
#include "ui/fenster/Werkzeuge.h"
#include "ui/tabelle/TabellenAnsicht.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// A file manager that only remembers what it was asked for.
class MerkenderDateimanager final : public Dateimanager {
  public:
    std::vector<std::string> gezeigte;

    void zeige(const std::string& pfad) override { gezeigte.push_back(pfad); }
};

/// A window on a library of which the test drives every thread by hand.
class InhaltsAnsichtTest : public Bibliotheksaufbau {
  protected:
    MerkenderDateimanager dateimanager;
    Meldestelle sprachwechsel;
    std::unique_ptr<Bibliothek> bibliothek;
    std::unique_ptr<InhaltsAnsicht> fenster;

    InhaltsAnsichtTest() { AppSprache::richteEin(&einstellungen, &umgebung); }
    ~InhaltsAnsichtTest() override { AppSprache::richteEin(nullptr, nullptr); }

    void oeffne(const Namen& dateien) {
        einstellungen.schreibe("appLanguage", "de");
        for (const std::string& name : dateien) {
            ordner.schreibe(name, gpx(47.0, 8.0, name.starts_with("A") ? "running" : "cycling"));
        }
        bibliothek = mach();
        fenster = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel);
        fenster->show();
        fenster->activateWindow();
        bis([&] { return wartende() > 0 || bibliothek->laedt().wert(); });
        setzeDurch();
    }

    /// Lets the window's event loop turn until something is so.
    static void bis(const std::function<bool()>& soweit) {
        constexpr int kHoechstensMs = 60'000;  // what never comes fails instead of hanging
        ASSERT_TRUE(QTest::qWaitFor(soweit, kHoechstensMs));
    }

    /// Lets all work be done and the window show it.
    void setzeDurch() {
        arbeiteAb();
        bis([&] { return tabelle().modell().rowCount() == static_cast<int>(bibliothek->eintraege().wert().size()); });
    }

    [[nodiscard]] TabellenAnsicht& tabelle() const { return *fenster->findChild<TabellenAnsicht*>(); }
    [[nodiscard]] QLineEdit& suchfeld() const { return fenster->findChild<Werkzeuge*>()->suchfeld(); }
    [[nodiscard]] UmbenennenDialog* blatt() const { return fenster->findChild<UmbenennenDialog*>(); }

    [[nodiscard]] Namen gezeigte() const {
        Namen ergebnis;
        for (int reihe = 0; reihe < tabelle().modell().rowCount(); ++reihe) {
            ergebnis.push_back(tabelle().modell().zeile(reihe).eintrag()->dateiName);
        }
        return ergebnis;
    }

    void waehle(const Namen& dateien) {
        TabellenAnsicht::Auswahl auswahl;
        for (const std::string& name : dateien) {
            auswahl.insert(ordner.in(name));
        }
        tabelle().setzeAuswahl(auswahl);
        Q_EMIT tabelle().auswahlGeaendert(auswahl);
        if (!dateien.empty()) {
            tabelle().rolleZu(ordner.in(dateien.front()));
        }
    }

    [[nodiscard]] bool sagt(const QString& text) const {
        const auto schilder = fenster->findChildren<QLabel*>();
        return std::any_of(schilder.begin(), schilder.end(),
                           [&](const QLabel* schild) { return schild->isVisible() && schild->text() == text; });
    }

    /// The menu of the selected rows: its texts, a dash for a line between them; closed again.
    [[nodiscard]] QStringList kontextmenue() const {
        Q_EMIT tabelle().kontextmenueGewuenscht(QPoint(10, 10));
        QStringList texte;
        if (auto* menue = fenster->findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly)) {
            for (const QAction* wahl : menue->actions()) {
                texte << (wahl->isSeparator() ? QStringLiteral("-") : wahl->text());
            }
            delete menue;
        }
        return texte;
    }

    void waehleAusMenue(const QString& text) const {
        Q_EMIT tabelle().kontextmenueGewuenscht(QPoint(10, 10));
        auto* menue = fenster->findChild<QMenu*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_NE(menue, nullptr);
        for (QAction* wahl : menue->actions()) {
            if (wahl->text() == text) {
                wahl->trigger();
            }
        }
        delete menue;
    }

    void lasseFallen(const QByteArray& uriListe) const {
        QMimeData daten;
        daten.setData(QStringLiteral("text/uri-list"), uriListe);
        QDragEnterEvent kommt(QPoint(100, 100), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(fenster.get(), &kommt);
        ASSERT_TRUE(kommt.isAccepted());
        QDropEvent fall(QPointF(100, 100), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(fenster.get(), &fall);
    }
};

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

TEST_F(InhaltsAnsichtTest, EachDroppedFileIsAnImportOfItsOwnInTheOrderOfTheDrop) {
    oeffne({"Tour.gpx"});
    const TempOrdner fremd;
    for (const char* name : {"b.gpx", "a.gpx", "\xC3\xBC ber.gpx", "text.txt"}) {
        fremd.schreibe(name, gpx(46.0, 9.0));
    }
    const auto uri = [&](const char* name) { return QByteArray("file://") + fremd.in("").c_str() + name + "\r\n"; };
    lasseFallen("# made up\r\n" + uri("b.gpx") + uri("text.txt") + "https://example.org/x.gpx\r\n" + uri("a.gpx") +
                uri("%C3%BC%20ber.gpx"));
    Namen nacheinander;
    while (wartende() > 0) {
        const Namen davor = imOrdner();
        kopierer.fuehreAlle();
        hintergrund.fuehreAlle();
        cacheschreiber.fuehreAlle();
        for (const std::string& name : imOrdner()) {
            if (std::find(davor.begin(), davor.end(), name) == davor.end()) {
                nacheinander.push_back(name);
            }
        }
        arbeiter.fuehreAlle();
        hauptfaden.fuehreAlle();
    }
    EXPECT_THAT(nacheinander, ElementsAre("b.gpx", "a.gpx", "\xC3\xBC ber.gpx"));
    setzeDurch();
}

TEST_F(InhaltsAnsichtTest, OpenedFilesOfTheLibraryAreShownWhateverTheFilterHides) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    suchfeld().setText(QStringLiteral("alp"));
    const TempOrdner fremd;
    fremd.schreibe("Fremd.gpx", gpx(46.0, 9.0));
    fenster->oeffneDateien({ordner.in("Bodensee.gpx"), fremd.in("Fremd.gpx"), fremd.pfad(), fremd.in("fehlt.gpx")});
    setzeDurch();
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(ordner.in("Bodensee.gpx")));
    EXPECT_THAT(gezeigte(), UnorderedElementsAre("Alpen", "Bodensee", "Fremd"));
    EXPECT_TRUE(suchfeld().text().isEmpty());
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

}  // namespace
}  // namespace spurkiste
