#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "library/Bibliotheksaufbau.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

class BibliothekVerlaufTest : public Bibliotheksaufbau {
  protected:
    TempOrdner korb;
    std::vector<std::string> gesagtes;
    std::vector<std::string> betroffene;

    void lasseLaufen() {
        arbeiteAb();
        while (!papierkorb.anfragen.empty()) {
            papierkorb.wirfAlles(korb);
            arbeiteAb();
        }
    }

    void verlange(Bibliothek& bibliothek, Richtung richtung) {
        bibliothek.nimmZurueck(richtung, [this](const Bibliothek::Zurueckgenommen& ergebnis) {
            gesagtes.push_back(ergebnis.text);
            betroffene = ergebnis.pfade;
        });
    }

    /// What was said about one step.
    std::string geh(Bibliothek& bibliothek, Richtung richtung) {
        gesagtes.clear();
        verlange(bibliothek, richtung);
        lasseLaufen();
        EXPECT_EQ(gesagtes.size(), 1U);
        return gesagtes.empty() ? "" : gesagtes.front();
    }

    /// The files and what is in them, after a check that the list says the same of them.
    std::map<std::string, std::string> dateienUndInhalt(const Bibliothek& bibliothek) {
        std::map<std::string, std::string> alle;
        for (const std::string& name : imOrdner()) {
            alle[name] = ordner.lies(name);
        }
        Namen gelistete = namen(bibliothek);
        std::sort(gelistete.begin(), gelistete.end());  // a renamed file keeps its place
        EXPECT_EQ(gelistete, imOrdner());
        for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
            const std::string& inhalt = alle[std::string(dateien::letzterTeil(eintrag->pfad))];
            const std::string art = eintrag->sportRoh ? "<type>" + *eintrag->sportRoh + "</type>" : "<trk><trkseg>";
            EXPECT_NE(inhalt.find(art), std::string::npos) << inhalt;
        }
        return alle;
    }

    static const GpxMetadaten& eintragVon(const Bibliothek& bibliothek, const std::string& name) {
        for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
            if (dateien::letzterTeil(eintrag->pfad) == name) {
                return *eintrag;
            }
        }
        throw std::runtime_error(name);
    }
};

constexpr auto kZurueck = Richtung::zurueck;
constexpr auto kWieder = Richtung::wieder;

TEST_F(BibliothekVerlaufTest, goesBackStepByStepAndForthAgain) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx", "c.gpx"});
    const auto eintrag = [&](const std::string& name) -> const GpxMetadaten& { return eintragVon(*bibliothek, name); };
    struct Schritt {
        std::function<void()> tue;
        std::string zurueck;
        std::string wieder;
        Namen danach;  // the files concerned, once it is taken back
    };
    const std::vector<Schritt> schritte{
        {[&] { bibliothek->setzeSportart(GpxSportart::rad, eintrag("a.gpx")); },
         "Sportart von „a“ zurückgenommen",
         "Sportart von „a“ wieder gesetzt",
         {"a.gpx"}},
        {[&] { bibliothek->benenneUm(eintrag("a.gpx"), "z"); },
         "„z“ heißt wieder „a“",
         "„a“ heißt wieder „z“",
         {"a.gpx"}},
        {[&] {
             bibliothek->inPapierkorb({ordner.in("b.gpx"), ordner.in("c.gpx")});
         },
         "2 Dateien aus dem Papierkorb zurückgeholt",
         "2 Dateien in den Papierkorb gelegt",
         {"b.gpx", "c.gpx"}},
        {[&] { bibliothek->setzeSportart(GpxSportart::ski, eintrag("z.gpx")); },
         "Sportart von „z“ zurückgenommen",
         "Sportart von „z“ wieder gesetzt",
         {"z.gpx"}},
        {[&] { bibliothek->inPapierkorb({ordner.in("z.gpx")}); },
         "„z“ aus dem Papierkorb zurückgeholt",
         "„z“ in den Papierkorb gelegt",
         {"z.gpx"}},
    };
    std::vector<std::map<std::string, std::string>> staende{dateienUndInhalt(*bibliothek)};
    for (const Schritt& schritt : schritte) {
        schritt.tue();
        lasseLaufen();
        staende.push_back(dateienUndInhalt(*bibliothek));
    }
    for (int runde = 0; runde < 2; ++runde) {
        for (std::size_t i = schritte.size(); i-- > 0;) {
            EXPECT_EQ(geh(*bibliothek, kZurueck), schritte[i].zurueck);
            EXPECT_EQ(dateienUndInhalt(*bibliothek), staende[i]);
            Namen erwartet;
            for (const std::string& name : schritte[i].danach) {
                erwartet.push_back(ordner.in(name));
            }
            std::sort(betroffene.begin(), betroffene.end());
            EXPECT_EQ(betroffene, erwartet);
        }
        EXPECT_EQ(geh(*bibliothek, kZurueck), "Es gibt nichts zurückzunehmen");
        for (std::size_t i = 0; i < schritte.size(); ++i) {
            EXPECT_EQ(geh(*bibliothek, kWieder), schritte[i].wieder);
            EXPECT_EQ(dateienUndInhalt(*bibliothek), staende[i + 1]);
        }
        EXPECT_EQ(geh(*bibliothek, kWieder), "Es gibt nichts zu wiederholen");
    }
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
    const auto stand = bibliothek->eintraege().wert().size();
    bibliothek->lade();
    EXPECT_EQ(arbeiteAb(), 0U);  // all of it is in the cache
    EXPECT_EQ(bibliothek->eintraege().wert().size(), stand);
}

TEST_F(BibliothekVerlaufTest, leavesAloneWhatHasChangedSinceAndSaysSo) {
    const auto schreibe = [&](const std::string& name) { return [this, name] { ordner.schreibe(name, "neu"); }; };
    const auto entferne = [&](const std::string& name) { return [this, name] { fs::remove(ordner.in(name)); }; };
    const auto sport = [&](Bibliothek& b) { b.setzeSportart(GpxSportart::rad, eintragVon(b, "a.gpx")); };
    const auto benenne = [&](Bibliothek& b) { b.benenneUm(eintragVon(b, "a.gpx"), "z"); };
    const auto wirf = [&](Bibliothek& b) { b.inPapierkorb({ordner.in("a.gpx")}); };
    struct Fall {
        std::function<void(Bibliothek&)> tue;
        std::function<void()> mitten;
        std::string hinweis;
    };
    const std::string vergeben = std::generic_category().message(EEXIST);
    const std::vector<Fall> faelle{
        {sport, schreibe("a.gpx"), "Nicht zurückgenommen: „a“ hat sich seitdem geändert"},
        {sport, entferne("a.gpx"), "Nicht zurückgenommen: „a“ ist nicht mehr da"},
        {benenne, schreibe("z.gpx"), "Nicht zurückgenommen: „z“ hat sich seitdem geändert"},
        {benenne, entferne("z.gpx"), "Nicht zurückgenommen: „z“ ist nicht mehr da"},
        {benenne, schreibe("a.gpx"), "Nicht zurückgenommen: „z“: " + vergeben},
        {wirf, schreibe("a.gpx"), "Nicht zurückgenommen: „a“: " + vergeben},
        {wirf, [&] { korb.schreibe(dateien::liste(korb.pfad()).front(), "neu"); },
         "Nicht zurückgenommen: „a“ hat sich seitdem geändert"},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.hinweis);
        for (const std::string& rest : imOrdner()) {
            fs::remove(ordner.in(rest));
        }
        const auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
        bibliothek->setzeSportart(GpxSportart::ski, eintragVon(*bibliothek, "b.gpx"));
        lasseLaufen();
        fall.tue(*bibliothek);
        lasseLaufen();
        fall.mitten();
        const Namen da = imOrdner();
        EXPECT_EQ(geh(*bibliothek, kZurueck), "");
        EXPECT_EQ(bibliothek->hinweis().wert(), fall.hinweis);
        EXPECT_EQ(imOrdner(), da);
        EXPECT_EQ(geh(*bibliothek, kWieder), "Es gibt nichts zu wiederholen");
        EXPECT_EQ(geh(*bibliothek, kZurueck), "Sportart von „b“ zurückgenommen");  // the step before is not lost
        for (const std::string& rest : dateien::liste(korb.pfad())) {
            fs::remove(korb.in(rest));
        }
    }
}

TEST_F(BibliothekVerlaufTest, takesBackInTheOrderInWhichTheUserHasAsked) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    const auto vorher = dateienUndInhalt(*bibliothek);
    bibliothek->setzeSportart(GpxSportart::rad, eintragVon(*bibliothek, "a.gpx"));
    bibliothek->benenneUm(eintragVon(*bibliothek, "a.gpx"), "c");  // before the sport is written
    bibliothek->inPapierkorb({ordner.in("b.gpx")});
    for (int i = 0; i < 3; ++i) {
        verlange(*bibliothek, kZurueck);
    }
    EXPECT_EQ(gesagtes, Namen());  // all of it waits for the trash
    EXPECT_EQ(imOrdner(), (Namen{"b.gpx", "c.gpx"}));
    lasseLaufen();
    EXPECT_EQ(gesagtes, (Namen{"„b“ aus dem Papierkorb zurückgeholt", "„c“ heißt wieder „a“",
                               "Sportart von „a“ zurückgenommen"}));
    EXPECT_EQ(dateienUndInhalt(*bibliothek), vorher);
    EXPECT_EQ(bibliothek->hinweis().wert(), std::nullopt);
}

TEST_F(BibliothekVerlaufTest, keepsNoStepThatChangedNothingAndForgetsWhatNoLongerHolds) {
    const auto bibliothek = mitSpuren({"a.gpx", "b.gpx"});
    const auto a = [&]() -> const GpxMetadaten& { return eintragVon(*bibliothek, "a.gpx"); };
    bibliothek->setzeSportart(GpxSportart::rad, a());
    lasseLaufen();
    bibliothek->setzeSportart(GpxSportart::rad, a());  // a new date, the same bytes
    bibliothek->benenneUm(a(), "b");                   // taken
    lasseLaufen();
    EXPECT_EQ(geh(*bibliothek, kZurueck), "Sportart von „a“ zurückgenommen");
    EXPECT_EQ(ordner.lies("a.gpx"), gpx(47, 8));
    bibliothek->benenneUm(a(), "z");
    EXPECT_EQ(geh(*bibliothek, kWieder), "Es gibt nichts zu wiederholen");  // another way was taken
    EXPECT_EQ(geh(*bibliothek, kZurueck), "„z“ heißt wieder „a“");

    const TempOrdner anderer;
    bibliothek->setzeSportart(GpxSportart::ski, a());
    bibliothek->wechsleOrdner(anderer.pfad());
    lasseLaufen();
    EXPECT_EQ(geh(*bibliothek, kZurueck), "Es gibt nichts zurückzunehmen");
    EXPECT_EQ(geh(*bibliothek, kWieder), "Es gibt nichts zu wiederholen");
    EXPECT_TRUE(bibliothek->eintraege().wert().empty());
}

}  // namespace
}  // namespace spurkiste
