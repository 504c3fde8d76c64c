#include <cstddef>
#include <filesystem>
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

}  // namespace
}  // namespace spurkiste
