#include <cerrno>
#include <filesystem>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "hilfe/Engpass.h"
#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

std::string gescheitert(int nummer) {
    return "Umbenennen fehlgeschlagen: " + std::generic_category().message(nummer);
}

class BibliothekUmbenennenTest : public Bibliotheksaufbau {
  protected:
    static const GpxMetadaten& eintrag(const Bibliothek& bibliothek, const std::string& name) {
        for (const Eintrag& einer : bibliothek.eintraege().wert()) {
            if (dateien::letzterTeil(einer->pfad) == name) {
                return *einer;
            }
        }
        throw std::out_of_range(name);
    }
};

TEST_F(BibliothekUmbenennenTest, cleansWhatTheUserTyped) {
    struct Fall {
        std::string datei;
        std::string getippt;
        std::string danach;  ///< empty: nothing is renamed
    };
    const std::vector<Fall> faelle = {
        {"alt.gpx", "  Neu.GPX \n", "Neu.gpx"},
        {"alt.gpx", "\u00A0\u2003Neu\u2028\t", "Neu.gpx"},
        {"alt.gpx", "a/b:c", "a-b-c.gpx"},
        {"alt.gpx", "../oben", "..-oben.gpx"},
        {"alt.gpx", "..", "...gpx"},
        {"alt.gpx", "x.gpx.GpX", "x.gpx.gpx"},
        {"alt.gpx", "Höhe über München", "Höhe über München.gpx"},
        {"alt.gpx", "Alt", "Alt.gpx"},
        {"alt.gpx", "Neu .gpx", "Neu .gpx"},
        {"alt.GPX", "neu", "neu.gpx"},
        {"alt.GPX", "ALT", "ALT.gpx"},
        {"alt.gpx", "", ""},
        {"alt.gpx", " \r\n", ""},
        {"alt.gpx", ".GPX", ""},
        {"alt.gpx", "alt", ""},
        {"alt.gpx", " alt.gPx ", ""},
        {"alt.GPX", "alt", ""},
        {"a-b.gpx", "a/b", ""},
        {"alt.gpx", std::string(251, 'x'), std::string(251, 'x') + ".gpx"},
    };
    for (const auto& [datei, getippt, danach] : faelle) {
        SCOPED_TRACE(datei + " -> " + getippt);
        const std::string alt = ordner.schreibe(datei, gpx(47, 8));
        const auto bibliothek = geladen();
        const auto neu = bibliothek->benenneUm(eintrag(*bibliothek, datei), getippt);
        EXPECT_EQ(neu, danach.empty() ? std::nullopt : std::optional(ordner.in(danach)));
        EXPECT_EQ(imOrdner(), Namen{danach.empty() ? datei : danach});
        EXPECT_EQ(namen(*bibliothek), imOrdner());
        EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
        fs::remove(ordner.in(imOrdner().front()));
    }
}

TEST_F(BibliothekUmbenennenTest, changesPathAndNameOneAfterTheOtherAndNothingElse) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx", "c.gpx"});
    GpxMetadaten erwartet = eintrag(*bibliothek, "a.gpx");
    const auto nachbar = bibliothek->eintraege().wert()[1];
    std::vector<std::pair<std::string, std::string>> staende;
    const auto merke = [&] {
        const GpxMetadaten& erster = *bibliothek->eintraege().wert().front();
        staende.emplace_back(dateien::letzterTeil(erster.pfad), erster.dateiName);
    };
    {
        const Abo abo = bibliothek->eintraege().beobachte(merke);
        bibliothek->benenneUm(erwartet, "z");
    }
    merke();
    EXPECT_EQ(staende,
              (std::vector<std::pair<std::string, std::string>>{{"a.gpx", "a"}, {"z.gpx", "a"}, {"z.gpx", "z"}}));
    erwartet.pfad = ordner.in("z.gpx");
    erwartet.dateiName = "z";
    EXPECT_EQ(*bibliothek->eintraege().wert().front(), erwartet);
    EXPECT_EQ(namen(*bibliothek), (Namen{"z.gpx", "b.gpx", "c.gpx"}));  // sorted at the next load only
    EXPECT_EQ(bibliothek->eintraege().wert()[1], nachbar);
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 0U);  // the cache knows the new name
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "c.gpx", "z.gpx"}));
}

TEST_F(BibliothekUmbenennenTest, neverTakesAnotherFilesName) {
    for (const char* name : {"tour.gpx", "Tour.gpx", "da.gpx"}) {
        ordner.schreibe(name, gpx(47, 8) + name);
    }
    fs::create_directory(ordner.in("ordner.gpx"));
    fs::create_symlink("ins Leere", ordner.in("link.gpx"));
    const auto bibliothek = geladen();
    const Namen vorher = imOrdner();
    const std::string davor = cacheText();
    struct Fall {
        std::string getippt;
        std::string hinweis;
    };
    const std::vector<Fall> faelle = {
        {"da", "Es gibt schon eine Datei „da.gpx“"},
        {" da.GPX", "Es gibt schon eine Datei „da.gpx“"},
        {"ordner", "Es gibt schon eine Datei „ordner.gpx“"},
        // What the test before the move passes over or cannot see, as it cannot see what appears after it:
        {"Tour", gescheitert(EEXIST)},
        {"link", gescheitert(EEXIST)},
        // No other file, but no name either:
        {std::string(252, 'x'), gescheitert(ENAMETOOLONG)},
        {std::string("n\0u", 3), gescheitert(EINVAL)},
    };
    for (const auto& [getippt, hinweis] : faelle) {
        EXPECT_EQ(bibliothek->benenneUm(eintrag(*bibliothek, "tour.gpx"), getippt), std::nullopt) << getippt;
        EXPECT_EQ(bibliothek->hinweis().wert(), hinweis);
    }
    EXPECT_EQ(imOrdner(), vorher);
    for (const char* name : {"tour.gpx", "Tour.gpx", "da.gpx"}) {
        EXPECT_EQ(ordner.lies(name), gpx(47, 8) + name);
    }
    EXPECT_EQ(namen(*bibliothek), (Namen{"Tour.gpx", "da.gpx", "tour.gpx"}));
    EXPECT_EQ(cacheText(), davor);
    EXPECT_EQ(bibliothek->benenneUm(eintrag(*bibliothek, "tour.gpx"), "frei"), ordner.in("frei.gpx"));
    EXPECT_NE(bibliothek->hinweis().wert(), std::nullopt);  // a success leaves the notice
}

TEST_F(BibliothekUmbenennenTest, doesNoHarmWhenTheFileIsGoneOrTheFolderLocked) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    {
        const Rechte rechte(ordner.pfad(), kNurLesen);
        EXPECT_EQ(bibliothek->benenneUm(eintrag(*bibliothek, "a.gpx"), "b"), std::nullopt);
    }
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(EACCES));
    fs::rename(ordner.in("a.gpx"), ordner.in("anderswo.gpx"));
    EXPECT_EQ(bibliothek->benenneUm(eintrag(*bibliothek, "a.gpx"), "b"), std::nullopt);
    EXPECT_EQ(bibliothek->hinweis().wert(), gescheitert(ENOENT));
    EXPECT_EQ(imOrdner(), Namen{"anderswo.gpx"});
    EXPECT_EQ(namen(*bibliothek), Namen{"a.gpx"});
}

TEST_F(BibliothekUmbenennenTest, leavesNoSecondRecordOfTheNewPath) {
    ordner.schreibe("a.gpx", gpx(47, 8));
    ordner.schreibe("b.gpx", gpx(46, 7));
    const auto bibliothek = geladen();
    fs::remove(ordner.in("b.gpx"));
    EXPECT_TRUE(bibliothek->benenneUm(eintrag(*bibliothek, "a.gpx"), "b").has_value());
    EXPECT_EQ(namen(*bibliothek), Namen{"b.gpx"});
    EXPECT_EQ(bibliothek->eintraege().wert().front()->start, (Koordinate{47, 8}));
    bibliothek->setzeSportart(GpxSportart::rad, eintrag(*bibliothek, "b.gpx"));
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), Namen{"b.gpx"});
}

TEST_F(BibliothekUmbenennenTest, worksWhileALoadRuns) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    ordner.schreibe("b.gpx", gpx(47, 8));
    const GpxMetadaten a = eintrag(*bibliothek, "a.gpx");
    bibliothek->lade();
    EXPECT_EQ(bibliothek->benenneUm(a, "z"), ordner.in("z.gpx"));
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "z.gpx"}));

    // A load that has the record not yet back renames the file all the same.
    fs::remove(ordner.in(Cache::kDateiname));
    const GpxMetadaten z = eintrag(*bibliothek, "z.gpx");
    bibliothek->lade();
    lasseNachsehen();
    EXPECT_TRUE(namen(*bibliothek).empty());
    arbeiter.fuehre(0);
    EXPECT_EQ(bibliothek->benenneUm(z, "y"), ordner.in("y.gpx"));
    EXPECT_EQ(imOrdner(), (Namen{"b.gpx", "y.gpx"}));
    arbeiteAb();
    EXPECT_EQ(namen(*bibliothek), (Namen{"b.gpx", "y.gpx"}));
}

TEST_F(BibliothekUmbenennenTest, takesTheSportThatIsBeingWrittenAlong) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    const GpxMetadaten a = eintrag(*bibliothek, "a.gpx");
    bibliothek->setzeSportart(GpxSportart::rad, a);
    schreiber.fuehreAlle();
    EXPECT_EQ(bibliothek->benenneUm(a, "z"), ordner.in("z.gpx"));
    hauptfaden.fuehreAlle();
    EXPECT_EQ(namen(*bibliothek), Namen{"z.gpx"});
    EXPECT_EQ(eintrag(*bibliothek, "z.gpx").sportRoh, "cycling");
    EXPECT_EQ(eintrag(*bibliothek, "z.gpx").dateiName, "z");

    // Renamed before the write has begun: it is done under the new name.
    const GpxMetadaten z = eintrag(*bibliothek, "z.gpx");
    int fertige = 0;
    bibliothek->setzeSportart(GpxSportart::ski, z, [&] { ++fertige; });
    bibliothek->benenneUm(z, "y");
    arbeiteAb();
    EXPECT_EQ(imOrdner(), Namen{"y.gpx"});
    EXPECT_EQ(namen(*bibliothek), Namen{"y.gpx"});
    EXPECT_EQ(ordner.lies("y.gpx"), gpx(47, 8, "skiing"));
    EXPECT_EQ(eintrag(*bibliothek, "y.gpx").sportRoh, "skiing");
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);

    // Before and after the renaming: the later choice stays.
    const GpxMetadaten y = eintrag(*bibliothek, "y.gpx");
    bibliothek->setzeSportart(GpxSportart::rad, y, [&] { ++fertige; });
    bibliothek->benenneUm(y, "x");
    bibliothek->setzeSportart(GpxSportart::laufen, eintrag(*bibliothek, "x.gpx"), [&] { ++fertige; });
    arbeiteAb();
    EXPECT_EQ(ordner.lies("x.gpx"), gpx(47, 8, "running"));
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);

    // A file that is nowhere any more is tried once under each name, and then it is said.
    const GpxMetadaten x = eintrag(*bibliothek, "x.gpx");
    bibliothek->setzeSportart(GpxSportart::rad, x, [&] { ++fertige; });
    bibliothek->benenneUm(x, "w");
    std::filesystem::remove(ordner.in("w.gpx"));
    arbeiteAb();
    EXPECT_EQ(fertige, 4);
    EXPECT_THAT(bibliothek->hinweis().wert().value_or(""), testing::StartsWith("Sportart nicht gespeichert: "));
    EXPECT_EQ(imOrdner(), Namen{});
}

}  // namespace
}  // namespace spurkiste
