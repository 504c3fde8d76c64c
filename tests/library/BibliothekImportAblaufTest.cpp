#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"
#include "library/Importaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

class BibliothekImportAblaufTest : public Importaufbau {};

TEST_F(BibliothekImportAblaufTest, doesNotMakeTheWindowWait) {
    const auto bibliothek = mach();
    bool fertig = false;
    bibliothek->importiere(fremde({"a.gpx", "b.gpx"}), [&] { fertig = true; });
    EXPECT_TRUE(imOrdner().empty());
    for (std::size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(imOrdner().size(), i);
        EXPECT_FALSE(bibliothek->laedt().wert());
        kopierer.fuehre(0);
        hauptfaden.fuehreAlle();
    }
    EXPECT_TRUE(bibliothek->laedt().wert());
    EXPECT_TRUE(namen(*bibliothek).empty());
    arbeiter.fuehre(1);
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), Namen{"b.gpx"});  // each as it comes
    EXPECT_FALSE(fertig);
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_TRUE(fertig);
    EXPECT_FALSE(bibliothek->laedt().wert());
    EXPECT_NE(cacheText().find("b.gpx"), std::string::npos);
}

TEST_F(BibliothekImportAblaufTest, cachesAgainEvenWithNothingToCopy) {
    const auto bibliothek = geladen();
    fs::remove(ordner.in(Cache::kDateiname));
    bool geladenWorden = false;
    const Abo abo = bibliothek->laedt().beobachte([&] { geladenWorden = true; });
    bool fertig = false;
    bibliothek->importiere(fremde({"a.txt"}), [&] { fertig = true; });
    arbeiteAb();
    EXPECT_TRUE(fertig);
    EXPECT_FALSE(geladenWorden);
    EXPECT_TRUE(fs::exists(ordner.in(Cache::kDateiname)));
}

TEST_F(BibliothekImportAblaufTest, isOvertakenByALoadThatListsItsCopies) {
    const auto bibliothek = mach();
    int fertige = 0;
    bibliothek->importiere(fremde({"a.gpx"}), [&] { ++fertige; });
    kopierer.fuehreAlle();
    hauptfaden.fuehreAlle();
    arbeiter.fuehreAlle();  // read, but not merged yet
    bibliothek->lade([&] { ++fertige; });
    hauptfaden.fuehre(0);
    EXPECT_TRUE(namen(*bibliothek).empty());
    EXPECT_EQ(fertige, 1);
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"a.gpx"});
    EXPECT_EQ(fertige, 2);
}

TEST_F(BibliothekImportAblaufTest, isNotLostWhenALoadListsTheFolderBeforeItsCopiesAreMade) {
    const auto bibliothek = mach();
    bibliothek->importiere(fremde({"a.gpx", "b.gpx"}));
    kopierer.fuehreAlle();
    hauptfaden.fuehreAlle();
    bibliothek->lade();  // sees the first one only
    hintergrund.fuehre(0);
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_NE(cacheText().find("b.gpx"), std::string::npos);
}

TEST_F(BibliothekImportAblaufTest, staysInItsFolderWhenTheLibraryMovesOn) {
    const TempOrdner anderer;
    const auto bibliothek = mach();
    bibliothek->importiere(fremde({"a.gpx", "b.gpx"}));
    kopierer.fuehreAlle();
    bibliothek->wechsleOrdner(anderer.pfad());
    arbeiteAb();
    EXPECT_EQ(imOrdner(), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_TRUE(namen(*bibliothek).empty());
    EXPECT_EQ(dateien::liste(anderer.pfad()), Namen{std::string(Cache::kDateiname)});
    EXPECT_FALSE(bibliothek->laedt().wert());
}

TEST_F(BibliothekImportAblaufTest, mayEndAtAnyMoment) {
    const std::vector<std::string> quellen = fremde({"a.gpx", "b.gpx", "c.gpx"});
    for (int schritte = 0; schritte < 6; ++schritte) {
        bool fertig = false;
        {
            const auto bibliothek = mach();
            bibliothek->importiere(quellen, [&] { fertig = true; });
            for (int i = 0; i < schritte && kopierer.wartende() + hauptfaden.wartende() > 0; ++i) {
                (kopierer.wartende() > 0 ? kopierer : hauptfaden).fuehre(0);
            }
        }
        const Namen vorher = imOrdner();
        arbeiteAb();
        EXPECT_FALSE(fertig);
        EXPECT_LE(imOrdner().size(), vorher.size() + 1);  // at most the copy in hand is finished
        for (const std::string& name : imOrdner()) {
            EXPECT_EQ(ordner.lies(name), gpx(47, 8)) << name;
        }
    }
}

TEST_F(BibliothekImportAblaufTest, settlesManyImportsTogetherAndOnceASecond) {
    HandWecker wecker;
    anschluesse.wecker = &wecker;
    const auto bibliothek = geladen();
    int fertige = 0;
    for (const std::string& quelle : fremde({"c.gpx", "b.gpx", "a.gpx"})) {
        bibliothek->importiere({quelle}, [&] { ++fertige; });
    }
    const auto kopiereUndLies = [&] {
        kopierer.fuehre(0);
        hauptfaden.fuehreAlle();
        arbeiter.fuehreAlle();
        hauptfaden.fuehreAlle();
    };
    kopiereUndLies();
    kopiereUndLies();
    EXPECT_EQ(namen(*bibliothek), (Namen{"c.gpx", "b.gpx"}));
    EXPECT_EQ(hintergrund.wartende() + cacheschreiber.wartende(), 0U);
    EXPECT_TRUE(bibliothek->laedt().wert());
    ASSERT_EQ(wecker.wartende.size(), 1U);
    wecker.klingle();
    lasseNachsehen();
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "c.gpx"}));
    EXPECT_EQ(fertige, 2);
    kopiereUndLies();
    EXPECT_EQ(hintergrund.wartende(), 1U);  // nobody else to wait for
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx", "c.gpx"}));
    EXPECT_EQ(fertige, 3);
    EXPECT_FALSE(bibliothek->laedt().wert());
    EXPECT_TRUE(wecker.wartende.empty());
}

TEST_F(BibliothekImportAblaufTest, stopsAfterTheCopyInHand) {
    const auto bibliothek = mach();
    int fertige = 0;
    bibliothek->importiere(fremde({"a.gpx", "b.gpx", "c.gpx"}), [&] { ++fertige; });
    bibliothek->importiere(fremde({"d.gpx", "e.gpx"}), [&] { ++fertige; });
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 5U);
    kopierer.fuehreAlle();
    hauptfaden.fuehreAlle();
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 4U);
    bibliothek->brichImporteAb();
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 2U);  // those that wait for the disk together, if both are begun
    arbeiteAb();
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 0U);
    EXPECT_EQ(fertige, 2);
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_EQ(imOrdner(), namen(*bibliothek));
    bibliothek->brichImporteAb();
}

TEST_F(BibliothekImportAblaufTest, worksWithRealThreads) {
    Namen alle;
    for (int i = 0; i < 40; ++i) {
        alle.push_back(std::to_string(i % 8) + "/" + std::to_string(i) + ".gpx");
    }
    const std::vector<std::string> quellen = fremde(alle);
    Hauptschlange schlange;
    ArbeiterPool leser(3);
    ArbeiterPool kopierfaden(1);
    Bibliothek::Anschluesse echte{einstellungen, nullptr, umgebung, schlange, leser};
    echte.kopierer = &kopierfaden;
    Bibliothek bibliothek(echte, ordner.pfad());
    bibliothek.lade();
    bibliothek.importiere(quellen, [&] { schlange.beende(); });
    schlange.laufe();
    EXPECT_EQ(namen(bibliothek), imOrdner());
    EXPECT_EQ(imOrdner().size(), quellen.size());
}

}  // namespace
}  // namespace spurkiste
