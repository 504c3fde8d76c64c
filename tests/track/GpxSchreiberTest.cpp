#include <chrono>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/Dateien.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

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
