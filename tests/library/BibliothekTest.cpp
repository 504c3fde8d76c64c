#include <filesystem>
#include <memory>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "hilfe/Engpass.h"
#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

class BibliothekTest : public Bibliotheksaufbau {};

TEST_F(BibliothekTest, choosesItsFolderFromTheSettingsThenTheOldOnesThenTheDocuments) {
    const std::string schluessel(einstellung::kBibliothekOrdner);
    struct Fall {
        std::optional<std::string> eigene;
        std::optional<std::string> alte;
        std::string ordner;
        std::optional<std::string> danach;
    };
    const std::vector<Fall> faelle = {
        {"/a", "/b", "/a", "/a"},
        {"", "/b", "/b", "/b"},
        {std::nullopt, "/b/", "/b", "/b/"},
        {std::nullopt, "", "/heim/Dokumente/GPX-Bibliothek", std::nullopt},
        {std::nullopt, std::nullopt, "/heim/Dokumente/GPX-Bibliothek", std::nullopt},
    };
    umgebung.dokumente = "/heim/Dokumente";
    for (const Fall& fall : faelle) {
        SpeicherEinstellungen eigene;
        SpeicherEinstellungen alte;
        if (fall.eigene) {
            eigene.schreibe(schluessel, *fall.eigene);
        }
        if (fall.alte) {
            alte.schreibe(schluessel, *fall.alte);
        }
        const Bibliothek bibliothek({eigene, &alte, umgebung, hauptfaden, arbeiter});
        EXPECT_EQ(bibliothek.ordner().wert(), fall.ordner);
        EXPECT_EQ(eigene.lies(schluessel), fall.danach);
    }
    umgebung.dokumente.reset();
    EXPECT_THROW(Bibliothek{anschluesse}, std::runtime_error);
}

TEST_F(BibliothekTest, loadsAnEmptyFolderWithoutEverLoading) {
    const auto bibliothek = mach();
    bool geladen = false;
    const Abo abo = bibliothek->laedt().beobachte([&] { geladen = true; });
    bool fertig = false;
    bibliothek->lade([&] { fertig = true; });
    EXPECT_FALSE(bibliothek->geoeffnet().wert());
    hintergrund.fuehre(0);
    hauptfaden.fuehreAlle();
    EXPECT_TRUE(bibliothek->geoeffnet().wert());
    hintergrund.fuehreAlle();
    hauptfaden.fuehreAlle();
    EXPECT_FALSE(fertig);  // before the cache is written
    arbeiteAb();
    EXPECT_TRUE(fertig);
    EXPECT_FALSE(geladen);
    EXPECT_EQ(cacheText(), R"({"version":3,"eintraege":{}})");
}

TEST_F(BibliothekTest, takesOnlyRegularFilesWithTheRightExtensionFromTheFolderItself) {
    for (const char* name :
         {"b.gpx", "A.GPX", ".versteckt.gpx", "zwei\nZeilen.gpx", "x.gpx.bak", ".gpx", "gpx", "a.xml"}) {
        ordner.schreibe(name, gpx(47, 8));
    }
    std::filesystem::create_directories(ordner.in("ordner.gpx"));
    ordner.schreibe("ordner.gpx/innen.gpx", gpx(47, 8));
    ASSERT_EQ(::mkfifo(ordner.in("rohr.gpx").c_str(), 0600), 0);
    std::filesystem::create_symlink("nirgends", ordner.in("ins Leere.gpx"));
    std::filesystem::create_symlink("b.gpx", ordner.in("verweis.gpx"));
    const auto bibliothek = geladen();
    EXPECT_EQ(namen(*bibliothek), (Namen{".versteckt.gpx", "A.GPX", "b.gpx", "verweis.gpx", "zwei\nZeilen.gpx"}));
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
}

TEST_F(BibliothekTest, readsOnlyWhatChangedTheNextTime) {
    const auto erste = mitSpuren({"a.gpx", "b.gpx", "c.gpx"});
    const auto zweite = mach();
    zweite->lade();
    EXPECT_EQ(arbeiteAb(), 0U);
    ASSERT_EQ(zweite->eintraege().wert().size(), 3U);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_EQ(*zweite->eintraege().wert()[i], *erste->eintraege().wert()[i]);
    }

    std::filesystem::last_write_time(ordner.in("b.gpx"),
                                     std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
    ordner.schreibe("neu.gpx", gpx(46, 7));
    std::filesystem::remove(ordner.in("c.gpx"));
    zweite->lade();
    EXPECT_EQ(namen(*zweite).size(), 3U);
    lasseNachsehen();
    EXPECT_EQ(namen(*zweite), (Namen{"a.gpx"}));  // the unchanged ones stand first
    EXPECT_EQ(arbeiteAb(), 2U);
    EXPECT_EQ(namen(*zweite), (Namen{"a.gpx", "b.gpx", "neu.gpx"}));
    EXPECT_EQ(cacheText().find("c.gpx"), std::string::npos);

    anschluesse.mitCache = false;
    const std::string davor = cacheText();
    const auto ohne = mach();
    ohne->lade();
    EXPECT_EQ(arbeiteAb(), 3U);
    EXPECT_EQ(cacheText(), davor);
}

TEST_F(BibliothekTest, clearsAwayWhatAKilledProgramLeftBehind) {
    ordner.schreibe(".spurkiste-12.tmp", "halb");
    ordner.schreibe(".spurkiste-notizen", "fremd");
    const auto bibliothek = mitSpuren({"a.gpx"});
    EXPECT_EQ(imOrdner(), (Namen{".spurkiste-notizen", "a.gpx"}));
}

TEST_F(BibliothekTest, hasTheFinalListBeforeItSaysThatItHasLoaded) {
    for (const char* name : {"b.gpx", "a.gpx"}) {
        ordner.schreibe(name, gpx(47.37, 8.54));
    }
    const auto bibliothek = mach();
    Namen amEnde;
    const Abo abo = bibliothek->laedt().beobachte([&] {
        amEnde = bibliothek->laedt().wert() ? namen(*bibliothek) : Namen{};
        EXPECT_TRUE(amEnde.empty() || bibliothek->eintraege().wert().front()->startOrt.has_value());
    });
    bibliothek->lade();
    lasseNachsehen();
    while (arbeiter.wartende() > 0) {
        arbeiter.fuehre(arbeiter.wartende() - 1);  // the other way round
    }
    arbeiteAb();
    EXPECT_EQ(amEnde, (Namen{"a.gpx", "b.gpx"}));
}

TEST_F(BibliothekTest, publishesEveryResultByItselfAndCountsDown) {
    for (int i = 0; i < 5; ++i) {
        ordner.schreibe(std::to_string(i) + ".gpx", gpx(47, 8));
    }
    const auto bibliothek = mach();
    std::size_t aenderungen = 0;
    const Abo abo = bibliothek->eintraege().beobachte([&] { ++aenderungen; });
    bibliothek->lade();
    lasseNachsehen();
    EXPECT_EQ(aenderungen, 1U);
    arbeiter.fuehreAlle();
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(bibliothek->ausstehend().wert(), 5 - i);
        hauptfaden.fuehre(hauptfaden.wartende() - 1);
        EXPECT_EQ(bibliothek->eintraege().wert().size(), i + 1);
        EXPECT_EQ(aenderungen, i + 2);
        EXPECT_TRUE(bibliothek->laedt().wert());
    }
    hauptfaden.fuehreAlle();
    EXPECT_TRUE(bibliothek->laedt().wert());
    const auto gelandet = bibliothek->eintraege().wert();
    hintergrund.fuehreAlle();
    hauptfaden.fuehreAlle();
    // The hits, five files, and the sorted and labelled list, if it is another.
    EXPECT_EQ(aenderungen, bibliothek->eintraege().wert() == gelandet ? 6U : 7U);
    EXPECT_FALSE(bibliothek->laedt().wert());
    EXPECT_EQ(bibliothek->ausstehend().wert(), 0U);
}

TEST_F(BibliothekTest, staysSilentAboutAFileThatVanishesAndReadsItAgainLater) {
    ordner.schreibe("da.gpx", gpx(47, 8));
    ordner.schreibe("weg.gpx", gpx(47, 8));
    const auto bibliothek = mach();
    bibliothek->lade();
    lasseNachsehen();
    std::filesystem::remove(ordner.in("weg.gpx"));
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"da.gpx"});
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
    ordner.schreibe("weg.gpx", gpx(47, 8));
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 1U);
    EXPECT_EQ(namen(*bibliothek), (Namen{"da.gpx", "weg.gpx"}));
}

TEST_F(BibliothekTest, listsANameThatIsNotUtf8AndLeavesItOutOfTheCacheOnly) {
    ordner.schreibe("gut.gpx", gpx(47, 8));
    ordner.schreibe("h\xf6he.gpx", gpx(47, 8));
    const auto bibliothek = mach();
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 2U);
    EXPECT_EQ(bibliothek->eintraege().wert().size(), 2U);
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 1U);
    EXPECT_EQ(bibliothek->eintraege().wert().size(), 2U);
}

TEST_F(BibliothekTest, createsAMissingFolderWithItsParents) {
    Bibliothek bibliothek(anschluesse, ordner.in("neu/tief"));
    bibliothek.lade();
    arbeiteAb();
    EXPECT_TRUE(std::filesystem::is_directory(ordner.in("neu/tief")));
    EXPECT_EQ(bibliothek.hinweis().wert(), std::nullopt);
}

TEST_F(BibliothekTest, saysInANoticeWhatKeepsItFromTheFolder) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    {
        const Rechte rechte(ordner.pfad(), std::filesystem::perms::none);
        bibliothek->lade();
        arbeiteAb();
    }
    EXPECT_EQ(bibliothek->hinweis().wert(), "Ordner nicht lesbar: " + std::generic_category().message(EACCES));
    EXPECT_EQ(namen(*bibliothek), Namen{"a.gpx"});

    bibliothek->lade();
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
}

TEST_F(BibliothekTest, emptiesTheListWhenTheFolderCannotBeMade) {
    const std::string pfad = ordner.in("bibliothek");
    std::filesystem::create_directory(pfad);
    ordner.schreibe("bibliothek/a.gpx", gpx(47, 8));
    Bibliothek bibliothek(anschluesse, pfad);
    bibliothek.lade();
    arbeiteAb();
    ASSERT_EQ(bibliothek.eintraege().wert().size(), 1U);
    std::filesystem::remove_all(pfad);
    ordner.schreibe("bibliothek", "a file where the folder was");
    bool fertig = false;
    bibliothek.lade([&] { fertig = true; });
    arbeiteAb();
    EXPECT_TRUE(fertig);
    EXPECT_TRUE(bibliothek.eintraege().wert().empty());
    EXPECT_EQ(bibliothek.hinweis().wert(), "Ordner nicht erreichbar: " + pfad);
    EXPECT_FALSE(bibliothek.laedt().wert());
}

TEST_F(BibliothekTest, mayEndWhileFilesAreBeingRead) {
    ordner.schreibe("a.gpx", gpx(47, 8));
    ordner.schreibe("b.gpx", gpx(47, 8));
    bool fertig = false;
    {
        const auto bibliothek = mach();
        bibliothek->lade([&] { fertig = true; });
        lasseNachsehen();
        arbeiter.fuehre(0);
    }
    arbeiteAb();
    EXPECT_FALSE(fertig);
}

Eintrag eintrag(std::string pfad, std::optional<Koordinate> start, std::optional<Koordinate> ende = std::nullopt) {
    GpxMetadaten roh;
    roh.pfad = std::move(pfad);
    roh.start = start;
    roh.ende = ende;
    return std::make_shared<const GpxMetadaten>(std::move(roh));
}

TEST(MitOrtsEtiketten, sortsByComposedPathAndKeepsEqualOnesInOrder) {
    const std::string zerlegt = "/u\xCC\x88.gpx";         // u and a combining diaeresis
    const std::string zusammengesetzt = "/\xC3\xBC.gpx";  // the same character composed
    const Bibliothek::Eintraege sortiert = listenordnung::mitOrtsEtiketten(
        {eintrag("/\xF0\x9F\x9A\xB4.gpx", {}), eintrag("/z.gpx", {}), eintrag(zerlegt, {}), eintrag("/ue.gpx", {}),
         eintrag(zusammengesetzt, {}), eintrag("/\xEF\xBF\xBD.gpx", {}), eintrag("/B.gpx", {}), eintrag("/a.gpx", {})});
    std::vector<std::string> pfade;
    for (const Eintrag& einer : sortiert) {
        pfade.push_back(einer->pfad);
    }
    EXPECT_EQ(pfade, (std::vector<std::string>{"/B.gpx", "/a.gpx", "/ue.gpx", "/z.gpx", zerlegt, zusammengesetzt,
                                               "/\xEF\xBF\xBD.gpx", "/\xF0\x9F\x9A\xB4.gpx"}));
}

TEST(MitOrtsEtiketten, namesSpotsTogetherAndReplacesOnlyRecordsWhoseLabelsChange) {
    const Koordinate meer{0.0, -30.0};
    const Koordinate daneben{0.002, -30.0};  // 222 m away
    const auto einmal =
        listenordnung::mitOrtsEtiketten({eintrag("/b", daneben), eintrag("/a", meer, meer), eintrag("/c", {}, meer)});
    EXPECT_EQ(einmal[0]->startOrt, "0.00100, -30.00000");
    EXPECT_EQ(einmal[1]->startOrt, einmal[0]->startOrt);
    EXPECT_EQ(einmal[0]->zielOrt, "0.00000, -30.00000");
    EXPECT_EQ(einmal[2]->startOrt, std::nullopt);
    EXPECT_EQ(einmal[2]->zielOrt, einmal[0]->zielOrt);
    const auto nochmal = listenordnung::mitOrtsEtiketten(einmal);
    EXPECT_EQ(nochmal, einmal);  // the very same objects
}

TEST_F(BibliothekTest, VieleDateienWerdenNachUndNachUebergeben) {
    constexpr std::size_t kViele = 2500;
    for (std::size_t i = 0; i < kViele; ++i) {
        ordner.schreibe(std::to_string(i) + ".gpx", "");
    }
    const auto bibliothek = mach();
    bibliothek->lade();
    lasseNachsehen();
    EXPECT_EQ(bibliothek->ausstehend().wert(), kViele);
    EXPECT_LT(arbeiter.wartende(), kViele);
    arbeiteAb();
    EXPECT_EQ(bibliothek->ausstehend().wert(), 0U);
    EXPECT_EQ(bibliothek->eintraege().wert().size(), kViele);
    EXPECT_FALSE(bibliothek->laedt().wert());
}

}  // namespace
}  // namespace spurkiste
