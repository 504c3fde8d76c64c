#include <algorithm>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "library/Importaufbau.h"

namespace spurkiste {
namespace {

class BibliothekReihenfolgeTest : public Importaufbau {
  protected:
    /// A file that gets sports: where it is and what it must hold in the end.
    struct Spur {
        std::string pfad;
        std::string inhalt;
    };

    std::mt19937 zufall;
    HandWecker wecker;
    const std::vector<std::string> quellen = fremde({"a/x.gpx", "b/x.gpx", "y.gpx", "z.txt"});

    std::size_t wuerfle(std::size_t grenze) {
        return std::uniform_int_distribution<std::size_t>(0, grenze - 1)(zufall);
    }

    /// One step of what waits, if anything does: a thread's own order is kept, readers and background have none.
    void fuehreEinenSchritt() {
        const std::vector<HandAusfuehrer*> faeden = {&kopierer,    &schreiber,      &arbeiter,
                                                     &hintergrund, &cacheschreiber, &hauptfaden};
        const std::size_t wurf = wuerfle(faeden.size() + 2);
        if (wurf == faeden.size()) {
            wecker.klingle();
        } else if (wurf > faeden.size()) {
            wirfWeg();
        } else if (HandAusfuehrer& faden = *faeden[wurf]; faden.wartende() > 0) {
            const bool ohneOrdnung = &faden == &arbeiter || &faden == &hintergrund;
            faden.fuehre(ohneOrdnung ? wuerfle(faden.wartende()) : 0);
        }
    }

    /// What the trash does when its turn comes.
    void wirfWeg() {
        if (papierkorb.anfragen.empty()) {
            return;
        }
        HandPapierkorb::Anfrage anfrage = std::move(papierkorb.anfragen.front());
        papierkorb.anfragen.erase(papierkorb.anfragen.begin());
        std::erase_if(anfrage.pfade, [](const std::string& pfad) { return !std::filesystem::remove(pfad); });
        anfrage.fertig({anfrage.pfade, std::nullopt});
    }

    [[nodiscard]] bool wartetEtwas() const {
        return wartende() > 0 || !wecker.wartende.empty() || !papierkorb.anfragen.empty();
    }

    const Eintrag* einen(const Bibliothek& bibliothek) {
        const auto& alle = bibliothek.eintraege().wert();
        return alle.empty() ? nullptr : &alle[wuerfle(alle.size())];
    }

    void benenneUm(Bibliothek& bibliothek, std::vector<Spur>& spuren) {
        if (const Eintrag* einer = einen(bibliothek)) {
            const Eintrag eintrag = *einer;
            const auto neu = bibliothek.benenneUm(*eintrag, "n" + std::to_string(wuerfle(6)));
            for (Spur& spur : spuren) {
                if (neu && spur.pfad == eintrag->pfad) {
                    spur.pfad = *neu;
                }
            }
        }
    }

    void inPapierkorb(Bibliothek& bibliothek, const std::vector<Spur>& spuren) {
        const Eintrag* einer = einen(bibliothek);
        if (einer != nullptr &&
            std::none_of(spuren.begin(), spuren.end(), [&](const Spur& spur) { return spur.pfad == (*einer)->pfad; })) {
            bibliothek.inPapierkorb({(*einer)->pfad});
        }
    }

    void setzeSportart(Bibliothek& bibliothek, Spur& spur, Bibliothek::Fertig fertig) {
        const GpxSportart art = wuerfle(2) == 0 ? GpxSportart::rad : GpxSportart::wandern;  // of different length
        spur.inhalt = gpx(47, 8, std::string(art.rawValue()));
        GpxMetadaten eintrag;
        eintrag.pfad = spur.pfad;
        bibliothek.setzeSportart(art, eintrag, std::move(fertig));
    }

    static Namen vorhandene(const std::string& pfad) {
        Namen vorhanden;
        for (const std::string& name : dateien::liste(pfad)) {
            if (name != Cache::kDateiname) {
                vorhanden.push_back(dateien::kindPfad(pfad, name));
            }
        }
        std::sort(vorhanden.begin(), vorhanden.end());
        return vorhanden;
    }

    /// The list is what the folder holds, and the cache is the list.
    static void pruefe(const Bibliothek& bibliothek) {
        const std::string& ordner = bibliothek.ordner().wert();
        Namen gezeigt;
        const Cache cache = Cache::liesAus(ordner);
        for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
            gezeigt.push_back(eintrag->pfad);
            const auto gemerkt = cache.eintraege.find(eintrag->pfad);
            EXPECT_TRUE(gemerkt != cache.eintraege.end() && *gemerkt->second == *eintrag) << eintrag->pfad;
        }
        EXPECT_EQ(cache.eintraege.size(), gezeigt.size());
        std::sort(gezeigt.begin(), gezeigt.end());  // a new name is sorted at the next load
        EXPECT_EQ(gezeigt, vorhandene(ordner));
        EXPECT_FALSE(bibliothek.laedt().wert());
        EXPECT_TRUE(bibliothek.geoeffnet().wert());
        EXPECT_EQ(bibliothek.ausstehend().wert() + bibliothek.zuKopieren().wert(), 0U);
    }
};

/// Loads, imports, renamings, the trash, changes of sport and of the folder, and another program at work in it, with
/// all their steps in random order: in the end the library shows what its folder holds, every file once, and so does
/// its cache; each file has its last sport, and everybody has been called back once.
TEST_F(BibliothekReihenfolgeTest, endsWithWhatTheFolderHoldsInWhateverOrderThingsHappen) {
    constexpr unsigned saaten = 2000;
    for (unsigned saat = 0; saat < saaten; ++saat) {
        SCOPED_TRACE(saat);
        zufall.seed(saat);
        const bool mitSport = saat % 40 == 0;  // each write of one waits for the disk
        anschluesse.wecker = saat % 3 == 0 ? nullptr : &wecker;
        const TempOrdner einer;
        const TempOrdner anderer;
        einer.schreibe("alt.gpx", gpx(47, 8));
        std::vector<Spur> spuren;
        for (const char* name : {"a.gpx", "x.gpx"}) {
            spuren.push_back({einer.schreibe(name, gpx(47, 8)), gpx(47, 8)});
        }
        Bibliothek bibliothek(anschluesse, einer.pfad());
        std::vector<int> rufe;
        const auto fertig = [&] {
            rufe.push_back(0);
            return [&rufe, nummer = rufe.size() - 1] { ++rufe[nummer]; };
        };
        bibliothek.lade(fertig());
        for (int schritt = 0; schritt < 60; ++schritt) {
            const std::size_t wurf = wuerfle(20);
            if (schritt == 30) {
                std::filesystem::remove(einer.in("alt.gpx"));
                einer.schreibe("neu.gpx", gpx(47, 8));
            }
            if (wurf == 0 || schritt == 30) {
                bibliothek.lade(fertig());
            } else if (wurf <= 2) {
                bibliothek.importiere({quellen[wuerfle(4)], quellen[wuerfle(4)]}, fertig());
            } else if (wurf == 3 && wuerfle(3) == 0) {
                bibliothek.wechsleOrdner(wuerfle(2) == 0 ? einer.pfad() : anderer.pfad());
            } else if (wurf == 4) {
                benenneUm(bibliothek, spuren);
            } else if (wurf == 5) {
                inPapierkorb(bibliothek, spuren);
            } else if (wurf == 6 && mitSport && bibliothek.ordner().wert() == einer.pfad()) {
                setzeSportart(bibliothek, spuren[wuerfle(2)], fertig());
            } else if (wurf == 7 && wuerfle(6) == 0) {
                bibliothek.brichImporteAb();
            } else {
                fuehreEinenSchritt();
            }
        }
        while (wartetEtwas()) {
            EXPECT_TRUE(bibliothek.laedt().wert() || bibliothek.ausstehend().wert() == 0);
            fuehreEinenSchritt();
        }
        pruefe(bibliothek);
        EXPECT_TRUE(std::all_of(rufe.begin(), rufe.end(), [](int anzahl) { return anzahl == 1; }));
        for (const Spur& spur : spuren) {
            EXPECT_EQ(dateien::liesGanz(spur.pfad), spur.inhalt) << spur.pfad;
        }
        // And another look finds nothing to correct but a sport that came when the look was over.
        const auto davor = bibliothek.eintraege().wert();
        bibliothek.lade();
        arbeiteAb();
        pruefe(bibliothek);
        if (!mitSport) {
            EXPECT_EQ(bibliothek.eintraege().wert().size(), davor.size());
        }
        if (HasFailure()) {
            break;
        }
    }
}

}  // namespace
}  // namespace spurkiste
