#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "library/Importaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

std::string gescheitert(const std::string& was, int nummer) {
    return "Import fehlgeschlagen: " + was + ": " + std::generic_category().message(nummer);
}

class BibliothekImportTest : public Importaufbau {};

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

TEST_F(BibliothekImportTest, saysWhatCannotBeCopiedAndGoesOn) {
    fs::create_directory(fremd.in("ordner.gpx"));
    const std::string lang = std::string(251, 'x') + ".gpx";  // can be copied, but not numbered
    const auto bibliothek = mach();
    bibliothek->importiere(fremde({lang}));
    arbeiteAb();
    Namen danach = {lang};
    struct Fall {
        std::string name;
        std::string gezeigt;
        int fehler;
    };
    const std::vector<Fall> faelle = {{"ordner.gpx/", "ordner.gpx", EISDIR},
                                      {"fehlt.gpx", "fehlt.gpx", ENOENT},
                                      {std::string("n\0.gpx", 6), "n .gpx", EINVAL},
                                      {lang, lang, ENAMETOOLONG}};
    for (const auto& [name, gezeigt, fehler] : faelle) {
        const std::string gut = std::to_string(danach.size()) + ".gpx";
        bibliothek->importiere({fremd.in(name), fremde({gut}).front()});
        arbeiteAb();
        EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(gezeigt, fehler)) << name;  // a success leaves the notice
        danach.insert(danach.end() - 1, gut);
        EXPECT_EQ(imOrdner(), danach) << name;
    }
    EXPECT_EQ(namen(*bibliothek), danach);
    // Of several, in one call or in some that wait for each other.
    bibliothek->importiere({fremd.in("fehlt.gpx"), fremd.in("ordner.gpx")});
    bibliothek->importiere({fremd.in("auch.gpx")});
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert("3 Dateien, zuletzt auch.gpx", ENOENT));
}

}  // namespace
}  // namespace spurkiste
