#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "library/Importaufbau.h"
#include "library/Oeffnung.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class BibliothekOeffnenTest : public Importaufbau {
  protected:
    std::vector<std::string> gefundene;

    void oeffne(Bibliothek& bibliothek, const std::vector<std::string>& pfade) {
        gefundene.clear();
        bibliothek.oeffne(pfade,
                          [this](const auto& neue) { gefundene.insert(gefundene.end(), neue.begin(), neue.end()); });
        arbeiteAb();
    }
};

TEST_F(BibliothekOeffnenTest, readsWhatWasSavedIntoTheFolderSinceTheLoadByWhateverWayItIsNamed) {
    const auto bibliothek = mitSpuren({"alt.gpx", "anders.gpx"});
    ordner.schreibe("neu.gpx", gpx(46, 7));
    ordner.schreibe("anders.gpx", gpx(46, 7, "hiking"));
    const std::string link = fremd.in("link");
    fs::create_directory_symlink(ordner.pfad(), link);
    bibliothek->oeffne({link + "/neu.gpx"}, [&](const auto& neue) {
        gefundene = neue;
        EXPECT_TRUE(bibliothek->laedt().wert());  // it is on its way
    });
    EXPECT_EQ(arbeiteAb(), 1U);
    EXPECT_THAT(gefundene, ElementsAre(ordner.in("neu.gpx")));
    oeffne(*bibliothek, {ordner.in("anders.gpx"), ordner.pfad() + "/./alt.gpx"});
    EXPECT_THAT(gefundene, ElementsAre(ordner.in("anders.gpx"), ordner.in("alt.gpx")));
    EXPECT_EQ(namen(*bibliothek), (Namen{"alt.gpx", "anders.gpx", "neu.gpx"}));
    EXPECT_EQ(bibliothek->eintraege().wert()[1]->sportRoh, "hiking");
    EXPECT_EQ(imOrdner(), namen(*bibliothek));
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 0U);  // cached as well
}

TEST_F(BibliothekOeffnenTest, copiesNothingThatTheFolderHasAlready) {
    const auto bibliothek = mitSpuren({"da.gpx", "lang.gpx"});
    ordner.schreibe("lang.gpx", std::string(200'000, ' ') + "1");
    bibliothek->lade();
    arbeiteAb();
    const std::string neu = fremd.schreibe("neu.gpx", gpx(46, 7));
    for (int mal = 0; mal < 3; ++mal) {
        oeffne(*bibliothek, {neu, neu});
        EXPECT_THAT(gefundene, ElementsAre(ordner.in("neu.gpx"), ordner.in("neu.gpx")));
    }
    oeffne(*bibliothek, {fremd.schreibe("x.gpx", gpx(47, 8))});
    EXPECT_THAT(gefundene, ElementsAre(ordner.in("da.gpx")));
    oeffne(*bibliothek, {fremd.schreibe("fast.gpx", std::string(200'000, ' ') + "2")});  // of the same size
    EXPECT_THAT(gefundene, ElementsAre(ordner.in("fast.gpx")));
    EXPECT_EQ(imOrdner(), (Namen{"da.gpx", "fast.gpx", "lang.gpx", "neu.gpx"}));
    EXPECT_EQ(namen(*bibliothek), imOrdner());
    bibliothek->importiere({neu});  // whoever imports wants a copy
    arbeiteAb();
    EXPECT_EQ(imOrdner().size(), 5U);
    EXPECT_EQ(bibliothek->zuKopieren().wert(), 0U);
}

TEST_F(BibliothekOeffnenTest, saysWhatCannotBeOpenedAndOpensTheRest) {
    const auto bibliothek = mitSpuren({"a.gpx"});
    const std::vector<std::pair<std::string, std::string>> faelle = {
        {fremd.in("fehlt\n.gpx"), "fehlt .gpx: gibt es nicht"},
        {fremd.pfad() + "/", fremd.pfad() + "/: ist ein Ordner"},
        {"/", "/: ist ein Ordner"},
        {fremd.schreibe("bild.png", "x"), "bild.png: ist keine GPX-Datei"},
    };
    for (const auto& [pfad, erwartet] : faelle) {
        oeffne(*bibliothek, {pfad});
        EXPECT_EQ(bibliothek->hinweis().wert(), "Nicht geöffnet: " + erwartet);
        EXPECT_TRUE(gefundene.empty());
    }
    EXPECT_EQ(oeffnung::einwand(ordner.in("a.gpx")), std::nullopt);
    oeffne(*bibliothek, {faelle[0].first, ordner.in("a.gpx"), faelle[3].first});
    EXPECT_EQ(bibliothek->hinweis().wert(), "Nicht geöffnet: 2 Dateien, zuletzt bild.png: ist keine GPX-Datei");
    EXPECT_THAT(gefundene, ElementsAre(ordner.in("a.gpx")));
    EXPECT_EQ(imOrdner(), Namen{"a.gpx"});
}

}  // namespace
}  // namespace spurkiste
