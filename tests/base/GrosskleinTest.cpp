// Moves where letter case makes no difference, as on memory cards: this program's calls are led there by its own ones
// of the same name.

#include <cerrno>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <strings.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"
#include "hilfe/TempOrdner.h"

namespace {

std::string egaler;    // the folder in which letter case makes no difference; empty: none
int zuege = 0;         // how many moves have been tried there
int scheitertAb = 0;   // the first one that the disk refuses
int scheitertBis = 0;  // the first one after those

/// What such a folder finds under a path: the name as it is written there, else the path itself.
std::string gefunden(const char* pfad) {
    const std::string gesucht = pfad;
    if (!egaler.empty() && spurkiste::dateien::ordnerVon(gesucht) == egaler) {
        for (const std::string& name : spurkiste::dateien::liste(egaler)) {
            if (::strcasecmp(name.c_str(), gesucht.c_str() + egaler.size()) == 0) {
                return egaler + name;
            }
        }
    }
    return gesucht;
}

}  // namespace

extern "C" {

int renameat2(int alterOrdner, const char* alt, int neuerOrdner, const char* neu, unsigned wie) noexcept {
    if (!egaler.empty() && zuege++ >= scheitertAb && zuege <= scheitertBis) {
        errno = EIO;
        return -1;
    }
    return static_cast<int>(
        ::syscall(SYS_renameat2, alterOrdner, gefunden(alt).c_str(), neuerOrdner, gefunden(neu).c_str(), wie));
}

int lstat(const char* pfad, struct stat* zustand) noexcept {
    return ::fstatat(AT_FDCWD, gefunden(pfad).c_str(), zustand, AT_SYMLINK_NOFOLLOW);
}

}  // extern "C"

namespace spurkiste {
namespace {

TEST(GrosskleinTest, changesOnlyTheCaseOfANameAndGoesBackWhenThatFails) {
    const TempOrdner ordner;
    const std::string alt = ordner.schreibe("runde.gpx", "R");
    ordner.schreibe("andere.gpx", "A");
    egaler = ordner.pfad() + "/";
    const auto verschiebe = [&](const std::string& nach, int ab, int bis) {
        zuege = 0;
        scheitertAb = ab;
        scheitertBis = bis;
        try {
            dateien::verschiebe(alt, ordner.in(nach));
        } catch (const std::system_error& fehler) {
            return fehler.code().value();
        }
        return 0;
    };
    const auto namen = [&] { return dateien::liste(ordner.pfad()); };
    EXPECT_EQ(verschiebe("Andere.gpx", 0, 0), EEXIST);
    EXPECT_EQ(verschiebe("Runde.gpx", 0, 0), 0);
    EXPECT_THAT(namen(), testing::UnorderedElementsAre("Runde.gpx", "andere.gpx"));
    for (const int scheitert : {0, 1, 2}) {  // the move itself, away, and to the new name
        EXPECT_EQ(verschiebe("RUNDE.gpx", scheitert, scheitert + 1), EIO);
        EXPECT_EQ(namen().size(), 2U);
        EXPECT_EQ(ordner.lies(scheitert < 2 ? "Runde.gpx" : "runde.gpx"), "R") << scheitert;
    }
    EXPECT_EQ(verschiebe("RUNDE.gpx", 2, 100), EIO);  // nor is there a way back: it stays whole, and a track
    egaler.clear();
    for (const std::string& name : namen()) {
        EXPECT_EQ(dateien::endung(name), "gpx");
        EXPECT_EQ(ordner.lies(name), name == "andere.gpx" ? "A" : "R");
    }
}

}  // namespace
}  // namespace spurkiste
