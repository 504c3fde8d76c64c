#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/ArbeiterPool.h"
#include "hilfe/Engpass.h"
#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

std::string gescheitert(const std::string& weshalb) {
    return "Sportart nicht gespeichert: " + weshalb;
}

class BibliothekSportartTest : public Bibliotheksaufbau {};

TEST_F(BibliothekSportartTest, writesTheSportAndShowsWhatTheFileSaysNow) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    bibliothek->benenneUm(erster(*bibliothek), "b");  // leaves a notice
    ASSERT_NE(bibliothek->hinweis().wert(), std::nullopt);
    const auto nachbar = bibliothek->eintraege().wert()[1];
    bool fertig = false;
    bibliothek->setzeSportart(GpxSportart::rad, erster(*bibliothek), [&] { fertig = true; });
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8));  // not on the main thread
    arbeiteAb();
    EXPECT_TRUE(fertig);
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8, "cycling"));
    EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    EXPECT_EQ(erster(*bibliothek).sportRoh, "cycling");
    EXPECT_EQ(erster(*bibliothek).startOrt, nachbar->startOrt);  // labelled with the others
    EXPECT_EQ(bibliothek->eintraege().wert()[1], nachbar);
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 0U);  // it is in the cache
}

TEST_F(BibliothekSportartTest, saysWhyTheSportIsNotWritten) {
    const std::string keinXml = "Die GPX-Datei ist kein lesbares XML.";
    const auto bibliothek = mitSpuren({"a.gpx"});
    const Eintrag vorher = bibliothek->eintraege().wert().front();
    const auto scheitert = [&](const std::string& hinweis, const auto& mitten) {
        bool fertig = false;
        bibliothek->setzeSportart(GpxSportart::rad, *vorher, [&] { fertig = true; });
        mitten();
        arbeiteAb();
        EXPECT_TRUE(fertig);
        EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(hinweis));
        EXPECT_EQ(bibliothek->eintraege().wert(), Bibliothek::Eintraege{vorher});
        EXPECT_EQ(dateien::liste(ordner.pfad()).size(), 2U);
    };
    scheitert(std::generic_category().message(EFBIG), [&] {
        const VollePlatte platte(40);
        schreiber.fuehreAlle();
    });
    scheitert(std::generic_category().message(EACCES), [&] {
        fs::permissions(ordner.in("a.gpx"), static_cast<fs::perms>(0644));
        const Rechte rechte(ordner.pfad(), kNurLesen);
        schreiber.fuehreAlle();
    });
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8));
    scheitert("Die GPX-Datei enthält weder Track noch Route.", [&] { ordner.schreibe("a.gpx", "<gpx/>"); });
    scheitert(keinXml, [&] { ordner.schreibe("a.gpx", "<gpx><trk>"); });
    EXPECT_EQ(ordner.lies("a.gpx"), "<gpx><trk>");
    scheitert(keinXml, [&] {
        fs::remove(ordner.in("a.gpx"));
        ASSERT_EQ(::mkfifo(ordner.in("a.gpx").c_str(), 0600), 0);
    });
    scheitert(keinXml, [&] {
        fs::remove(ordner.in("a.gpx"));
        fs::create_directory(ordner.in("a.gpx"));
    });
    fs::remove(ordner.in("a.gpx"));
    bibliothek->setzeSportart(GpxSportart::rad, *vorher);
    arbeiteAb();
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(keinXml));
    EXPECT_TRUE(imOrdner().empty());
}

TEST_F(BibliothekSportartTest, carriesOutSportChangesInTheOrderInWhichTheyWereAskedFor) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    const GpxMetadaten a = erster(*bibliothek);
    const GpxMetadaten b = *bibliothek->eintraege().wert()[1];
    bibliothek->setzeSportart(GpxSportart::rad, a);
    bibliothek->setzeSportart(GpxSportart::ski, b);
    bibliothek->setzeSportart(GpxSportart::wandern, a);  // by the record from before the first change
    schreiber.fuehre(0);
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8, "cycling"));
    schreiber.fuehreAlle();
    for (const auto& erwartet : {"cycling", "cycling", "hiking"}) {
        hauptfaden.fuehre(0);
        while (bibliothek->eintraege().wert().front()->pfad != a.pfad) {  // until it has settled
            hintergrund.fuehreAlle();
            hauptfaden.fuehre(hauptfaden.wartende() - 1);
        }
        EXPECT_EQ(erster(*bibliothek).sportRoh, erwartet);
        EXPECT_EQ(namen(*bibliothek), (Namen{"a.gpx", "b.gpx"}));
    }
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8, "hiking"));
    EXPECT_EQ(ordner.lies("b.gpx"), gpx(47, 8, std::string(GpxSportart(GpxSportart::ski).rawValue())));
}

TEST_F(BibliothekSportartTest, dropsTheOutcomeOfASportChangeThatALoadHasOvertaken) {
    // Before the load looks into the folder: the load sees the written file.
    auto bibliothek = mitSpuren({"a.gpx"});
    int fertige = 0;
    bibliothek->setzeSportart(GpxSportart::rad, erster(*bibliothek), [&] { ++fertige; });
    schreiber.fuehreAlle();
    bibliothek->lade();
    hauptfaden.fuehre(0);
    EXPECT_EQ(fertige, 1);
    EXPECT_EQ(erster(*bibliothek).sportRoh, std::nullopt);
    arbeiteAb();
    EXPECT_EQ(erster(*bibliothek).sportRoh, "cycling");

    // After that, but before it publishes what it has found: the file is read again.
    bibliothek->setzeSportart(GpxSportart::mountainbike, erster(*bibliothek), [&] { ++fertige; });
    bibliothek->lade();
    hintergrund.fuehreAlle();
    schreiber.fuehreAlle();
    hauptfaden.fuehre(1);
    hauptfaden.fuehre(0);
    arbeiteAb();
    EXPECT_EQ(erster(*bibliothek).sportRoh, "mountain_biking");

    // Later: the record stays until the next load, and so does the notice.
    bibliothek->setzeSportart(GpxSportart::ski, erster(*bibliothek), [&] { ++fertige; });
    bibliothek->lade();
    lasseNachsehen();
    bibliothek->importiere({ordner.in("fehlt/x.gpx")});
    arbeiteAb();
    EXPECT_EQ(fertige, 3);
    EXPECT_EQ(erster(*bibliothek).sportRoh, "mountain_biking");
    EXPECT_NE(bibliothek->hinweis().wert(), std::nullopt);
    bibliothek->lade();
    arbeiteAb();
    EXPECT_EQ(erster(*bibliothek).sportRoh, GpxSportart(GpxSportart::ski).rawValue());

    // A failure is dropped as well, and so is everything of another folder.
    const TempOrdner anderer;
    for (const bool laden : {true, false}) {
        const GpxMetadaten eintrag = erster(*bibliothek);
        bibliothek->setzeSportart(GpxSportart::rad, eintrag, [&] { ++fertige; });
        if (laden) {
            bibliothek->lade();
        } else {
            bibliothek->wechsleOrdner(anderer.pfad());
        }
        const std::string davor = ordner.lies("a.gpx");
        ordner.schreibe("a.gpx", "kaputt");
        schreiber.fuehreAlle();
        ordner.schreibe("a.gpx", davor);
        arbeiteAb();
        EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
        EXPECT_EQ(namen(*bibliothek).size(), laden ? 1U : 0U);
    }
    EXPECT_EQ(fertige, 5);
}

TEST_F(BibliothekSportartTest, finishesWhatIsToBeWrittenBeforeTheProgramEnds) {
    auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    {
        ArbeiterPool faden(1, ArbeiterPool::AmEnde::kommtDran);
        anschluesse.schreiber = &faden;
        bibliothek = geladen();
        for (const Eintrag& eintrag : bibliothek->eintraege().wert()) {
            bibliothek->setzeSportart(GpxSportart::ski, *eintrag);
            bibliothek->setzeSportart(GpxSportart::rad, *eintrag);
        }
        bibliothek.reset();
    }
    arbeiteAb();
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8, "cycling"));
    EXPECT_EQ(ordner.lies("b.gpx"), gpx(47, 8, "cycling"));
    EXPECT_EQ(imOrdner(), (Namen{"a.gpx", "b.gpx"}));
}

}  // namespace
}  // namespace spurkiste
