#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "base/Text.h"
#include "erzeuge/Erzeuger.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"

namespace spurkiste::erzeuge {
namespace {

std::vector<Datei> alle(const Wunsch& wunsch) {
    Erzeuger erzeuger(wunsch);
    std::vector<Datei> dateien;
    for (std::size_t i = 0; i < wunsch.anzahl; ++i) {
        dateien.push_back(erzeuger.naechste());
    }
    return dateien;
}

// FNV-1a, 64 bits.
std::uint64_t pruefsumme(std::string_view bytes, std::uint64_t anfang = 0xcbf29ce484222325U) {
    for (const char byte : bytes) {
        anfang = (anfang ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    }
    return anfang;
}

TEST(ErzeugerTest, EverySoundFileReadsBackAsItWasMeant) {
    const TempOrdner ordner;
    std::set<const Stil*> gesehen;
    std::set<bool> routen, zeiten, hoehen, pulse, wetterOrte;
    std::set<std::string> namen;
    for (const Datei& datei : alle({.anzahl = 400, .punkte = 60, .saat = 7, .defekt = 0.0})) {
        SCOPED_TRACE(datei.name);
        EXPECT_TRUE(namen.insert(datei.name).second && text::istUtf8(datei.name));
        const auto gelesen = GpxLeser::lese(ordner.schreibe("eine.gpx", datei.inhalt));
        ASSERT_TRUE(gelesen);
        const Fahrt& fahrt = datei.fahrt;
        const bool kennt11 = !datei.stil->gpx10;
        EXPECT_EQ(gelesen->punkte, static_cast<std::int64_t>(fahrt.weg.punkte.size()));
        EXPECT_EQ(gelesen->skizze.linien(), fahrt.weg.segmente.size());
        EXPECT_EQ(gelesen->sportRoh, fahrt.typ);
        // Names of routes do not count, and GPX 1.0 has no metadata.
        const auto metadatenName = kennt11 ? fahrt.metadatenName : std::nullopt;
        EXPECT_EQ(gelesen->spurName, fahrt.spurName && !fahrt.route ? fahrt.spurName : metadatenName);
        ASSERT_EQ(gelesen->datum.has_value(), fahrt.zeiten);
        if (fahrt.zeiten) {
            EXPECT_EQ(gelesen->datum->alsUnix(), fahrt.weg.punkte.front().zeit);
            EXPECT_EQ(gelesen->dauerSekunden,
                      static_cast<double>(fahrt.weg.punkte.back().zeit - fahrt.weg.punkte.front().zeit));
        }
        ASSERT_TRUE(gelesen->start && gelesen->ende);
        EXPECT_LT(entfernung(*gelesen->start, fahrt.weg.punkte.front().ort), 1.0);
        EXPECT_LT(entfernung(*gelesen->ende, fahrt.weg.punkte.back().ort), 1.0);
        if (!fahrt.hoehen) {
            EXPECT_EQ(gelesen->anstiegMeter, 0.0);
        }
        // The receiver's noise makes a way longer, never by much.
        EXPECT_GT(gelesen->streckeMeter, 0.9 * fahrt.weg.meter);
        EXPECT_LT(gelesen->streckeMeter, 1.1 * fahrt.weg.meter + 500.0);
        const bool wetter = kennt11 && !fahrt.wetter.empty();
        ASSERT_EQ(gelesen->wetter.has_value(), wetter);
        if (wetter) {
            EXPECT_EQ(gelesen->wetter->messpunkte, static_cast<std::int64_t>(fahrt.wetter.size()));
            EXPECT_EQ(gelesen->wetter->lage, fahrt.wetter.front().lage);
            wetterOrte.insert(fahrt.wetterAmPunkt);
        }
        gesehen.insert(datei.stil);
        routen.insert(fahrt.route);
        zeiten.insert(fahrt.zeiten);
        hoehen.insert(fahrt.hoehen);
        pulse.insert(fahrt.puls && kennt11);
    }
    EXPECT_EQ(gesehen.size(), stile().size());
    for (const auto& beides : {routen, zeiten, hoehen, pulse, wetterOrte}) {
        EXPECT_EQ(beides.size(), 2U);
    }
}

TEST(ErzeugerTest, BrokenFilesAreBrokenAndNeverMoreThanWhatTheyWere) {
    const TempOrdner ordner;
    std::set<Defekt> gesehen;
    for (const Datei& datei : alle({.anzahl = 60, .punkte = 40, .saat = 3, .defekt = 1.0})) {
        const auto gelesen = GpxLeser::lese(ordner.schreibe("eine.gpx", datei.inhalt));
        ASSERT_TRUE(gelesen);
        const auto hoechstens = datei.defekt == Defekt::abgeschnitten ? datei.fahrt.weg.punkte.size() : 0;
        EXPECT_LE(gelesen->punkte, static_cast<std::int64_t>(hoechstens));
        EXPECT_EQ(datei.inhalt.find("</gpx>"), std::string::npos);
        gesehen.insert(datei.defekt);
    }
    EXPECT_THAT(gesehen, testing::UnorderedElementsAre(Defekt::abgeschnitten, Defekt::leer, Defekt::fremd));
}

// Whoever changes what is made up on purpose puts the new sums here. A compiler or a machine that gives others is at
// fault: then figures of different machines compare different files.
TEST(ErzeugerTest, BytesAreTheSameOnEveryMachine) {
    std::uint64_t summe = pruefsumme("");
    for (const Datei& datei : alle({.anzahl = 200, .punkte = 80, .saat = 11, .defekt = 0.1})) {
        summe = pruefsumme(datei.inhalt, pruefsumme(datei.name, summe));
    }
    EXPECT_EQ(summe, 6639722020233237890U);
    EXPECT_EQ(pruefsumme(erzeugeSpur(5, 200'000)), 16077515819853526934U);
}

TEST(ErzeugerTest, TheSampleShowsAllSportsWholeTracksAndRealLoops) {
    const TempOrdner ordner;
    const Wunsch wunsch{.anzahl = 60, .punkte = 400, .beispiel = true};
    const Umfang umfang = schreibeBibliothek(ordner.pfad(), wunsch);
    const auto namen = dateien::liste(ordner.pfad());
    EXPECT_EQ(namen.size(), 60U);
    std::set<std::string_view> sportarten;
    int runden = 0;
    int wetter = 0;
    std::uint64_t bytes = 0;
    for (const std::string& name : namen) {
        const auto gelesen = GpxLeser::lese(ordner.in(name));
        ASSERT_TRUE(gelesen);
        bytes += static_cast<std::uint64_t>(gelesen->dateiGroesse);
        EXPECT_TRUE(gelesen->hatZeitstempel && gelesen->spurName && gelesen->startOrt) << name;
        EXPECT_GE(gelesen->dateiDatum, *gelesen->datum) << name;
        const auto sport = GpxSportart::aus(gelesen->sportRoh);
        ASSERT_TRUE(sport) << name;
        sportarten.insert(sport->rawValue());
        runden += gelesen->rundkurs ? 1 : 0;
        wetter += gelesen->wetter ? 1 : 0;
        const double kmh = gelesen->streckeMeter / gelesen->dauerSekunden * 3.6;
        EXPECT_GT(kmh, 0.5) << name;
        EXPECT_LT(kmh, 130.0) << name;
    }
    EXPECT_EQ(sportarten.size(), 15U);
    EXPECT_GT(runden, 25);
    EXPECT_GT(wetter, 15);
    EXPECT_EQ(bytes, umfang.bytes);
}

TEST(ErzeugerTest, RecordsHavePathsOfTheirOwnAndSketchesOnlyWhenAsked) {
    std::set<std::string> pfade;
    for (const Eintrag& eintrag : erzeugeEintraege(500, 4)) {
        pfade.insert(eintrag->pfad);
        EXPECT_GT(eintrag->skizze.punkte().size(), 20U);
    }
    EXPECT_EQ(pfade.size(), 500U);
    EXPECT_TRUE(erzeugeEintraege(10, 4, false).front()->skizze.leer());
}

}  // namespace
}  // namespace spurkiste::erzeuge
