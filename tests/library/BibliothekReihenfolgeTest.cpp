#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "library/Importaufbau.h"

namespace spurkiste {
namespace {

class BibliothekReihenfolgeTest : public Importaufbau {
  protected:
    std::mt19937 zufall;

    std::size_t wuerfle(std::size_t grenze) {
        return std::uniform_int_distribution<std::size_t>(0, grenze - 1)(zufall);
    }

    /// One step of what waits, if anything does: a thread's own order is kept, only the readers have none.
    void fuehreEinenSchritt() {
        const std::vector<HandAusfuehrer*> faeden = {&kopierer, &schreiber, &arbeiter, &hauptfaden};
        HandAusfuehrer& faden = *faeden[wuerfle(faeden.size())];
        if (faden.wartende() > 0) {
            faden.fuehre(&faden == &arbeiter ? wuerfle(faden.wartende()) : 0);
        }
    }
};

/// Loads, imports, changes of sport and of the folder, and another program at work in it, with all their steps in
/// random order: in the end the library shows what its folder holds, every file once, and each file has its last sport.
TEST_F(BibliothekReihenfolgeTest, endsWithWhatTheFolderHoldsInWhateverOrderThingsHappen) {
    const std::vector<std::string> quellen = fremde({"a/x.gpx", "b/x.gpx", "y.gpx", "z.txt"});
    constexpr unsigned saaten = 80;  // no more, since every write of a sport waits for the disk
    for (unsigned saat = 0; saat < saaten; ++saat) {
        SCOPED_TRACE(saat);
        zufall.seed(saat);
        const TempOrdner einer;
        const TempOrdner anderer;
        einer.schreibe("alt.gpx", gpx(47, 8));
        std::map<std::string, std::string> spuren;  // of the files that get sports: what they must hold in the end
        for (const char* name : {"a.gpx", "x.gpx"}) {
            spuren[einer.schreibe(name, gpx(47, 8))] = gpx(47, 8);
        }
        Bibliothek bibliothek(anschluesse, einer.pfad());
        std::size_t offen = 0;
        const auto fertig = [&] { --offen; };
        for (int schritt = 0; schritt < 60; ++schritt) {
            const std::size_t wurf = wuerfle(16);
            if (schritt == 30) {
                std::filesystem::remove(einer.in("alt.gpx"));
                einer.schreibe("neu.gpx", gpx(47, 8));
            }
            if (wurf == 0 || schritt == 30) {
                ++offen;
                bibliothek.lade(fertig);
            } else if (wurf <= 2) {
                ++offen;
                bibliothek.importiere({quellen[wuerfle(4)], quellen[wuerfle(4)]}, fertig);
            } else if (wurf == 3 && wuerfle(3) == 0) {
                bibliothek.wechsleOrdner(wuerfle(2) == 0 ? einer.pfad() : anderer.pfad());
            } else if (wurf == 4 && bibliothek.ordner().wert() == einer.pfad()) {
                auto& [pfad, inhalt] = *std::next(spuren.begin(), static_cast<std::ptrdiff_t>(wuerfle(2)));
                const GpxSportart art = GpxSportart::allCases()[wuerfle(GpxSportart::allCases().size())];
                inhalt = gpx(47, 8, std::string(art.rawValue()));
                GpxMetadaten spur;
                spur.pfad = pfad;
                ++offen;
                bibliothek.setzeSportart(art, spur, fertig);
            } else {
                fuehreEinenSchritt();
            }
        }
        while (wartende() > 0) {
            // With an unfinished older run the flag stays, whichever run ends last.
            EXPECT_EQ(bibliothek.laedt().wert(), bibliothek.ausstehend().wert() > 0);
            fuehreEinenSchritt();
        }
        std::vector<std::string> gezeigt;
        for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
            gezeigt.push_back(eintrag->pfad);
        }
        std::vector<std::string> vorhanden;
        for (const std::string& name : dateien::liste(bibliothek.ordner().wert())) {
            if (name != Cache::kDateiname) {
                vorhanden.push_back(dateien::kindPfad(bibliothek.ordner().wert(), name));
            }
        }
        std::sort(vorhanden.begin(), vorhanden.end());
        EXPECT_EQ(gezeigt, vorhanden);
        EXPECT_FALSE(bibliothek.laedt().wert());
        EXPECT_EQ(offen, 0U);
        EXPECT_EQ(bibliothek.hinweis().wert(), std::nullopt);
        for (const auto& [pfad, inhalt] : spuren) {
            EXPECT_EQ(dateien::liesGanz(pfad), inhalt);
        }
    }
}

}  // namespace
}  // namespace spurkiste
