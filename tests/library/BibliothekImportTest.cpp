#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"
#include "hilfe/Engpass.h"
#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

std::string gescheitert(int nummer) {
    return "Import fehlgeschlagen: " + std::generic_category().message(nummer);
}

class BibliothekImportTest : public Bibliotheksaufbau {
  protected:
    TempOrdner fremd;

    /// Writes files outside the library and returns their paths.
    std::vector<std::string> fremde(const Namen& alle) const {
        std::vector<std::string> pfade;
        for (const std::string& name : alle) {
            fs::create_directories(fs::path(fremd.in(name)).parent_path());
            pfade.push_back(fremd.schreibe(name, gpx(47, 8)));
        }
        return pfade;
    }
};

TEST_F(BibliothekImportTest, numbersTheCopiesWhoseNameIsTaken) {
    struct Fall {
        Namen da;
        Namen quellen;
        Namen danach;
    };
    const std::vector<Fall> faelle = {
        {{}, {"Neu.gpx"}, {"Neu.gpx"}},
        {{"Runde.gpx", "Runde 2.gpx"}, {"Runde.gpx"}, {"Runde 2.gpx", "Runde 3.gpx", "Runde.gpx"}},
        {{"Runde.gpx", "Runde 3.gpx"}, {"Runde.gpx"}, {"Runde 2.gpx", "Runde 3.gpx", "Runde.gpx"}},
        {{"Tour.GPX"}, {"Tour.GPX"}, {"Tour 2.gpx", "Tour.GPX"}},
        {{}, {"Tour.GpX", "a/Tour.GpX"}, {"Tour 2.gpx", "Tour.GpX"}},
        {{"a.b.gpx"}, {"a.b.gpx"}, {"a.b 2.gpx", "a.b.gpx"}},
        {{"x 2.gpx"}, {"x 2.gpx"}, {"x 2 2.gpx", "x 2.gpx"}},
        {{}, {"a/x.gpx", "b/x.gpx", "c/x.gpx"}, {"x 2.gpx", "x 3.gpx", "x.gpx"}},
        {{}, {"a.txt", "gpx", ".gpx", "x.gpx.bak", "b.gpx"}, {"b.gpx"}},
    };
    for (const auto& [da, quellen, danach] : faelle) {
        SCOPED_TRACE(quellen.front());
        const TempOrdner eigener;
        for (const std::string& name : da) {
            eigener.schreibe(name, "alt " + name);
        }
        Bibliothek bibliothek(anschluesse, eigener.pfad());
        std::vector<std::string> pfade = fremde(quellen);
        for (std::size_t i = 0; i < quellen.size(); ++i) {
            fremd.schreibe(quellen[i], "Nummer " + std::to_string(i));
        }
        bibliothek.importiere(pfade);
        arbeiteAb();
        Namen jetzt = dateien::liste(eigener.pfad());
        jetzt.erase(std::remove(jetzt.begin(), jetzt.end(), Cache::kDateiname), jetzt.end());
        std::sort(jetzt.begin(), jetzt.end());
        EXPECT_EQ(jetzt, danach);
        for (const std::string& name : da) {
            EXPECT_EQ(eigener.lies(name), "alt " + name);
        }
        EXPECT_EQ(bibliothek.hinweis().wert(), std::nullopt);
    }
}

TEST_F(BibliothekImportTest, givesTheNumbersInTheOrderOfTheCall) {
    const auto bibliothek = mach();
    fremde({"a/x.gpx", "b/x.gpx", "c/x.gpx"});
    for (const char* name : {"a/x.gpx", "b/x.gpx", "c/x.gpx"}) {
        fremd.schreibe(name, name);
    }
    bibliothek->importiere({fremd.in("c/x.gpx"), fremd.in("a/x.gpx")});
    bibliothek->importiere({fremd.in("b/x.gpx"), fremd.in("c/x.gpx")});
    // However the threads are scheduled, one copy is made after the other.
    while (kopierer.wartende() + hauptfaden.wartende() > 0) {
        EXPECT_LE(kopierer.wartende(), 1U);
        hauptfaden.fuehreAlle();
        if (kopierer.wartende() > 0) {
            kopierer.fuehre(kopierer.wartende() - 1);
        }
    }
    EXPECT_EQ(ordner.lies("x.gpx"), "c/x.gpx");
    EXPECT_EQ(ordner.lies("x 2.gpx"), "a/x.gpx");
    EXPECT_EQ(ordner.lies("x 3.gpx"), "b/x.gpx");
    EXPECT_EQ(ordner.lies("x 4.gpx"), "c/x.gpx");
    EXPECT_EQ(fremd.lies("c/x.gpx"), "c/x.gpx");
}

TEST_F(BibliothekImportTest, takesEverythingInTheWayForATakenName) {
    fs::create_directory(ordner.in("x.gpx"));
    fs::create_symlink("ins Leere", ordner.in("x 2.gpx"));
    ASSERT_EQ(::mkfifo(ordner.in("x 3.gpx").c_str(), 0600), 0);
    const auto bibliothek = mach();
    bibliothek->importiere(fremde({"x.gpx", "spaet.gpx"}));
    kopierer.fuehre(0);
    ordner.schreibe("spaet.gpx", "another program's");  // between the call and the copy
    arbeiteAb();
    EXPECT_EQ(imOrdner(), (Namen{"spaet 2.gpx", "spaet.gpx", "x 2.gpx", "x 3.gpx", "x 4.gpx", "x.gpx"}));
    EXPECT_EQ(ordner.lies("spaet.gpx"), "another program's");
    EXPECT_EQ(fs::read_symlink(ordner.in("x 2.gpx")), "ins Leere");
}

TEST_F(BibliothekImportTest, passesOverWhatLiesInTheFolderAlready) {
    ordner.schreibe("a.gpx", gpx(47, 8));
    const auto bibliothek = mach();
    bibliothek->importiere({ordner.in("a.gpx"), ordner.pfad() + "//./a.gpx", ""});
    EXPECT_EQ(kopierer.wartende(), 0U);
    fs::create_directory(ordner.in("tiefer"));
    ordner.schreibe("tiefer/b.gpx", gpx(47, 8));
    bibliothek->importiere({ordner.in("tiefer/b.gpx")});
    arbeiteAb();
    EXPECT_EQ(imOrdner(), (Namen{"a.gpx", "b.gpx", "tiefer"}));
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
}

TEST_F(BibliothekImportTest, doesNotMakeTheWindowWait) {
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

TEST_F(BibliothekImportTest, cachesAgainEvenWithNothingToCopy) {
    const auto bibliothek = geladen();
    fs::remove(ordner.in(Cache::kDateiname));
    bool geladenWorden = false;
    const Abo abo = bibliothek->laedt().beobachte([&] { geladenWorden = true; });
    bool fertig = false;
    bibliothek->importiere(fremde({"a.txt"}), [&] { fertig = true; });
    EXPECT_TRUE(fertig);
    EXPECT_FALSE(geladenWorden);
    EXPECT_TRUE(fs::exists(ordner.in(Cache::kDateiname)));
}

TEST_F(BibliothekImportTest, saysWhatCannotBeCopiedAndGoesOn) {
    fs::create_directory(fremd.in("ordner.gpx"));
    ASSERT_EQ(::mkfifo(fremd.in("rohr.gpx").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", fremd.in("geraet.gpx"));
    fs::create_symlink("ins Leere", fremd.in("link.gpx"));
    struct Fall {
        std::string name;
        int fehler;
    };
    const std::vector<Fall> faelle = {{"ordner.gpx", EISDIR},
                                      {"ordner.gpx/", EISDIR},
                                      {"rohr.gpx", EINVAL},
                                      {"geraet.gpx", EINVAL},
                                      {"link.gpx", ENOENT},
                                      {"fehlt.gpx", ENOENT},
                                      {std::string("n\0.gpx", 6), EINVAL}};
    const auto bibliothek = mach();
    std::size_t gute = 0;
    for (const auto& [name, fehler] : faelle) {
        const std::string gut = fremde({std::to_string(gute++) + ".gpx"}).front();
        bibliothek->importiere({fremd.in("fehlt.gpx"), fremd.in(name), gut});
        arbeiteAb();
        EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(fehler)) << name;
        EXPECT_EQ(imOrdner().size(), gute) << name;
    }
    bibliothek->importiere(fremde({"letzte.gpx"}));
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(EINVAL));  // a success leaves the notice
    EXPECT_EQ(namen(*bibliothek).size(), gute + 1);
}

TEST_F(BibliothekImportTest, leavesNothingOfACopyThatFails) {
    const auto bibliothek = geladen();
    const auto versuche = [&](const std::string& quelle) {
        bibliothek->importiere({quelle});
        kopierer.fuehreAlle();
    };
    const std::string quelle = fremde({"a.gpx"}).front();
    fs::permissions(quelle, static_cast<fs::perms>(0644));
    fs::permissions(fremd.pfad(), static_cast<fs::perms>(0755));
    {
        const VollePlatte platte(40);
        versuche(quelle);
    }
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(EFBIG));
    {
        const Rechte rechte(ordner.pfad(), kNurLesen);
        versuche(quelle);
    }
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(EACCES));
    // The longest name there is can be copied, but not numbered.
    const std::string lang = std::string(251, 'x') + ".gpx";
    bibliothek->importiere(fremde({lang}));
    arbeiteAb();
    EXPECT_EQ(imOrdner(), Namen{lang});
    fremde({lang, "a.gpx"});
    bibliothek->importiere({fremd.in(lang), fremd.in("a.gpx")});
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(ENAMETOOLONG));
    EXPECT_EQ(imOrdner(), (Namen{"a.gpx", lang}));
    EXPECT_EQ(namen(*bibliothek), imOrdner());
}

TEST_F(BibliothekImportTest, isOvertakenByALoadThatListsItsCopies) {
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
    EXPECT_TRUE(bibliothek->laedt().wert());
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"a.gpx"});
    EXPECT_EQ(fertige, 2);
}

TEST_F(BibliothekImportTest, isNotLostWhenALoadListsTheFolderBeforeItsCopiesAreMade) {
    const auto bibliothek = mach();
    bibliothek->importiere(fremde({"a.gpx", "b.gpx"}));
    kopierer.fuehreAlle();
    hauptfaden.fuehreAlle();
    bibliothek->lade();  // sees the first one only
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_NE(cacheText().find("b.gpx"), std::string::npos);
}

TEST_F(BibliothekImportTest, staysInItsFolderWhenTheLibraryMovesOn) {
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

TEST_F(BibliothekImportTest, mayEndAtAnyMoment) {
    const std::vector<std::string> quellen = fremde({"a.gpx", "b.gpx", "c.gpx"});
    for (int schritte = 0; schritte < 6; ++schritte) {
        bool fertig = false;
        {
            const auto bibliothek = mach();
            bibliothek->importiere(quellen, [&] { fertig = true; });
            for (int i = 0; i < schritte; ++i) {
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

/// Imports, loads and changes of folder, with all their steps in random order: in the end the library shows what its
/// folder holds, every file once.
TEST_F(BibliothekImportTest, endsWithWhatTheFolderHoldsInWhateverOrderThingsHappen) {
    const std::vector<std::string> quellen = fremde({"a/x.gpx", "b/x.gpx", "y.gpx", "z.txt"});
    for (unsigned saat = 0; saat < 300; ++saat) {
        SCOPED_TRACE(saat);
        std::mt19937 zufall(saat);
        const auto wuerfle = [&](std::size_t grenze) {
            return std::uniform_int_distribution<std::size_t>(0, grenze - 1)(zufall);
        };
        const TempOrdner einer;
        const TempOrdner anderer;
        einer.schreibe("x.gpx", gpx(46, 7));
        Bibliothek bibliothek(anschluesse, einer.pfad());
        std::size_t begonnen = 0;
        std::size_t fertige = 0;
        const auto fertig = [&] { ++fertige; };
        bibliothek.lade();
        for (int schritt = 0; schritt < 60 || wartende() > 0; ++schritt) {
            const std::size_t wurf = schritt < 60 ? wuerfle(12) : 11;
            if (wurf == 0) {
                bibliothek.lade(fertig);
                ++begonnen;
            } else if (wurf <= 2) {
                bibliothek.importiere({quellen[wuerfle(4)], quellen[wuerfle(4)]}, fertig);
                ++begonnen;
            } else if (wurf == 3 && wuerfle(3) == 0) {
                bibliothek.wechsleOrdner(wuerfle(2) == 0 ? einer.pfad() : anderer.pfad());
            } else if (wurf <= 6 && kopierer.wartende() > 0) {
                kopierer.fuehre(0);
            } else if (wurf <= 8 && arbeiter.wartende() > 0) {
                arbeiter.fuehre(wuerfle(arbeiter.wartende()));
            } else if (hauptfaden.wartende() > 0) {
                hauptfaden.fuehre(0);
            } else if (wurf == 11) {
                kopierer.fuehreAlle();
                arbeiter.fuehreAlle();
            }
        }
        std::multiset<std::string> gezeigt;
        for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
            gezeigt.insert(eintrag->pfad);
        }
        std::multiset<std::string> vorhanden;
        for (const std::string& name : dateien::liste(bibliothek.ordner().wert())) {
            if (name != Cache::kDateiname) {
                vorhanden.insert(bibliothek.ordner().wert() + "/" + name);
            }
        }
        EXPECT_FALSE(bibliothek.laedt().wert());
        EXPECT_EQ(fertige, begonnen);
        EXPECT_EQ(gezeigt, vorhanden);
        EXPECT_EQ(bibliothek.hinweis().wert(), std::nullopt);
    }
}

TEST_F(BibliothekImportTest, worksWithRealThreads) {
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
