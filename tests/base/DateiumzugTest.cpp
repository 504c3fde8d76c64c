#include <array>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <latch>
#include <optional>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"
#include "base/Kopie.h"
#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;
using testing::UnorderedElementsAre;

/// The number of the error that something ends with; 0 without one.
template <typename F>
int fehlerVon(F tue) {
    try {
        tue();
    } catch (const std::system_error& fehler) {
        return fehler.code().value();
    }
    return 0;
}

int verschiebe(const std::string& alt, const std::string& neu) {
    return fehlerVon([&] { dateien::verschiebe(alt, neu); });
}

/// Every case on file systems that can do everything, and on those that can do less.
class DateiumzugTest : public testing::TestWithParam<Faehigkeiten> {
  protected:
    TempOrdner ordner;

    /// Runs the checks on such a file system.
    template <typename F>
    static void mitIhnen(F pruefe) {
        if (GetParam() == Faehigkeiten::alle) {
            pruefe();
            return;
        }
        EXPECT_TRUE(imKind([&] {
            if (!beschraenke(GetParam())) {
                return false;
            }
            pruefe();
            return !HasFailure();
        }));
    }

    [[nodiscard]] std::vector<std::string> namen() const { return dateien::liste(ordner.pfad()); }
};

TEST_P(DateiumzugTest, movesAFileToAFreePath) {
    mitIhnen([&] {
        const std::string lang = std::string(251, 'x') + ".gpx";
        ordner.schreibe("a.gpx", "A");
        EXPECT_EQ(verschiebe(ordner.in("a.gpx"), ordner.in("A.gpx")), 0);
        EXPECT_EQ(verschiebe(ordner.in("A.gpx"), ordner.in(lang)), 0);
        EXPECT_EQ(ordner.lies(lang), "A");
        fs::create_symlink("ins Leere", ordner.in("link"));
        EXPECT_EQ(verschiebe(ordner.in("link"), ordner.in("verweis")), 0);
        EXPECT_EQ(fs::read_symlink(ordner.in("verweis")), "ins Leere");
        EXPECT_THAT(namen(), UnorderedElementsAre(lang, "verweis"));
    });
}

TEST_P(DateiumzugTest, neverOverwritesWhateverIsThere) {
    mitIhnen([&] {
        const std::string alt = ordner.schreibe("alt", "A");
        ordner.schreibe("datei", "B");
        fs::create_directory(ordner.in("ordner"));
        fs::create_symlink("ins Leere", ordner.in("link"));
        ASSERT_EQ(::mkfifo(ordner.in("rohr").c_str(), 0600), 0);
        for (const char* name : {"datei", "ordner", "link", "rohr", "alt"}) {
            EXPECT_EQ(verschiebe(alt, ordner.in(name)), EEXIST) << name;
        }
        EXPECT_EQ(ordner.lies("alt"), "A");
        EXPECT_EQ(ordner.lies("datei"), "B");
        EXPECT_EQ(fs::read_symlink(ordner.in("link")), "ins Leere");
        EXPECT_THAT(namen(), UnorderedElementsAre("alt", "datei", "ordner", "link", "rohr"));
    });
}

TEST_P(DateiumzugTest, keepsBothNamesOfOneFile) {
    const std::string alt = ordner.schreibe("tour.gpx", "A");
    fs::create_hard_link(alt, ordner.in("Tour.gpx"));
    mitIhnen([&] { EXPECT_EQ(verschiebe(alt, ordner.in("Tour.gpx")), EEXIST); });
    EXPECT_THAT(namen(), UnorderedElementsAre("tour.gpx", "Tour.gpx"));
}

TEST_P(DateiumzugTest, saysWhyAMoveIsImpossibleAndChangesNothing) {
    const std::string alt = ordner.schreibe("alt", "A");
    mitIhnen([&] {
        EXPECT_EQ(verschiebe(ordner.in("fehlt"), ordner.in("neu")), ENOENT);
        EXPECT_EQ(verschiebe(alt, ordner.in("fehlt/neu")), ENOENT);
        EXPECT_EQ(verschiebe(alt, ordner.in(std::string(256, 'x'))), ENAMETOOLONG);
        EXPECT_EQ(verschiebe(alt, ordner.in(std::string("neu\0er", 6))), EINVAL);
        const Rechte rechte(ordner.pfad(), kNurLesen);
        EXPECT_EQ(verschiebe(alt, ordner.in("neu")), EACCES);
    });
    EXPECT_THAT(namen(), UnorderedElementsAre("alt"));
    EXPECT_EQ(ordner.lies("alt"), "A");
}

TEST_P(DateiumzugTest, letsExactlyOneOfManyHaveAPath) {
    mitIhnen([&] {
        constexpr int laeufer = 4;
        for (int runde = 0; runde < 25; ++runde) {
            const TempOrdner bahn;
            std::vector<std::string> quellen;
            for (int i = 0; i < laeufer; ++i) {
                quellen.push_back(bahn.schreibe(std::to_string(i), std::to_string(i)));
            }
            std::latch bereit(laeufer);
            std::atomic<int> sieger = 0;
            {
                std::vector<std::jthread> faeden;
                for (int i = 0; i < laeufer; ++i) {
                    faeden.emplace_back([&, i] {
                        std::optional<dateien::Kopie> kopie;
                        if (i % 2 == 0) {
                            kopie.emplace(quellen[static_cast<std::size_t>(i)], bahn.pfad());
                        }
                        bereit.arrive_and_wait();
                        const bool gewonnen =
                            kopie ? kopie->stelleHin(bahn.in("ziel"))
                                  : verschiebe(quellen[static_cast<std::size_t>(i)], bahn.in("ziel")) == 0;
                        sieger += gewonnen ? 1 + i * 100 : 0;
                    });
                }
            }
            ASSERT_EQ(sieger % 100, 1);
            const int wer = sieger / 100;
            EXPECT_EQ(bahn.lies("ziel"), std::to_string(wer));
            for (int i = 0; i < laeufer; ++i) {
                EXPECT_EQ(fs::exists(quellen[static_cast<std::size_t>(i)]), i != wer || i % 2 == 0);
            }
            EXPECT_EQ(dateien::liste(bahn.pfad()).size(), static_cast<std::size_t>(laeufer + (wer + 1) % 2));
        }
    });
}

TEST_P(DateiumzugTest, copiesTheBytesTheDateAndTheRightsThatMatter) {
    const std::string viel(300'000, 'v');
    const std::string quelle = ordner.schreibe("q.gpx", viel);
    fs::create_symlink("q.gpx", ordner.in("link.gpx"));
    ordner.schreibe("leer.gpx", "");
    const std::array<timespec, 2> zeiten{timespec{1, 2}, timespec{1'000'000'000, 123'456'000}};
    ASSERT_EQ(::utimensat(AT_FDCWD, quelle.c_str(), zeiten.data(), 0), 0);
    fs::permissions(quelle, fs::perms(0555));
    fs::create_directory(ordner.in("ziel"));
    mitIhnen([&] {
        for (const char* name : {"q.gpx", "link.gpx", "leer.gpx"}) {
            dateien::Kopie kopie(ordner.in(name), ordner.in("ziel"));
            EXPECT_TRUE(kopie.stelleHin(ordner.in("ziel/") + name));
        }
    });
    EXPECT_THAT(dateien::liste(ordner.in("ziel")), UnorderedElementsAre("q.gpx", "link.gpx", "leer.gpx"));
    EXPECT_EQ(ordner.lies("ziel/leer.gpx"), "");
    for (const char* name : {"ziel/q.gpx", "ziel/link.gpx"}) {
        EXPECT_EQ(ordner.lies(name), viel);
        const auto stand = dateien::stand(ordner.in(name));
        ASSERT_TRUE(stand.has_value());
        EXPECT_EQ(stand->sekunden, 1'000'000'000);
        EXPECT_EQ(stand->nanosekunden, 123'456'000);
        const auto rechte = fs::symlink_status(ordner.in(name));
        EXPECT_EQ(rechte.type(), fs::file_type::regular);
        EXPECT_EQ(rechte.permissions() & ~fs::perms(0044), fs::perms(0600));
    }
    EXPECT_EQ(fs::status(quelle).permissions(), fs::perms(0555));
}

TEST_P(DateiumzugTest, aCopyTriesOneNameAfterTheOtherAndVanishesWithoutAny) {
    const std::string quelle = ordner.schreibe("q", "neu");
    fs::create_directory(ordner.in("ziel"));
    ordner.schreibe("ziel/a", "alt");
    fs::create_symlink("ins Leere", ordner.in("ziel/b"));
    fs::create_directory(ordner.in("ziel/c"));
    mitIhnen([&] {
        {
            dateien::Kopie kopie(quelle, ordner.in("ziel"));
            for (const char* name : {"ziel/a", "ziel/b", "ziel/c"}) {
                EXPECT_FALSE(kopie.stelleHin(ordner.in(name))) << name;
            }
            EXPECT_EQ(fehlerVon([&] { (void)kopie.stelleHin(ordner.in("ziel/" + std::string(256, 'x'))); }),
                      ENAMETOOLONG);
            EXPECT_TRUE(kopie.stelleHin(ordner.in("ziel/d")));
        }
        const dateien::Kopie ohnePlatz(quelle, ordner.in("ziel"));
    });
    EXPECT_THAT(dateien::liste(ordner.in("ziel")), UnorderedElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(ordner.lies("ziel/a"), "alt");
    EXPECT_EQ(ordner.lies("ziel/d"), "neu");
}

TEST_P(DateiumzugTest, aCopyOnItsWayIsNotCleanedAway) {
    const std::string quelle = ordner.schreibe("q", "neu");
    fs::create_directory(ordner.in("ziel"));
    mitIhnen([&] {
        dateien::Kopie kopie(quelle, ordner.in("ziel"));
        for (const std::string& name : dateien::liste(ordner.in("ziel"))) {
            EXPECT_TRUE(dateien::istVorlaeufig(name)) << name;  // so that a killed program's is cleaned away
            dateien::raeumeAuf(ordner.in("ziel/" + name));
        }
        EXPECT_TRUE(kopie.stelleHin(ordner.in("ziel/da")));
    });
    EXPECT_THAT(dateien::liste(ordner.in("ziel")), UnorderedElementsAre("da"));
    EXPECT_EQ(ordner.lies("ziel/da"), "neu");
}

TEST_P(DateiumzugTest, refusesSourcesThatAreNoFilesWithoutWaiting) {
    struct Fall {
        std::string name;
        int fehler;
    };
    const std::vector<Fall> faelle = {{"ordner", EISDIR}, {"rohr", EINVAL}, {"geraet", EINVAL},
                                      {"fehlt", ENOENT},  {"kreis", ELOOP}, {std::string("q\0", 2), EINVAL}};
    ordner.schreibe("q", "x");
    fs::create_directory(ordner.in("ordner"));
    ASSERT_EQ(::mkfifo(ordner.in("rohr").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", ordner.in("geraet"));
    fs::create_symlink("kreis", ordner.in("kreis"));
    fs::create_directory(ordner.in("ziel"));
    mitIhnen([&] {
        for (const Fall& fall : faelle) {
            EXPECT_EQ(fehlerVon([&] { const dateien::Kopie kopie(ordner.in(fall.name), ordner.in("ziel")); }),
                      fall.fehler)
                << fall.name;
        }
        const auto kopiere = [&] { const dateien::Kopie kopie(ordner.in("q"), ordner.in("ziel")); };
        {
            const Rechte quelle(ordner.in("q"), fs::perms::none);
            EXPECT_EQ(fehlerVon(kopiere), EACCES);
        }
        const Rechte ziel(ordner.in("ziel"), kNurLesen);
        EXPECT_EQ(fehlerVon(kopiere), EACCES);
    });
    EXPECT_TRUE(fs::is_empty(ordner.in("ziel")));
}

TEST_P(DateiumzugTest, aFullDiskLeavesNoPartOfACopy) {
    fs::create_directory(ordner.in("ziel"));
    for (const std::size_t groesse : {1001U, 200'000U}) {
        const std::string quelle = ordner.schreibe("q", std::string(groesse, 'x'));
        mitIhnen([&] {
            int fehler = 0;
            {
                const VollePlatte platte(1000);
                fehler = fehlerVon([&] { const dateien::Kopie kopie(quelle, ordner.in("ziel")); });
            }
            EXPECT_EQ(fehler, EFBIG);
        });
        EXPECT_TRUE(fs::is_empty(ordner.in("ziel")));
    }
}

TEST_P(DateiumzugTest, aCopyThatIsNotOnTheDiskGetsNoName) {
    const std::string quelle = ordner.schreibe("q", "neu");
    fs::create_directory(ordner.in("ziel"));
    EXPECT_TRUE(imKind([&] {
        return beschraenke(GetParam()) && verweigere(SYS_fsync, EIO) &&
               fehlerVon([&] {
                   dateien::Kopie kopie(quelle, ordner.in("ziel"));
                   (void)kopie.stelleHin(ordner.in("ziel/q"));
               }) == EIO;
    }));
    EXPECT_TRUE(fs::is_empty(ordner.in("ziel")));
}

std::string nameVon(const testing::TestParamInfo<Faehigkeiten>& fall) {
    const std::array worte{"AllesKoennend", "OhneTausch", "OhneZweiteNamen"};
    return worte.at(static_cast<std::size_t>(fall.param));
}

INSTANTIATE_TEST_SUITE_P(Dateisystem, DateiumzugTest,
                         testing::Values(Faehigkeiten::alle, Faehigkeiten::ohneTausch, Faehigkeiten::ohneZweiteNamen),
                         nameVon);

}  // namespace
}  // namespace spurkiste
