#include <cerrno>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "base/Dateien.h"
#include "base/VorlaeufigeDatei.h"
#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace {

std::function<void()> vorDemTausch;  // what another program does in the last moment; called once
bool scheitertZurueck = false;       // the second exchange fails

}  // namespace

/// The exchange of two files, with somebody between our last look and the deed.
extern "C" int renameat2(int alterOrdner, const char* alt, int neuerOrdner, const char* neu, unsigned wie) noexcept {
    if (wie == RENAME_EXCHANGE && vorDemTausch) {
        std::exchange(vorDemTausch, {})();
    } else if (wie == RENAME_EXCHANGE && scheitertZurueck) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(::syscall(SYS_renameat2, alterOrdner, alt, neuerOrdner, neu, wie));
}

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

constexpr const char* kVorher = "<gpx><trk><trkseg><trkpt lat='1' lon='2'/></trkseg></trk></gpx>";
constexpr const char* kNachher = "<gpx><trk><type>cycling</type><trkseg><trkpt lat='1' lon='2'/></trkseg></trk></gpx>";

std::size_t dateienIn(const TempOrdner& ordner) {
    return dateien::liste(ordner.pfad()).size();
}

TEST(GpxSchreiber, replacesTheFileAndKeepsItsPermissionsAndLinks) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("a.gpx", kVorher);
    ::chmod(pfad.c_str(), 0400);
    fs::create_symlink("a.gpx", ordner.in("link.gpx"));
    EXPECT_EQ(GpxSchreiber::setzeSportart(GpxSportart::rad, ordner.in("link.gpx")).elemente, 1U);
    EXPECT_EQ(ordner.lies("a.gpx"), kNachher);
    EXPECT_TRUE(fs::is_symlink(ordner.in("link.gpx")));
    EXPECT_EQ(fs::status(pfad).permissions(), fs::perms::owner_read);
    EXPECT_EQ(dateienIn(ordner), 2U);
    EXPECT_EQ(GpxLeser::lese(pfad)->sportRoh, "cycling");
}

TEST(GpxSchreiber, beginsAgainOnTheBytesOfAnotherProgram) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("a.gpx", kVorher);
    int stoerungen = 1;
    const auto stoere = [&] {
        if (stoerungen > 0) {
            --stoerungen;
            ordner.schreibe("a.gpx", "<gpx><rte/></gpx>" + std::string(static_cast<std::size_t>(stoerungen), '\n'));
        }
    };
    EXPECT_EQ(GpxSchreiber::setzeSportart(GpxSportart::rad, pfad, stoere).elemente, 1U);
    EXPECT_EQ(ordner.lies("a.gpx"), "<gpx><rte><type>cycling</type></rte></gpx>");

    stoerungen = 100;
    EXPECT_THROW(GpxSchreiber::setzeSportart(GpxSportart::rad, pfad, stoere), std::runtime_error);
    EXPECT_EQ(stoerungen, 97);
    EXPECT_EQ(ordner.lies("a.gpx"), "<gpx><rte/></gpx>" + std::string(97, '\n'));

    // Gone, and put back as another file of the same size.
    const std::string neu = ordner.schreibe("b.gpx", kVorher);
    ordner.schreibe("a.gpx", kVorher);
    bool einmal = true;
    GpxSchreiber::setzeSportart(GpxSportart::rad, pfad, [&] {
        if (std::exchange(einmal, false)) {
            fs::rename(neu, pfad);
        }
    });
    EXPECT_EQ(ordner.lies("a.gpx"), kNachher);
    EXPECT_EQ(dateienIn(ordner), 1U);
}

TEST(GpxSchreiber, losesNothingThatIsWrittenInTheLastMoment) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("a.gpx", kVorher);
    const auto haengeAn = [&] { std::ofstream(pfad, std::ios::app) << "<!-- other -->"; };
    vorDemTausch = haengeAn;
    EXPECT_EQ(GpxSchreiber::setzeSportart(GpxSportart::rad, pfad).elemente, 1U);
    EXPECT_EQ(ordner.lies("a.gpx"), std::string(kNachher) + "<!-- other -->");
    EXPECT_EQ(dateienIn(ordner), 1U);

    // Whoever has it open may still write into what has lost its place.
    {
        std::ofstream anderer(pfad, std::ios::app);
        EXPECT_THROW(GpxSchreiber::setzeSportart(GpxSportart::ski, pfad), std::runtime_error);
        anderer << "<!-- late -->";
    }
    EXPECT_EQ(ordner.lies("a.gpx"), std::string(kNachher) + "<!-- other --><!-- late -->");
    EXPECT_EQ(dateienIn(ordner), 1U);

    vorDemTausch = [&] { fs::remove(pfad); };
    EXPECT_THROW(GpxSchreiber::setzeSportart(GpxSportart::ski, pfad), GpxSchreibausnahme);
    EXPECT_EQ(dateienIn(ordner), 0U);

    // As if killed before it is put back: the bytes are there, and nobody cleans them away.
    ordner.schreibe("a.gpx", kVorher);
    vorDemTausch = haengeAn;
    scheitertZurueck = true;
    EXPECT_THROW(GpxSchreiber::setzeSportart(GpxSportart::rad, pfad), std::system_error);
    scheitertZurueck = false;
    std::string dort;
    for (const std::string& name : dateien::liste(ordner.pfad())) {
        dort = ordner.lies(name) == std::string(kVorher) + "<!-- other -->" ? name : dort;
    }
    EXPECT_FALSE(dateien::istVorlaeufig(dort));
    EXPECT_NE(dateien::endung(dort), "gpx");
    EXPECT_EQ(ordner.lies("a.gpx"), kNachher);
    EXPECT_EQ(dateienIn(ordner), 2U);
}

TEST(GpxSchreiber, datesEachVersionApartAndTellsOfOtherNames) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("a.gpx", kNachher);
    fs::create_hard_link(pfad, ordner.in("b.gpx"));
    auto vorher = dateien::angaben(pfad)->geaendert;
    std::uint64_t andere = 1;
    for (const auto art : {GpxSportart::laufen, GpxSportart::rad, GpxSportart::laufen}) {
        EXPECT_EQ(GpxSchreiber::setzeSportart(art, pfad).andereNamen, std::exchange(andere, 0));
        const auto jetzt = dateien::angaben(pfad)->geaendert;
        EXPECT_GE(jetzt.sekunden - vorher.sekunden, 1.0);
        vorher = jetzt;
    }
    EXPECT_EQ(ordner.lies("b.gpx"), kNachher);
}

TEST(GpxSchreiber, failsWholeWhereTheDiskOrTheRightsFail) {
    for (const auto& [ruf, fehler] : {std::pair{SYS_fsync, EIO}, std::pair{SYS_fchmod, EPERM}}) {
        const TempOrdner ordner;
        const std::string pfad = ordner.schreibe("a.gpx", kVorher);
        ::chmod(pfad.c_str(), 0440);
        EXPECT_TRUE(imKind([&, ruf = ruf, fehler = fehler] {
            try {
                return verweigere(ruf, fehler) && GpxSchreiber::setzeSportart(GpxSportart::rad, pfad).elemente == 0;
            } catch (const std::system_error& ausnahme) {
                return ausnahme.code().value() == fehler;
            }
        }));
        EXPECT_EQ(ordner.lies("a.gpx"), kVorher);
        EXPECT_EQ(dateienIn(ordner), 1U);
    }
}

TEST(GpxSchreiber, takesAWritingBackToTheByteAndDoesItAgain) {
    const TempOrdner ordner;
    const std::string viele =
        "<gpx>\r\n<trk><name>\xC3\xA4</name><type> MTB\n</type></trk><!-- x --><rte/>"
        "<trk><type/></trk><trk a='1'/><trk><type>cycling</type></trk></gpx>  \n";
    for (const std::string& vorher : {std::string(kVorher), viele, std::string(kNachher)}) {
        const std::string pfad = ordner.schreibe("a.gpx", vorher);
        const auto umkehr = GpxSchreiber::setzeSportart(GpxSportart::rad, pfad).umkehr;
        const std::string nachher = ordner.lies("a.gpx");
        EXPECT_EQ(umkehr.spleisse.empty(), vorher == nachher);
        const auto wieder = GpxSchreiber::kehreUm(umkehr, pfad);
        ASSERT_TRUE(wieder.has_value());
        EXPECT_EQ(ordner.lies("a.gpx"), vorher);
        EXPECT_EQ(wieder->vorher, umkehr.stand);
        ASSERT_TRUE(GpxSchreiber::kehreUm(*wieder, pfad).has_value());
        EXPECT_EQ(ordner.lies("a.gpx"), nachher);
    }

    // Behind a link, and not while another program may write into what would lose its place.
    const std::string pfad = ordner.schreibe("a.gpx", kVorher);
    const std::string link = ordner.in("link.gpx");
    fs::create_symlink("a.gpx", link);
    const auto umkehr = GpxSchreiber::setzeSportart(GpxSportart::rad, link).umkehr;
    {
        const std::ofstream anderer(pfad, std::ios::app);
        EXPECT_THROW((void)GpxSchreiber::kehreUm(umkehr, link), std::runtime_error);
        EXPECT_EQ(ordner.lies("a.gpx"), kNachher);
    }
    EXPECT_TRUE(GpxSchreiber::kehreUm(umkehr, link).has_value());
    EXPECT_EQ(ordner.lies("a.gpx"), kVorher);
    EXPECT_TRUE(fs::is_symlink(link));
    EXPECT_EQ(dateienIn(ordner), 2U);
}

TEST(GpxSchreiber, leavesAFileAloneThatHasChangedSinceItWasWritten) {
    const TempOrdner ordner;
    const std::string pfad = ordner.in("a.gpx");
    std::string anders = kNachher;
    anders[anders.find('2')] = '3';
    const auto bleibt = [&](const std::string& inhalt, const auto& mitten) {
        ordner.schreibe("a.gpx", kVorher);
        const auto umkehr = GpxSchreiber::setzeSportart(GpxSportart::rad, pfad).umkehr;
        const auto zeit = fs::last_write_time(pfad);
        const bool vorher = mitten(zeit);
        const auto nun = [&] {
            if (!vorher) {
                ordner.schreibe("a.gpx", inhalt);
            }
        };
        EXPECT_EQ(GpxSchreiber::kehreUm(umkehr, pfad, nun), std::nullopt);
        EXPECT_EQ(ordner.lies("a.gpx"), inhalt);
        EXPECT_EQ(dateienIn(ordner), 1U);
    };
    const auto ueberschreibe = [&](const std::string& inhalt) {
        std::ofstream(pfad, std::ios::in | std::ios::out | std::ios::binary) << inhalt;  // the same file, as long
    };
    bleibt(anders, [&](auto zeit) {  // by a program that puts the date back
        ueberschreibe(anders);
        fs::last_write_time(pfad, zeit);
        return true;
    });
    bleibt(kNachher, [&](auto zeit) {
        fs::last_write_time(pfad, zeit + std::chrono::seconds(1));
        return true;
    });
    bleibt("anders", [](auto /*zeit*/) { return false; });  // between reading and writing
}

}  // namespace
}  // namespace spurkiste
