#include <QApplication>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QTest>
#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "hilfe/HandAusfuehrer.h"
#include "hilfe/TempOrdner.h"
#include "ui/fenster/Fensteraufbau.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class InhaltsDateienTest : public Fensteraufbau {
  protected:
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

TEST_F(InhaltsDateienTest, EachDroppedFileIsAnImportOfItsOwnInTheOrderOfTheDrop) {
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

TEST_F(InhaltsDateienTest, OpenedFilesOfTheLibraryAreShownWhateverTheFilterHides) {
    oeffne({"Alpen.gpx", "Bodensee.gpx"});
    suchfeld().setText(QStringLiteral("alp"));
    const TempOrdner fremd;
    fremd.schreibe("Fremd.gpx", gpx(46.0, 9.0));
    fenster->oeffneDateien({ordner.in("Bodensee.gpx"), fremd.in("Fremd.gpx"), fremd.pfad(), fremd.in("fehlt.gpx")});
    setzeDurch();
    bis([&] { return tabelle().auswahl().size() == 2; });  // the other one as soon as it is there
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(ordner.in("Bodensee.gpx"), ordner.in("Fremd.gpx")));
    EXPECT_THAT(gezeigte(), UnorderedElementsAre("Alpen", "Bodensee", "Fremd"));
    EXPECT_TRUE(suchfeld().text().isEmpty());
    EXPECT_TRUE(sagt(QStringLiteral("Nicht geöffnet: 2 Dateien, zuletzt fehlt.gpx: gibt es nicht")));
}

TEST_F(InhaltsDateienTest, FilesGivenAtTheStartWaitForTheLoad) {
    einstellungen.schreibe("appLanguage", "");
    ordner.schreibe("Alpen.gpx", gpx(47.0, 8.0));
    const TempOrdner fremd;
    bibliothek = mach();
    fenster = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel);
    fenster->oeffneDateien({ordner.in("Alpen.gpx"), fremd.schreibe("Fremd.gpx", gpx(46.0, 9.0))});
    EXPECT_EQ(wartende(), 0U);
    fenster->show();
    bis([&] { return wartende() > 0; });
    EXPECT_EQ(kopierer.wartende(), 0U);
    setzeDurch();
    bis([&] { return tabelle().auswahl().size() == 2; });
}

TEST_F(InhaltsDateienTest, ASelectedFileStaysSelectedWhileItIsReadAnew) {
    oeffne({"Alpen.gpx", "Bodensee.gpx", "Churfirsten.gpx"});
    waehle({"Alpen.gpx", "Bodensee.gpx", "Churfirsten.gpx"});
    ordner.schreibe("Alpen.gpx", gpx(45.0, 8.0, "hiking"));
    std::filesystem::remove(ordner.in("Bodensee.gpx"));
    bibliothek->lade();
    lasseNachsehen();
    bis([&] { return tabelle().modell().rowCount() == 1; });
    EXPECT_TRUE(bibliothek->laedt().wert());
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(ordner.in("Alpen.gpx"), ordner.in("Churfirsten.gpx")));
    setzeDurch();
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(ordner.in("Alpen.gpx"), ordner.in("Churfirsten.gpx")));
    ordner.schreibe("Alpen.gpx", gpx(45.0, 8.0));
    bibliothek->lade();
    lasseNachsehen();
    std::filesystem::remove(ordner.in("Alpen.gpx"));  // after the look, before the reading
    setzeDurch();
    bis([&] { return tabelle().auswahl().size() == 1; });
}

TEST_F(InhaltsDateienTest, OffersToTakeLocalFilesOnly) {
    oeffne({"Tour.gpx"});
    const auto nimmt = [&](const char* adresse) {
        QMimeData daten;
        daten.setData(QStringLiteral("text/uri-list"), adresse);
        QDragEnterEvent kommt(QPoint(100, 100), Qt::CopyAction, &daten, Qt::LeftButton, Qt::NoModifier);
        kommt.ignore();
        QApplication::sendEvent(fenster.get(), &kommt);
        QDragLeaveEvent geht;
        QApplication::sendEvent(fenster.get(), &geht);
        return kommt.isAccepted();
    };
    EXPECT_FALSE(nimmt("https://example.org/x.gpx\r\n"));
    EXPECT_FALSE(nimmt(""));
    EXPECT_TRUE(nimmt("https://example.org/x.gpx\r\nfile:///x.gpx\r\n"));
}

TEST_F(InhaltsDateienTest, ManyOpenedFilesAreShownTogether) {
    oeffne({"Tour.gpx"});
    waehle({"Tour.gpx"});
    const TempOrdner fremd;
    Namen viele = {ordner.in("Tour.gpx")};
    for (int i = 0; i < 25; ++i) {
        viele.push_back(fremd.schreibe("Weg " + std::to_string(i) + ".gpx", gpx(46.0, 8.0 + i)));
    }
    fenster->oeffneDateien(viele);
    while (kopierer.wartende() > 0) {
        kopierer.fuehre(0);
        hauptfaden.fuehreAlle();
        arbeiter.fuehreAlle();
        hauptfaden.fuehreAlle();
        bis([&] { return tabelle().modell().rowCount() == static_cast<int>(bibliothek->eintraege().wert().size()); });
        QCoreApplication::processEvents();
        EXPECT_EQ(tabelle().auswahl().size(), 1U);
    }
    setzeDurch();
    bis([&] { return tabelle().auswahl().size() == viele.size(); });
}

TEST_F(InhaltsDateienTest, WhatTheUserLooksForIsShownOnceManyRowsAreMade) {
    HandAusfuehrer zeilenmacher;
    werkstatt = {&hauptfaden, &zeilenmacher, nullptr, 0};
    oeffne({"Tour.gpx"});
    const TempOrdner korb;
    constexpr int kViele = 600;  // more than are made at once
    for (int i = 0; i < kViele; ++i) {
        ordner.schreibe("Weg " + std::to_string(i) + ".gpx", gpx(47.0, 8.0));
    }
    const auto zeigt = [&](const std::string& was, int reihen) {
        zeilenmacher.fuehreAlle();
        hauptfaden.fuehreAlle();
        bis([&] { return tabelle().istMarkiert(); });
        EXPECT_EQ(tabelle().modell().rowCount(), reihen) << was;
    };
    const std::string einer = ordner.in("Weg 300.gpx");
    bibliothek->lade();
    arbeiteAb();
    bis([&] { return zeilenmacher.wartende() > 0; });
    fenster->oeffneDateien({einer});
    EXPECT_FALSE(tabelle().istMarkiert());
    zeigt("a file of a load", kViele + 1);
    EXPECT_THAT(tabelle().auswahl(), UnorderedElementsAre(einer));

    QTest::keyClick(&tabelle(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&tabelle(), Qt::Key_Delete);
    papierkorb.wirfAlles(korb);
    setzeDurch();
    QTest::keyClick(fenster.get(), Qt::Key_Z, Qt::ControlModifier);
    arbeiteAb();
    bis([&] { return zeilenmacher.wartende() > 0; });
    EXPECT_FALSE(tabelle().istMarkiert());
    zeigt("what came back from the trash", kViele + 1);
    EXPECT_EQ(tabelle().auswahl().size(), std::size_t{kViele} + 1);
}

}  // namespace
}  // namespace spurkiste
