#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

class BibliothekDateienTest : public Bibliotheksaufbau {};

TEST_F(BibliothekDateienTest, removesFromTheListWhatTheTrashHas) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx", "c.gpx", "d.gpx"});
    bibliothek->inPapierkorb({ordner.in("c.gpx"), ordner.in("fehlt.gpx"), ordner.in("a.gpx"), ordner.in("d.gpx")});
    ASSERT_EQ(papierkorb.anfragen.size(), 1U);
    EXPECT_EQ(papierkorb.anfragen[0].pfade, (Namen{ordner.in("a.gpx"), ordner.in("c.gpx"), ordner.in("d.gpx")}));
    fs::remove(ordner.in("a.gpx"));
    fs::remove(ordner.in("d.gpx"));
    papierkorb.anfragen[0].fertig({{ordner.in("d.gpx"), ordner.in("a.gpx")}, "c ist voll"});
    EXPECT_EQ(namen(*bibliothek).size(), 4U);  // nothing on the trash's thread
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "c.gpx"}));
    EXPECT_EQ(bibliothek->hinweis().wert(), "Papierkorb fehlgeschlagen: c ist voll");
    arbeiteAb();
    EXPECT_EQ(cacheText().find("a.gpx"), std::string::npos);

    bibliothek->inPapierkorb({ordner.in("b.gpx")});
    fs::remove(ordner.in("b.gpx"));
    papierkorb.anfragen[1].fertig({{ordner.in("b.gpx")}, std::nullopt});
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), Namen{"c.gpx"});
    EXPECT_NE(bibliothek->hinweis().wert(), std::nullopt);  // a success leaves the notice
}

TEST_F(BibliothekDateienTest, asksTheTrashOnceForEachFileAndFollowsARenaming) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx", "c.gpx"});
    bibliothek->inPapierkorb({ordner.in("a.gpx"), ordner.in("b.gpx")});
    bibliothek->inPapierkorb({ordner.in("a.gpx"), ordner.in("c.gpx")});
    ASSERT_EQ(papierkorb.anfragen.size(), 2U);
    EXPECT_EQ(papierkorb.anfragen[1].pfade, Namen{ordner.in("c.gpx")});
    EXPECT_EQ(bibliothek->benenneUm(erster(*bibliothek), "neu"), ordner.in("neu.gpx"));
    bibliothek->inPapierkorb({ordner.in("neu.gpx")});
    EXPECT_EQ(papierkorb.anfragen.size(), 2U);
    // Nothing else may come to the path at which the trash still looks.
    const Eintrag c = bibliothek->eintraege().wert().back();
    EXPECT_EQ(bibliothek->benenneUm(*c, "a"), std::nullopt);
    fs::remove(ordner.in("b.gpx"));
    papierkorb.anfragen[0].fertig({{ordner.in("b.gpx")}, std::nullopt, {ordner.in("a.gpx")}});
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), (Namen{"neu.gpx", "c.gpx"}));
    ASSERT_EQ(papierkorb.anfragen.size(), 3U);
    EXPECT_EQ(papierkorb.anfragen[2].pfade, Namen{ordner.in("neu.gpx")});
    fs::remove(ordner.in("neu.gpx"));
    papierkorb.anfragen[2].fertig({{ordner.in("neu.gpx")}, std::nullopt});
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), Namen{"c.gpx"});
}

TEST_F(BibliothekDateienTest, dropsTheRecordOfAVanishedFileAndSaysItsName) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx", "c.gpx"});
    const auto wirfWeg = [&](const Namen& pfade) {
        bibliothek->inPapierkorb({pfade.begin(), pfade.end()});
        papierkorb.anfragen.back().fertig({{}, std::nullopt, pfade});
        hauptfaden.fuehreAlle();
        arbeiteAb();
    };
    fs::remove(ordner.in("a.gpx"));
    wirfWeg({ordner.in("a.gpx")});
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "c.gpx"}));
    EXPECT_EQ(bibliothek->hinweis().wert(), "a.gpx war schon verschwunden");
    EXPECT_EQ(cacheText().find("a.gpx"), std::string::npos);
    bibliothek->lade();
    arbeiteAb();
    wirfWeg({ordner.in("b.gpx")});  // it has come back since the trash looked
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "c.gpx"}));
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
    fs::remove(ordner.in("b.gpx"));
    fs::remove(ordner.in("c.gpx"));
    wirfWeg({ordner.in("b.gpx"), ordner.in("c.gpx")});
    EXPECT_EQ(namen(*bibliothek), Namen{});
    EXPECT_EQ(bibliothek->hinweis().wert(), "2 Dateien waren schon verschwunden, zuletzt c.gpx");
}

TEST_F(BibliothekDateienTest, keepsNoRowOfAFileThatVanishedOnceItWasRead) {
    for (const char* name : {"a.gpx", "b.gpx", "c.gpx"}) {
        ordner.schreibe(name, gpx(47, 8));
    }
    const auto bibliothek = mach();
    bibliothek->lade();
    lasseNachsehen();
    arbeiter.fuehreAlle();
    fs::remove(ordner.in("a.gpx"));
    fs::rename(ordner.in("b.gpx"), ordner.in("woanders"));
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"c.gpx"});
    EXPECT_FALSE(bibliothek->laedt().wert());
    EXPECT_EQ(cacheText().find("a.gpx"), std::string::npos);
}

TEST_F(BibliothekDateienTest, leavesTheListWhenNothingWentToTheTrash) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    fs::remove(ordner.in(Cache::kDateiname));
    bibliothek->inPapierkorb({});
    bibliothek->inPapierkorb({ordner.in("fehlt.gpx")});
    EXPECT_TRUE(papierkorb.anfragen.empty());
    bibliothek->inPapierkorb({ordner.in("a.gpx")});
    bool geaendert = false;
    const Abo abo = bibliothek->eintraege().beobachte([&] { geaendert = true; });
    papierkorb.anfragen[0].fertig({{}, "geht nicht"});
    hauptfaden.fuehreAlle();
    EXPECT_FALSE(geaendert);
    EXPECT_FALSE(fs::exists(ordner.in(Cache::kDateiname)));
    EXPECT_EQ(bibliothek->hinweis().wert(), "Papierkorb fehlgeschlagen: geht nicht");

    anschluesse.papierkorb = nullptr;
    const auto ohne = geladen();
    ohne->inPapierkorb({ordner.in("a.gpx")});
    EXPECT_EQ(ohne->hinweis().wert(), "Papierkorb fehlgeschlagen: " + std::generic_category().message(ENOTSUP));
    EXPECT_EQ(imOrdner(), Namen{"a.gpx"});
}

TEST_F(BibliothekDateienTest, takesTheTrashsAnswerWhateverHappenedMeanwhile) {
    auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    bibliothek->inPapierkorb({ordner.in("a.gpx")});
    bibliothek->lade();
    hintergrund.fuehreAlle();  // lists the file once more
    fs::remove(ordner.in("a.gpx"));
    papierkorb.anfragen[0].fertig({{ordner.in("a.gpx")}, std::nullopt});
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"b.gpx"});

    bibliothek->inPapierkorb({ordner.in("b.gpx")});
    bibliothek.reset();
    papierkorb.anfragen[1].fertig({{ordner.in("b.gpx")}, std::nullopt});
    arbeiteAb();
}

TEST_F(BibliothekDateienTest, changesTheFolderAtOnceAndLoadsItThen) {
    const TempOrdner anderer;
    anderer.schreibe("neu.gpx", gpx(47, 8));
    ordner.schreibe("a.gpx", gpx(47, 8));
    ordner.schreibe("b.gpx", gpx(47, 8));
    const auto bibliothek = mach();
    bibliothek->lade();
    lasseNachsehen();
    arbeiter.fuehreAlle();
    hauptfaden.fuehre(0);
    ASSERT_EQ(bibliothek->eintraege().wert().size(), 1U);
    bibliothek->benenneUm(GpxMetadaten{}, "leaves a notice");
    const auto hinweis = bibliothek->hinweis().wert();
    EXPECT_NE(hinweis, std::nullopt);
    bibliothek->wechsleOrdner(anderer.pfad() + "/.//");
    EXPECT_EQ(bibliothek->ordner().wert(), anderer.pfad());
    EXPECT_EQ(einstellungen.lies(einstellung::kBibliothekOrdner), anderer.pfad());
    EXPECT_TRUE(bibliothek->eintraege().wert().empty());
    EXPECT_EQ(bibliothek->hinweis().wert(), hinweis);  // until the load begins
    hauptfaden.fuehre(0);                              // the old folder's file
    EXPECT_TRUE(bibliothek->eintraege().wert().empty());
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"neu.gpx"});
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
    EXPECT_FALSE(bibliothek->laedt().wert());
    EXPECT_EQ(imOrdner(), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_FALSE(fs::exists(ordner.in(Cache::kDateiname)));  // the overtaken load caches nothing

    bibliothek->wechsleOrdner(ordner.pfad());
    bibliothek->wechsleOrdner(anderer.pfad());
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"neu.gpx"});
}

TEST_F(BibliothekDateienTest, mayEndWhileAnOperationWaits) {
    auto bibliothek = mitSpuren({"a.gpx"});
    bool fertig = false;
    bibliothek->setzeSportart(GpxSportart::rad, erster(*bibliothek), [&] { fertig = true; });
    bibliothek->wechsleOrdner(ordner.in("neu"));
    bibliothek.reset();
    arbeiteAb();
    EXPECT_FALSE(fertig);
    EXPECT_EQ(imOrdner(), Namen{"a.gpx"});
}

}  // namespace
}  // namespace spurkiste
