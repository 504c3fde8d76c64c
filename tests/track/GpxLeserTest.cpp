#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include "base/Dateien.h"
#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"
#include "track/Weghoerer.h"

namespace spurkiste {

namespace {

std::string gpx(std::string_view inneres) {
    return "<gpx version=\"1.1\">" + std::string(inneres) + "</gpx>";
}

std::string punkt(std::string_view breite, std::string_view laenge, std::string_view inneres = {}) {
    return "<trkpt lat=\"" + std::string(breite) + "\" lon=\"" + std::string(laenge) + "\">" + std::string(inneres) +
           "</trkpt>";
}

/// Three points at sea level and three a hundred metres up: as they are, 100 m of ascent.
std::string treppe(std::string_view mittlere) {
    const std::string unten = punkt("1", "1", "<ele>0</ele>");
    const std::string oben = punkt("1", "1", "<ele>100</ele>");
    return unten + unten + std::string(mittlere) + oben + oben + oben;
}

constexpr std::string_view kNull = "<ele>0</ele>";

}  // namespace

TEST(GpxLeserTest, BehaeltDieEigenheitenDesLesens) {
    using Text = std::optional<std::string>;
    struct Fall {
        std::string inneres;
        int punkte = 0;
        std::size_t linien = 0;
        double anstieg = 0.0;
        Text spurName = {};
        Text sportRoh = {};
    };
    const std::string p = punkt("1", "2");
    const std::vector<Fall> faelle = {
        {"", 0, 0},
        // Segments and routes
        {"<trk><trkseg>" + p + p + "</trkseg><trkseg>" + p + "</trkseg></trk>", 3, 2},
        {"<trk><trkseg/><trkseg>" + p + "</trkseg><trkseg/><trkseg>" + p + "</trkseg></trk>", 2, 2},
        {"<rte><rtept lat='1' lon='2'/></rte><rte><rtept lat='3' lon='4'/></rte>", 2, 2},
        {"<rte><rtept lat='1' lon='2'/><rtept lat='1' lon='2'/></rte>" + p, 1, 1},
        {p + "<trkseg/>" + p + "<x:trkseg/>" + p + "<y::trkseg:/>" + p, 4, 3},
        {p + "<:/><trkseg:x/>" + p, 2, 1},
        // Coordinates
        {punkt(" 1", "2") + punkt("1", "2 ") + punkt("1,5", "2") + punkt("", "2") + punkt("nan", "1") +
             punkt("1", "inf") + punkt("1e999", "1") + punkt("0x1", "1") + "<trkpt lat='1'/>" + p,
         1, 1},
        {punkt("+1.5", "-3e2") + punkt("1e300", "-1.7e308"), 2, 1},
        {p + "<trkpt/>" + "<trkpt lat='1'/>" + "<trkpt Lat='1' x:lon='2' lon='3'/>", 1, 1},
        {"<trkpt lat='1' lon='2'><trkpt lat='3' lon='4'/></trkpt><rtept lat='1' lon='1'/>", 2, 1},
        {"<x:trkpt lat='1' lon='2'/><x:rtept lat='1' lon='2'/>", 0, 0},
        {"<trkpt><x:trkpt lat='1' lon='2'/></trkpt>", 1, 1},
        {"<trkpt lat='1' lon='2'>" + p, 1, 1},
        // Elevations
        {treppe(punkt("1", "1", kNull)), 6, 1, 100},
        {treppe(punkt("1", "1", "<ele> \n0\t</ele>")), 6, 1, 100},
        {treppe(punkt("1", "1", "<ele>7</ele><ele>0</ele>")), 6, 1, 100},
        {treppe(punkt("1", "1", "<ele>7<b/>0</ele>")), 6, 1, 100},
        {treppe(punkt("1", "1", "<ele><![CDATA[7]]>0</ele>")), 6, 1, 100},
        {treppe("<rtept lat='5' lon='5'><ele>7</ele></rtept>" + punkt("1", "1", kNull)), 6, 1, 100},
        {treppe(punkt("1", "1", "<ele>0</ele><x:ele>7</x:ele><extensions><ele>7</ele></extensions>")), 6, 1, 100},
        {treppe(punkt("1", "1")), 6, 1, 0},
        {treppe(punkt("1", "1", "<ele>0</ele><ele>0 m</ele>")), 6, 1, 0},
        {treppe(punkt("1", "1", "<ele><![CDATA[0]]></ele>")), 6, 1, 0},
        {treppe(punkt("1", "1", "<x:ele>0</x:ele>")), 6, 1, 0},
        {treppe(punkt("1", "1", "<x:trkpt lat='1' lon='1'><ele>0</ele></x:trkpt>")), 6, 1, 0},
        {treppe(punkt("1", "1", "<ele>0</ele><x:rtept lat='1' lon='1'/>")), 6, 1, 0},
        // Names
        {"<name>a</name><rte><name>b</name></rte><wpt><name>c</name></wpt>", 0, 0},
        {"<metadata><name>m</name></metadata><trk><name> \n</name></trk>", 0, 0, 0, "m"},
        {"<metadata><name>m</name></metadata><trk><name>\u00A0t \u2028</name><name>u</name></trk>", 0, 0, 0, "t"},
        {"<trk><name/></trk><trk><name>t</name></trk>", 0, 0, 0, "t"},
        {"<x:trk><name>a</name></x:trk><trk><x:name>b</x:name></trk>", 0, 0},
        {"<trk><name>abc<b/>def</name></trk>", 0, 0, 0, "def"},
        {"<trk><name><b>abc</b>def</name></trk>", 0, 0, 0, "abcdef"},
        {"<trk><name>a<b>b<c/>c</b>d<!-- e -->e</name></trk>", 0, 0, 0, "cde"},
        {"<trk><name>a&amp;<![CDATA[ b ]]>&#228;</name></trk>", 0, 0, 0, "a&ä"},
        {"<trk><name><![CDATA[a]]></name></trk>", 0, 0},
        {"<trk>a<name>b</name>c<name></name></trk>", 0, 0, 0, "b"},
        {"<trk><name>a" + punkt("1", "2", "<ele>1</ele>") + "b</name></trk>", 1, 1, 0, "1b"},
        // Sports
        {"<trk><type> </type></trk><rte><type> Running\n</type></rte><trk><type>x</type></trk>",
         0,
         0,
         0,
         {},
         "Running"},
        {"<type>a</type><metadata><type>b</type></metadata><trk><link><type>c</type></link></trk>", 0, 0},
    };
    for (const Fall& fall : faelle) {
        SCOPED_TRACE(fall.inneres);
        const GpxMetadaten eintrag = GpxLeser::ausInhalt(gpx(fall.inneres));
        EXPECT_EQ(eintrag.punkte, fall.punkte);
        EXPECT_EQ(eintrag.skizze.linien(), fall.linien);
        EXPECT_DOUBLE_EQ(eintrag.anstiegMeter, fall.anstieg);
        EXPECT_EQ(eintrag.spurName, fall.spurName);
        EXPECT_EQ(eintrag.sportRoh, fall.sportRoh);
        EXPECT_EQ(GpxLeser::ausInhalt(gpx(fall.inneres), 5), eintrag) << "in pieces";
    }
    const auto geerbt = GpxLeser::ausInhalt(gpx("<trkpt lat='1' lon='2'><trkpt lat='3' lon='4'/></trkpt>"));
    EXPECT_EQ(geerbt.ende, (Koordinate{3, 4})) << "only the next start of a point overwrites coordinates";
}

TEST(GpxLeserTest, ZeitenZaehlenNachIhrerStelle) {
    const auto mitZeiten = [](const std::vector<std::string_view>& zeiten) {
        std::string punkte = "<metadata><time>1999-01-01T00:00:00Z</time></metadata>";
        for (const std::string_view zeit : zeiten) {
            punkte += punkt("1", "2", "<time>" + std::string(zeit) + "</time>");
        }
        return GpxLeser::ausInhalt(gpx(punkte));
    };
    constexpr std::string_view acht = "2023-05-01T08:00:00Z";
    const auto um = [](std::string_view zeit) { return GpxLeser::datumAus(zeit); };
    struct Fall {
        std::vector<std::string_view> zeiten;
        std::optional<Zeitpunkt> datum;
        double dauer;
    };
    const std::vector<Fall> faelle = {
        {{}, {}, 0},
        {{"gestern"}, {}, 0},
        {{acht}, um(acht), 0},
        {{acht, acht}, um(acht), 0},
        {{"", acht, "2023-05-01T08:00:10.5Z", ""}, um(acht), 10.5},
        {{acht, "2023-05-01T07:00:00Z"}, um(acht), 0},
        {{acht, "2030-01-01T00:00:00Z", "2023-05-01T10:00:01+02:00"}, um(acht), 1},
    };
    for (const Fall& fall : faelle) {
        const auto eintrag = mitZeiten(fall.zeiten);
        EXPECT_EQ(eintrag.datum, fall.datum) << testing::PrintToString(fall.zeiten);
        EXPECT_DOUBLE_EQ(eintrag.dauerSekunden, fall.dauer) << testing::PrintToString(fall.zeiten);
        EXPECT_EQ(eintrag.hatZeitstempel, fall.dauer > 0);
    }
    const std::string zeit = "<time>" + std::string(acht) + "</time>";
    const auto datum = [](const std::string& inneres) { return GpxLeser::ausInhalt(gpx(inneres)).datum; };
    EXPECT_EQ(datum(punkt("1", "2", zeit + "<extensions><time>x</time></extensions>")), um(acht));
    EXPECT_EQ(datum("<trkpt>" + zeit + "</trkpt>" + punkt("1", "2")), std::nullopt) << "of a point that is none";
    for (const std::string_view gleich : {"2023-05-01T08:00:00", " \n2023-05-01T08:00:00Z\t", "2023-05-01T08:00:00.0",
                                          "\u20282023-05-01T10:00:00+02:00\u00A0"}) {
        EXPECT_EQ(um(gleich), um(acht)) << gleich;
    }
    for (const std::string_view keine : {"", "Z", "2023-05-01", "2023-05-01 08:00:00", "2023-05-01T08:00:00ZZ",
                                         "2023-05-01T08:00:00+0200", "2023-05-01T08:00:00 Z", "2023-05-01T08:00"}) {
        EXPECT_EQ(um(keine), std::nullopt) << keine;
    }
}

TEST(GpxLeserTest, WetterWirdUnterJedemPraefixGefunden) {
    const auto wetter = [](std::string_view inneres) { return GpxLeser::ausInhalt(gpx(inneres)).wetter; };
    EXPECT_EQ(wetter("<p:trkpt/><Wetter temp='1'/><wetter:x temp='1'/>"), std::nullopt);
    EXPECT_EQ(wetter("<ext:wetter temp='20' feuchte='50' wind='7.5' windrichtung=' NW ' lage='heiter'/>"),
              (GpxWetter{20, 50, 7.5, "NW", "heiter", 1}));
    EXPECT_EQ(wetter("<wetter temp=' 20' feuchte='50 %' wind='nan' p:lage='x'><lage>y</lage></wetter><wetter/>"),
              (GpxWetter{{}, {}, {}, {}, {}, 2}));
}

TEST(GpxLeserTest, AbgeschnitteneDateienGebenJedenFertigenPunkt) {
    const std::string ganz = "\xEF\xBB\xBF <?xml version='1.0'?>\n" +
                             gpx("<trk><name>Zug</name><type>ride</type><trkseg>" + treppe(punkt("1", "2", kNull)) +
                                 "</trkseg><trkseg>" + punkt("3", "4", "<time>2023-05-01T08:00:00Z</time>") +
                                 "</trkseg></trk><extensions><wetter temp='3'/></extensions>");
    constexpr std::string_view ende = "</trkpt>";
    for (std::size_t laenge = 0; laenge <= ganz.size(); ++laenge) {
        const auto teil = std::string_view(ganz).substr(0, laenge);
        int fertige = 0;
        for (auto i = teil.find(ende); i != std::string_view::npos; i = teil.find(ende, i + 1)) {
            ++fertige;
        }
        const auto eintrag = GpxLeser::ausInhalt(teil);
        EXPECT_EQ(eintrag.punkte, fertige) << laenge;
        EXPECT_EQ(eintrag.spurName.has_value(), teil.find("</name>") != std::string_view::npos);
        EXPECT_EQ(GpxLeser::ausInhalt(teil, 1 + laenge % 9), eintrag) << laenge;
    }
}

TEST(GpxLeserTest, UebergrosseUndFeindlicheTexteSindKeine) {
    const std::string megabyte(std::size_t{1} << 20U, 'x');
    const auto name = [](const std::string& text) {
        return GpxLeser::ausInhalt(gpx("<trk><name>" + text + "</name></trk>")).spurName;
    };
    EXPECT_EQ(name(megabyte), megabyte);
    EXPECT_EQ(name(megabyte + "y"), std::nullopt);
    EXPECT_EQ(name(megabyte + "y<b/>z"), "z");

    std::string riese;
    for (int i = 0; i < 20; ++i) {
        riese += megabyte;
    }
    const std::string spur = "<trk><name>Zug</name>" + punkt("1", "2") + "</trk>";
    const TempOrdner ordner;
    const std::string geheim = ordner.schreibe("geheim.txt", "GEHEIM");
    ASSERT_EQ(::mkfifo(ordner.in("roehre").c_str(), 0600), 0);
    const auto fremd = [&](const std::string& pfad) {
        return "<!DOCTYPE gpx SYSTEM \"" + pfad + "\" [<!ENTITY % d SYSTEM \"" + pfad + "\"> %d;" +
               "<!ENTITY e SYSTEM \"file://" + pfad + "\">]>" +
               gpx("<metadata><name>&e;</name></metadata>" + spur + "<wetter lage='&nichts;'/>");
    };
    for (const std::string& inhalt :
         {gpx("<extensions a=\"" + riese + "\"/>" + spur), gpx("<!--" + riese + "-->" + spur), fremd(geheim),
          fremd(ordner.in("roehre")), gpx(spur + "&undefiniert;" + spur), gpx(spur) + std::string(1000, '\0'),
          gpx("<wetter lage=\"" + riese + "\"/>" + spur)}) {
        SCOPED_TRACE(inhalt.substr(0, 60));
        const auto eintrag = GpxLeser::ausInhalt(inhalt);
        EXPECT_EQ(eintrag.punkte, 1);
        EXPECT_EQ(eintrag.spurName, "Zug");
        EXPECT_EQ(eintrag.wetter ? eintrag.wetter->lage : std::nullopt, std::nullopt);
        EXPECT_EQ(GpxLeser::ausInhalt(inhalt, 100'000), eintrag);
    }
}

TEST(GpxLeserTest, LiestDateienAllerArt) {
    const TempOrdner ordner;
    const std::string inhalt = gpx(punkt("51.65594", "4.94076") + punkt("-48.9", "-123.4"));
    for (const std::string_view name : {"Morgenrunde.gpx", "zwei\nZeilen.gpx",
                                        "\xF0\x9F\x9A\xB2 u\xCC\x88 \xC3\xBC.GPX", "kein-utf8-\xFF.gpx", "a.b.gpx"}) {
        const std::string pfad = ordner.schreibe(name, inhalt);
        const auto eintrag = GpxLeser::lese(pfad);
        ASSERT_TRUE(eintrag) << name;
        EXPECT_EQ(eintrag->pfad, pfad);
        EXPECT_EQ(eintrag->dateiName, name.substr(0, name.size() - 4));
        EXPECT_EQ(eintrag->dateiGroesse, static_cast<std::int64_t>(inhalt.size()));
        EXPECT_EQ(eintrag->dateiDatum, dateien::angaben(pfad)->geaendert);
        EXPECT_EQ(eintrag->punkte, 2);
        EXPECT_EQ(eintrag->start, (Koordinate{51.65594, 4.94076}));
        EXPECT_EQ(eintrag->startOrt, "'s Gravenmoer");
        EXPECT_EQ(eintrag->zielOrt, std::nullopt) << "the middle of an ocean";
        EXPECT_EQ(GpxLeser::lese(pfad), eintrag);
    }
    std::filesystem::create_symlink("Morgenrunde.gpx", ordner.in("verweis.gpx"));
    EXPECT_EQ(GpxLeser::lese(ordner.in("verweis.gpx")).value().punkte, 2);
    EXPECT_EQ(GpxLeser::lese(ordner.schreibe("leer.gpx", "")).value().punkte, 0);
    EXPECT_EQ(GpxLeser::lese(ordner.schreibe(".gpx", inhalt)).value().dateiName, ".gpx");

    std::filesystem::create_directory(ordner.in("ordner.gpx"));
    EXPECT_EQ(GpxLeser::lese(ordner.in("ordner.gpx")), std::nullopt);
    EXPECT_EQ(GpxLeser::lese(ordner.in("gibt-es-nicht.gpx")), std::nullopt);

    std::string gross;  // more than is parsed in one go
    while (gross.size() <= XmlLauf::kAmStueck) {
        gross += inhalt.substr(19, inhalt.size() - 25);
    }
    const auto groesse = static_cast<std::int64_t>(gross.size());
    const auto eintrag = GpxLeser::lese(ordner.schreibe("gross.gpx", gpx(gross)));
    ASSERT_TRUE(eintrag);
    EXPECT_EQ(eintrag->punkte, groesse / static_cast<std::int64_t>(inhalt.size() - 25) * 2);
}

TEST(GpxLeserTest, EinLesefehlerIstNichtDasEndeDerDatei) {
    const TempOrdner ordner;
    std::string inhalt;
    for (int i = 0; i < 100; ++i) {
        inhalt += punkt("1", "2");
    }
    const std::string pfad = ordner.schreibe("a.gpx", gpx(inhalt));
    std::error_code fehler;
    EXPECT_EQ(GpxLeser::lese(pfad, fehler)->punkte, 100);
    EXPECT_FALSE(fehler);
    EXPECT_TRUE(imKind([&] {
        constexpr unsigned hinterDemKopf = 1025;
        if (!scheitereAb(SYS_read, hinterDemKopf, EIO) || !scheitereAb(SYS_pread64, hinterDemKopf, EIO)) {
            return true;
        }
        std::error_code warum;
        const auto teil = GpxLeser::lese(pfad, warum);
        EXPECT_EQ(warum, std::errc::io_error);
        EXPECT_GT(teil->punkte, 1);
        EXPECT_LT(teil->punkte, 100);
        EXPECT_EQ(teil->dateiGroesse, static_cast<std::int64_t>(gpx(inhalt).size()));
        EXPECT_EQ(GpxLeser::befunde(pfad, warum), std::nullopt);
        EXPECT_EQ(warum, std::errc::io_error);
        warum.clear();
        EXPECT_TRUE(GpxLeser::orte(pfad, warum).empty());
        EXPECT_EQ(warum, std::errc::io_error);
        EXPECT_THROW(GpxSchreiber::setzeSportart(GpxSportart::rad, pfad), std::system_error) << "says what it is";
        EXPECT_FALSE(dateien::liesGanz(pfad).has_value());
        return !testing::Test::HasFailure();
    }));
    const KeineNummern keine;
    const auto leer = GpxLeser::lese(pfad, fehler);
    EXPECT_EQ(leer->punkte, 0);
    EXPECT_EQ(fehler, std::errc::too_many_files_open);
    EXPECT_EQ(GpxLeser::lese(ordner.in("fehlt.gpx"), fehler), std::nullopt);
    EXPECT_FALSE(fehler) << "what has vanished is no error";
}

TEST(GpxLeserTest, GroesseUndDatumSindDieVorDemErstenByte) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("a.gpx", gpx(punkt("1", "2")));
    std::filesystem::last_write_time(pfad, std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
    const auto vorher = dateien::angaben(pfad).value();
    std::error_code fehler;
    const auto eintrag = GpxLeser::lese(pfad, fehler, [&] {
        ordner.schreibe("a.gpx", gpx(punkt("1", "2") + punkt("3", "4")));
        return false;
    });
    EXPECT_NE(dateien::angaben(pfad)->geaendert, vorher.geaendert);
    EXPECT_EQ(eintrag->dateiDatum, vorher.geaendert) << "or a record of the old bytes would pass for one of the new";
    EXPECT_EQ(eintrag->dateiGroesse, vorher.groesse);

    EXPECT_EQ(GpxLeser::lese(pfad, fehler, [] { return true; }), std::nullopt);
    EXPECT_EQ(fehler, std::errc::operation_canceled);
}

TEST(GpxLeserTest, DieZeitWaechstMitDerGroesseUndNichtSchneller) {
    const auto zeit = [](std::size_t megabytes) {
        const std::string inhalt = "<gpx><a b='" + std::string(megabytes << 20U, 'x') + "'/></gpx>";
        Weghoerer niemand;
        double beste = 1e9;
        for (int i = 0; i < 3; ++i) {
            const std::clock_t anfang = std::clock();
            (void)GpxLeser::ausInhalt(inhalt, 4096);
            EXPECT_TRUE(XmlLauf::orte(xmlInhalt(inhalt), niemand));
            beste = std::min(beste, static_cast<double>(std::clock() - anfang));
        }
        return beste;
    };
    EXPECT_LT(zeit(16), 3.0 * 4.0 * zeit(4)) << "four times as much; a square would be sixteen times as long";
}

}  // namespace spurkiste
