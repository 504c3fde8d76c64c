#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "hilfe/Engpass.h"
#include "hilfe/HandAusfuehrer.h"
#include "hilfe/TempOrdner.h"
#include "platform/gio/GioPapierkorb.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

/// With a home and a data folder of its own, beside which the files lie: GIO moves a file of the home's file system
/// into the data folder.
class GioPapierkorbTest : public testing::Test {
  protected:
    /// GIO asks for the home and the data folder once per process, so all cases share them.
    static void SetUpTestSuite() {
        heim = std::make_unique<TempOrdner>();
        ::setenv("HOME", heim->pfad().c_str(), 1);
        ::setenv("XDG_DATA_HOME", heim->in("daten").c_str(), 1);
    }
    static void TearDownTestSuite() { heim.reset(); }

    void SetUp() override {
        for (const std::string& name : dateien::liste(heim->pfad())) {
            fs::remove_all(heim->in(name));
        }
        fs::create_directory(heim->in("daten"));
        fs::create_directory(heim->in("spuren"));
        if (dateien::stand(spur("probe"))->geraet != dateien::stand(heim->pfad())->geraet) {
            GTEST_SKIP() << "files are on another device than their folder, so that GIO sees no home's trash for them";
        }
        fs::remove(heim->in("spuren/probe"));
    }

    static std::string spur(const std::string& name, const std::string& inhalt = "") {
        return heim->schreibe("spuren/" + name, inhalt);
    }
    static std::vector<std::string> imKorb() {
        const std::string ort = heim->in("daten/Trash/files");
        return fs::exists(ort) ? dateien::liste(ort) : std::vector<std::string>();
    }
    static std::vector<std::string> spuren() { return dateien::liste(heim->in("spuren")); }

    Papierkorb::Ergebnis wirfWeg(std::vector<std::string> pfade) {
        Papierkorb::Ergebnis ergebnis;
        int meldungen = 0;
        papierkorb.verschiebe(std::move(pfade), [&](const Papierkorb::Ergebnis& dieses) {
            ergebnis = dieses;
            ++meldungen;
        });
        EXPECT_EQ(meldungen, 0);  // the call itself does nothing that could take long
        arbeiter.fuehreAlle();
        EXPECT_EQ(meldungen, 1);
        return ergebnis;
    }

    static std::unique_ptr<TempOrdner> heim;
    HandAusfuehrer arbeiter;
    GioPapierkorb papierkorb{arbeiter};
};

std::unique_ptr<TempOrdner> GioPapierkorbTest::heim;

/// What the trash has noted of where a file came from.
std::string herkunft(const TempOrdner& heim, const std::string& name) {
    return heim.lies("daten/Trash/info/" + name + ".trashinfo");
}

TEST_F(GioPapierkorbTest, movesFilesToWhereTheDesktopFindsThemAgain) {
    const std::string a = spur("Höhe 1%.gpx", "A");
    const std::string b = spur("b.gpx", "B");
    fs::create_symlink("b.gpx", heim->in("spuren/link.gpx"));
    const auto ergebnis = wirfWeg({a, heim->in("spuren/link.gpx")});
    EXPECT_THAT(ergebnis.verschoben, ElementsAre(a, heim->in("spuren/link.gpx")));
    EXPECT_EQ(ergebnis.fehler, std::nullopt);
    EXPECT_THAT(imKorb(), UnorderedElementsAre("Höhe 1%.gpx", "link.gpx"));
    EXPECT_EQ(heim->lies("daten/Trash/files/Höhe 1%.gpx"), "A");
    EXPECT_THAT(herkunft(*heim, "Höhe 1%.gpx"), HasSubstr("Path=" + heim->pfad() + "/spuren/H%C3%B6he%201%25.gpx\n"));
    EXPECT_THAT(spuren(), ElementsAre("b.gpx"));  // the link went, not what it leads to
    EXPECT_EQ(heim->lies("spuren/b.gpx"), "B");
}

TEST_F(GioPapierkorbTest, keepsFilesOfOneNameApart) {
    (void)wirfWeg({spur("a.gpx", "1")});
    (void)wirfWeg({spur("a.gpx", "2")});
    std::vector<std::string> inhalte;
    for (const std::string& name : imKorb()) {
        inhalte.push_back(heim->lies("daten/Trash/files/" + name));
    }
    EXPECT_THAT(inhalte, UnorderedElementsAre("1", "2"));
}

TEST_F(GioPapierkorbTest, findsWhereTheFilesLieAndPutsThemBack) {
    (void)wirfWeg({spur("a.b.gpx", "0")});  // of the same name, thrown away before
    fs::create_directory_symlink("spuren", heim->in("link"));
    const std::string a = spur("a.b.gpx", "A");
    const std::string h = heim->in("link/Höhe 1%.gpx");  // notes may have another way to the same file
    (void)spur("Höhe 1%.gpx", "H");
    fs::create_symlink("nirgends", heim->in("spuren/.tot.gpx"));
    const auto funde = wirfWeg({a, h, heim->in("spuren/.tot.gpx")}).funde;
    ASSERT_EQ(funde.size(), 3U);
    for (const auto& fund : funde) {
        EXPECT_EQ(dateien::stand(fund.ort), fund.stand);
        papierkorb.holeZurueck(fund);
    }
    EXPECT_EQ(heim->lies("spuren/a.b.gpx"), "A");
    EXPECT_EQ(heim->lies("spuren/Höhe 1%.gpx"), "H");
    EXPECT_TRUE(fs::is_symlink(heim->in("spuren/.tot.gpx")));
    EXPECT_THAT(imKorb(), ElementsAre("a.b.gpx"));
    EXPECT_THAT(dateien::liste(heim->in("daten/Trash/info")), ElementsAre("a.b.gpx.trashinfo"));

    const auto weg = wirfWeg({a}).funde;
    ASSERT_EQ(weg.size(), 1U);
    (void)spur("a.b.gpx", "neu");
    EXPECT_THROW(papierkorb.holeZurueck(weg.front()), std::system_error);
    EXPECT_EQ(heim->lies("spuren/a.b.gpx"), "neu");
    EXPECT_TRUE(dateien::gibtEs(weg.front().ort));
}

TEST_F(GioPapierkorbTest, saysTheFirstErrorAndMovesTheOthers) {
    const std::string a = spur("a.gpx");
    const std::string b = spur("b.gpx");
    fs::create_symlink("kreis", heim->in("spuren/kreis"));
    const std::string unerreichbar = heim->in("spuren/kreis/weg\n1.gpx");
    const std::string weg = heim->in("spuren/weg.gpx");
    const auto ergebnis = wirfWeg({weg, unerreichbar, a, heim->in("spuren/kreis/weg2.gpx"), b});
    EXPECT_THAT(ergebnis.verschoben, ElementsAre(a, b));
    EXPECT_THAT(ergebnis.verschwunden, ElementsAre(weg));
    ASSERT_TRUE(ergebnis.fehler.has_value());
    EXPECT_THAT(*ergebnis.fehler, HasSubstr("weg 1.gpx"));  // on one line
    EXPECT_THAT(spuren(), ElementsAre("kreis"));
}

TEST_F(GioPapierkorbTest, deletesNothingWhenTheTrashCannotBeWritten) {
    const std::string a = spur("a.gpx", "A");
    const auto bleibtLiegen = [&] {
        const auto ergebnis = wirfWeg({a});
        EXPECT_THAT(ergebnis.verschoben, IsEmpty());
        ASSERT_TRUE(ergebnis.fehler.has_value());
        EXPECT_THAT(*ergebnis.fehler, testing::Not(IsEmpty()));
        EXPECT_EQ(heim->lies("spuren/a.gpx"), "A");
    };
    {
        SCOPED_TRACE("something else is in its place");
        heim->schreibe("daten/Trash", "");
        bleibtLiegen();
        fs::remove(heim->in("daten/Trash"));
    }
    for (const char* name : {".", "daten", "spuren"}) {
        fs::permissions(heim->in(name), static_cast<fs::perms>(0777));
    }
    for (const char* ort : {"daten", "spuren"}) {
        SCOPED_TRACE(ort);
        // In a process of its own, since GIO forgets to free a few bytes over it.
        EXPECT_TRUE(imKind([&] {
            const Rechte rechte(heim->in(ort), kNurLesen);
            bleibtLiegen();
            return !HasFailure();
        }));
    }
    EXPECT_THAT(imKorb(), IsEmpty());
    EXPECT_THAT(wirfWeg({a}).verschoben, ElementsAre(a));
}

TEST_F(GioPapierkorbTest, losesNothingOnAFullDisk) {
    const std::string a = spur("a.gpx", "A");
    Papierkorb::Ergebnis ergebnis;
    {
        const VollePlatte platte(0);
        ergebnis = wirfWeg({a});
    }
    const bool imTrash = !ergebnis.verschoben.empty();
    EXPECT_NE(imTrash, ergebnis.fehler.has_value());
    EXPECT_EQ(heim->lies(imTrash ? "daten/Trash/files/a.gpx" : "spuren/a.gpx"), "A");
}

}  // namespace
}  // namespace spurkiste
