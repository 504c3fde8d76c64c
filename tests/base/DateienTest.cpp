#include <algorithm>
#include <array>
#include <cerrno>
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
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "base/Dateirechte.h"
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

TEST(AtomareDateiTest, ErsetztEinenVerweisSelbstUndErlaubtLangeNamen) {
    const TempOrdner ordner;
    const std::string fremd = ordner.schreibe("fremd", "alt");
    const std::string ziel = ordner.in(std::string(255, 'n'));
    fs::create_symlink(fremd, ziel);
    {
        dateien::AtomareDatei datei(ziel);
        datei.schreibe("neu");
        datei.uebernimm();
    }
    EXPECT_EQ(ordner.lies("fremd"), "alt");
    EXPECT_EQ(fs::symlink_status(ziel).type(), fs::file_type::regular);
    EXPECT_EQ(fs::status(ziel).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(ordner.lies(std::string(255, 'n')), "neu");
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

TEST(AtomareDateiTest, WasNichtGesichertIstWirdGemeldetUndLaesstNichtsZurueck) {
    struct Fall {
        const char* name;
        long ruf;
        Faehigkeiten faehigkeiten;
        bool scheitert;
    };
    for (const Fall& fall : {Fall{"flush", SYS_fsync, Faehigkeiten::alle, true},
                             Fall{"state of a temporary file", SYS_newfstatat, Faehigkeiten::ohneTausch, true},
                             Fall{"close after the deed", SYS_close, Faehigkeiten::alle, false},
                             Fall{"rights", SYS_fchmod, Faehigkeiten::alle, false}}) {
        const TempOrdner ordner;
        const std::string ziel = ordner.schreibe("ziel", "alt");
        fs::permissions(ziel, static_cast<fs::perms>(0664));
        EXPECT_TRUE(imKind([&] {
            const dateien::Dateinummer altes(ziel, O_RDONLY);
            if (!beschraenke(fall.faehigkeiten) || !verweigere(fall.ruf, EIO)) {
                return false;
            }
            try {
                dateien::AtomareDatei datei(ziel);
                datei.schreibe("neu");
                (void)dateien::uebernimmRechte(altes.wert(), datei.nummer(), dateien::kLesenUndSchreiben);
                datei.sichere();
                datei.uebernimm();
                return !fall.scheitert;
            } catch (const std::system_error& fehler) {
                return fall.scheitert && fehler.code().value() == EIO;
            }
        })) << fall.name;
        EXPECT_EQ(ordner.lies("ziel"), fall.scheitert ? "alt" : "neu") << fall.name;
        EXPECT_THAT(dateien::liste(ordner.pfad()), ElementsAre("ziel")) << fall.name;
        const auto rechte = static_cast<unsigned>(fs::status(ziel).permissions());
        EXPECT_EQ(rechte & ~0664U, 0U) << fall.name;
    }
}

/// The bytes of an access list: the owner's rights, user 1's, the group's, the mask and everybody's.
std::string zugriffsliste(char eigentuemer, char einer, char gruppe, char alle) {
    std::string liste{2, 0, 0, 0};
    const auto haengeAn = [&](char wer, char rechte, bool nummer) {
        liste += std::string{wer, 0, rechte, 0} + (nummer ? std::string{1, 0, 0, 0} : std::string(4, '\xff'));
    };
    haengeAn(1, eigentuemer, false);
    haengeAn(2, einer, true);
    haengeAn(4, gruppe, false);
    haengeAn(16, einer, false);
    haengeAn(32, alle, false);
    return liste;
}

TEST(DateirechteTest, GehenMitUndWerdenNieWeiter) {
    constexpr const char* merkmal = "system.posix_acl_access";
    const TempOrdner ordner;
    const std::string von = ordner.schreibe("von", "");
    const dateien::Dateinummer quelle(von, O_RDONLY);
    const auto rechteNach = [&](mode_t rechte, mode_t hoechstens) {
        const std::string pfad = ordner.in("nach");
        fs::remove(pfad);
        const dateien::Dateinummer ziel(pfad, O_WRONLY | O_CREAT, 0600);
        EXPECT_EQ(::chmod(von.c_str(), rechte), 0);
        EXPECT_FALSE(dateien::uebernimmRechte(quelle.wert(), ziel.wert(), hoechstens));
        return ziel.zustand().st_mode & 07777U;
    };
    EXPECT_EQ(rechteNach(06755, 0777), 0755U);
    EXPECT_EQ(rechteNach(02775, dateien::kLesenUndSchreiben), 0664U);
    EXPECT_EQ(rechteNach(0400, 0777), 0400U);
    EXPECT_EQ(dateien::rechteEinerKopie(quelle.wert()), 0600U);

    const std::string liste = zugriffsliste(6, 6, 0, 0);
    if (::setxattr(von.c_str(), merkmal, liste.data(), liste.size(), 0) != 0) {
        GTEST_SKIP() << "no access lists here";
    }
    EXPECT_EQ(dateien::rechteEinerKopie(quelle.wert()), 0600U) << "the group may nothing, whatever the mask says";
    EXPECT_EQ(rechteNach(0660, 0777), 0660U);
    std::string neue(100, '\0');
    neue.resize(static_cast<std::size_t>(
        std::max<ssize_t>(0, ::getxattr(ordner.in("nach").c_str(), merkmal, neue.data(), neue.size()))));
    EXPECT_EQ(neue, liste);
    EXPECT_TRUE(imKind([&] { return verweigere(SYS_fsetxattr, ENOSPC) && rechteNach(0660, 0777) == 0600U; }));
    ASSERT_EQ(::removexattr(von.c_str(), merkmal), 0);

    // What the folder gives to its new files, a private one must not have.
    ASSERT_EQ(::setxattr(ordner.pfad().c_str(), "system.posix_acl_default", liste.data(), liste.size(), 0), 0);
    EXPECT_EQ(rechteNach(0640, 0777), 0640U);
    EXPECT_LT(::getxattr(ordner.in("nach").c_str(), merkmal, nullptr, 0), 0);

    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(von.c_str(), 1, 2), 0);
        EXPECT_EQ(rechteNach(0640, 0777), 0640U);
        struct stat zustand {};
        ASSERT_EQ(::stat(ordner.in("nach").c_str(), &zustand), 0);
        EXPECT_EQ(zustand.st_uid, 1U);
        EXPECT_EQ(zustand.st_gid, 2U);
        EXPECT_TRUE(imKind([&] { return verweigere(SYS_fchown, EPERM) && rechteNach(0640, 0777) == 0600U; }));
    }
}

}  // namespace spurkiste
