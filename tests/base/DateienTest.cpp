#include <array>
#include <filesystem>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"

namespace spurkiste {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

TEST(DateienTest, NurRegulaereDateienLassenSichLesen) {
    const TempOrdner ordner;
    const std::string datei = ordner.schreibe("a.gpx", "12345");
    fs::create_symlink(datei, ordner.in("link.gpx"));
    fs::create_symlink(ordner.in("fehlt"), ordner.in("tot.gpx"));
    fs::create_symlink(ordner.in("kreis.gpx"), ordner.in("kreis.gpx"));
    fs::create_symlink("/dev/zero", ordner.in("null.gpx"));
    fs::create_directory(ordner.in("ordner.gpx"));
    ASSERT_EQ(::mkfifo(ordner.in("fifo.gpx").c_str(), 0600), 0);

    for (const std::string& pfad : {datei, ordner.in("link.gpx")}) {
        const auto angaben = dateien::angaben(pfad);
        ASSERT_TRUE(angaben.has_value()) << pfad;
        EXPECT_EQ(angaben->groesse, 5);
        EXPECT_EQ(dateien::liesGanz(pfad), "12345");
    }
    for (const char* name : {"tot.gpx", "kreis.gpx", "null.gpx", "ordner.gpx", "fifo.gpx", "fehlt.gpx", "a.gpx/b"}) {
        EXPECT_FALSE(dateien::angaben(ordner.in(name)).has_value()) << name;
        EXPECT_FALSE(dateien::Leser::oeffne(ordner.in(name)).has_value()) << name;
        EXPECT_FALSE(dateien::liesGanz(ordner.in(name)).has_value()) << name;
    }
    EXPECT_TRUE(dateien::gibtEs(ordner.in("ordner.gpx")));
    EXPECT_TRUE(dateien::gibtEs(ordner.in("fifo.gpx")));
    EXPECT_FALSE(dateien::gibtEs(ordner.in("tot.gpx")));
}

TEST(DateienTest, LiestInStueckenUndNieUnbegrenzt) {
    const TempOrdner ordner;
    auto leser = dateien::Leser::oeffne(ordner.schreibe("a", std::string(10, 'x') + "y"));
    ASSERT_TRUE(leser.has_value());
    dateien::Leser umgezogen = std::move(*leser);
    std::array<char, 10> puffer{};
    EXPECT_EQ(umgezogen.groesse(), 11U);
    EXPECT_EQ(umgezogen.lies(puffer), 10U);
    EXPECT_EQ(umgezogen.lies(puffer), 1U);
    EXPECT_EQ(puffer[0], 'y');
    EXPECT_EQ(umgezogen.lies(puffer), 0U);

    fs::resize_file(ordner.schreibe("loch", ""), std::uintmax_t{1} << 40U);
    EXPECT_FALSE(dateien::liesGanz(ordner.in("loch")).has_value()) << "a terabyte of nothing";
    EXPECT_EQ(dateien::liesGanz(ordner.schreibe("leer", "")), "");
}

TEST(DateienTest, AngabenSindAufDieNanosekundeDesSystems) {
    const TempOrdner ordner;
    const std::string datei = ordner.schreibe("a", "");
    const std::array<timespec, 2> zeiten = {timespec{0, UTIME_OMIT}, timespec{978307200 + 86400, 250000000}};
    ASSERT_EQ(::utimensat(AT_FDCWD, datei.c_str(), zeiten.data(), 0), 0);
    EXPECT_EQ(dateien::angaben(datei).value().geaendert.sekunden, 86400.25);
}

TEST(DateienTest, ListetAlleNamen) {
    const TempOrdner ordner;
    EXPECT_THAT(dateien::liste(ordner.pfad()), ElementsAre());
    for (const char* name : {".versteckt", "Z\xFCrich.gpx", "a\nb", "日.gpx"}) {
        ordner.schreibe(name, "");
    }
    fs::create_directory(ordner.in("unten"));
    ordner.schreibe("unten/tief", "");
    EXPECT_THAT(dateien::liste(ordner.pfad()),
                UnorderedElementsAre(".versteckt", "Z\xFCrich.gpx", "a\nb", "日.gpx", "unten"));
    EXPECT_THROW(static_cast<void>(dateien::liste(ordner.in("fehlt"))), std::system_error);
    EXPECT_THROW(static_cast<void>(dateien::liste(ordner.in(".versteckt"))), std::system_error);
}

TEST(DateienTest, ErstelltOrdnerOderSagtWarumNicht) {
    const TempOrdner ordner;
    const std::string tief = ordner.in("a/b/c");
    dateien::erstelleOrdner(tief);
    dateien::erstelleOrdner(tief + "/");
    EXPECT_TRUE(fs::is_directory(tief));
    fs::create_directory_symlink(tief, ordner.in("link"));
    dateien::erstelleOrdner(ordner.in("link"));
    ordner.schreibe("datei", "");
    fs::create_symlink(ordner.in("fehlt"), ordner.in("tot"));
    for (const char* name : {"datei", "datei/unten", "tot"}) {
        EXPECT_THROW(dateien::erstelleOrdner(ordner.in(name)), std::system_error) << name;
    }
}

TEST(DateienTest, ZerlegtNamenUndPfade) {
    const std::vector<std::array<std::string_view, 3>> namen = {
        {"a.gpx", "gpx", "a"}, {"a.b.GPX", "GPX", "a.b"}, {".gpx", "", ".gpx"}, {".a.gpx", "gpx", ".a"},
        {"a", "", "a"},        {"a.", "", "a"},           {"..", "", "."},      {"..gpx", "gpx", "."},
        {"", "", ""}};
    for (const auto& [name, endung, ohne] : namen) {
        EXPECT_EQ(dateien::endung(name), endung) << name;
        EXPECT_EQ(dateien::ohneEndung(name), ohne) << name;
    }
    EXPECT_EQ(dateien::letzterTeil("/a/b.gpx"), "b.gpx");
    EXPECT_EQ(dateien::letzterTeil("b.gpx"), "b.gpx");
    EXPECT_EQ(dateien::letzterTeil("/a/"), "");

    const std::string hier = fs::current_path().native();
    const std::vector<std::pair<std::string, std::string>> pfade = {
        {"/", "/"},  {"//a//b/", "/a/b"},    {"/a/./b/.", "/a/b"},   {"/a/../b", "/a/../b"},
        {".", hier}, {"x/y", hier + "/x/y"}, {"./..", hier + "/.."}, {"/a/..b/.c", "/a/..b/.c"}};
    for (const auto& [pfad, absolut] : pfade) {
        EXPECT_EQ(dateien::absolut(pfad), absolut) << pfad;
    }
    EXPECT_THROW(static_cast<void>(dateien::absolut("")), std::system_error);
}

TEST(AtomareDateiTest, ErscheintGanzOderGarNicht) {
    const TempOrdner ordner;
    const std::string ziel = ordner.schreibe("ziel", "alt");
    {
        dateien::AtomareDatei datei(ziel);
        datei.schreibe("halb");
    }
    EXPECT_EQ(ordner.lies("ziel"), "alt");
    EXPECT_THAT(dateien::liste(ordner.pfad()), ElementsAre("ziel"));
    {
        dateien::AtomareDatei datei(ziel);
        datei.schreibe("ganz ");
        datei.schreibe("");
        datei.schreibe("neu");
        datei.sichere();
        EXPECT_EQ(ordner.lies("ziel"), "alt") << "not before it is taken over";
        datei.uebernimm();
        EXPECT_EQ(ordner.lies("ziel"), "ganz neu");
    }
    EXPECT_EQ(ordner.lies("ziel"), "ganz neu");
    EXPECT_THAT(dateien::liste(ordner.pfad()), ElementsAre("ziel"));
}

TEST(AtomareDateiTest, BehaeltRechteUndVerweisUndErlaubtLangeNamen) {
    const TempOrdner ordner;
    const std::string ziel = ordner.schreibe(std::string(255, 'n'), "alt");
    fs::permissions(ziel, fs::perms::owner_read | fs::perms::group_read);
    fs::create_symlink(ziel, ordner.in("link"));
    {
        dateien::AtomareDatei datei(ordner.in("link"));
        datei.schreibe("neu");
        datei.uebernimm();
    }
    EXPECT_TRUE(fs::is_symlink(ordner.in("link")));
    EXPECT_EQ(ordner.lies(std::string(255, 'n')), "neu");
    EXPECT_EQ(fs::status(ziel).permissions(), fs::perms::owner_read | fs::perms::group_read);
}

TEST(AtomareDateiTest, ErscheintAuchWoEsKeinProcGibt) {
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can leave /proc behind";
    }
    const TempOrdner ordner;
    ordner.schreibe("ziel", "alt");
    EXPECT_TRUE(imKind([&] {
        if (::chroot(ordner.pfad().c_str()) != 0 || ::chdir("/") != 0) {
            return false;
        }
        dateien::AtomareDatei datei("/ziel");
        datei.schreibe("neu");
        datei.uebernimm();
        return true;
    }));
    EXPECT_EQ(ordner.lies("ziel"), "neu");
    EXPECT_THAT(dateien::liste(ordner.pfad()), ElementsAre("ziel"));
}

TEST(AtomareDateiTest, WasEinAbbruchLiegenLiessWirdAufgeraeumt) {
    const TempOrdner ordner;
    const std::string schreibbar = ordner.schreibe(".spurkiste-1.tmp", "halb");
    const std::string nurLesbar = ordner.schreibe(".spurkiste-2.tmp", "halb");
    const std::string inArbeit = ordner.schreibe(".spurkiste-3.tmp", "halb");
    fs::permissions(schreibbar, static_cast<fs::perms>(0666));
    fs::permissions(nurLesbar, static_cast<fs::perms>(0444));
    fs::permissions(inArbeit, static_cast<fs::perms>(0444));
    const int nummer = ::open(inArbeit.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(::flock(nummer, LOCK_EX), 0);
    {
        const Rechte alle(ordner.pfad(), fs::perms::all);
        for (const std::string& pfad : {schreibbar, nurLesbar, inArbeit}) {
            dateien::raeumeAuf(pfad);
        }
    }
    EXPECT_THAT(dateien::liste(ordner.pfad()), testing::ElementsAre(".spurkiste-3.tmp"));
    ::close(nummer);
}

TEST(AtomareDateiTest, FehlerLassenDasAlteStehenUndNichtsZurueck) {
    const TempOrdner ordner;
    const std::string ziel = ordner.schreibe("ziel", "alt");
    EXPECT_THROW(dateien::AtomareDatei(ordner.in("fehlt/ziel")), std::system_error);
    EXPECT_THROW(dateien::AtomareDatei(ordner.in("ziel/ziel")), std::system_error);

    fs::create_directory(ordner.in("ordner"));
    {
        dateien::AtomareDatei datei(ordner.in("ordner"));
        EXPECT_THROW(datei.uebernimm(), std::system_error);
    }
    {
        dateien::AtomareDatei datei(ziel);
        const VollePlatte platte(1000);
        EXPECT_THROW(datei.schreibe(std::string(4000, 'x')), std::system_error);
    }
    EXPECT_EQ(ordner.lies("ziel"), "alt");
    EXPECT_THAT(dateien::liste(ordner.pfad()), UnorderedElementsAre("ziel", "ordner"));
}

}  // namespace spurkiste
