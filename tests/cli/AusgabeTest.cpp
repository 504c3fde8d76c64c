#include <gtest/gtest.h>

#include "cli/Ausgabe.h"

namespace spurkiste {
namespace {

Eintrag voll() {
    GpxMetadaten e;
    e.pfad = "/b/a,\"b\"\n.gpx";
    e.dateiName = "a,\"b\"\n";
    e.datum = Zeitpunkt::ausIso8601("1999-12-31T23:59:59.75Z");
    e.dateiDatum = {0.0};
    e.dateiGroesse = 12;
    e.streckeMeter = 1234.5;
    e.dauerSekunden = 90;
    e.anstiegMeter = 1e300;
    e.punkte = 2;
    e.start = Koordinate{47.5, -8.25};
    e.hatZeitstempel = true;
    e.wetter = GpxWetter{21.5, std::nullopt, 3.0, "NW", std::nullopt, 4};
    return std::make_shared<const GpxMetadaten>(std::move(e));
}

std::string csv(const Bibliothek::Eintraege& eintraege, Textform form = Textform::roh) {
    std::string text;
    ausgabe::alsCsv(eintraege, form, [&](std::string_view stueck) { text += stueck; });
    return text;
}

TEST(Csv, quotesWhatMustBeQuotedAndLeavesAbsentValuesEmpty) {
    const std::string kopf = csv({});
    EXPECT_TRUE(kopf.ends_with(",messpunkte\r\n"));
    EXPECT_EQ(
        csv({voll()}).substr(kopf.size()),
        "\"/b/a,\"\"b\"\"\n.gpx\",\"a,\"\"b\"\"\n\",,1999-12-31T23:59:59Z,2001-01-01T00:00:00Z,12,1234.5,90,1e+300,2,"
        "47.5,-8.25,,,false,true,,,,21.5,,3,NW,,4\r\n");
}

TEST(Csv, namesAreNeitherFormulasNorOrdersToATerminal) {
    const std::size_t kopf = csv({}).size();
    for (const auto& [name, sicher] :
         std::vector<std::pair<std::string, std::string>>{{"=1+1", "'=1+1"},
                                                          {"+cmd|' /C calc'!A0", "'+cmd|' /C calc'!A0"},
                                                          {"-2+3", "'-2+3"},
                                                          {"@SUM(A1)", "'@SUM(A1)"},
                                                          {"\t =1", "'  =1"},
                                                          {"＝1", "'＝1"},
                                                          {"-12.5", "-12.5"},
                                                          {"a=b", "a=b"},
                                                          {"rot\x1b[31m\nzwei", "rot [31m zwei"},
                                                          {"=\"a\",b", "\"'=\"\"a\"\",b\""},
                                                          {"\xff", "\xEF\xBF\xBD"}}) {
        GpxMetadaten e;
        e.pfad = "/b/x.gpx";
        e.dateiName = name;
        e.start = Koordinate{-47.5, -8.25};
        const std::string zeile = csv({std::make_shared<const GpxMetadaten>(e)}, Textform::sicher).substr(kopf);
        EXPECT_TRUE(zeile.starts_with("/b/x.gpx," + sicher + ",,,")) << zeile;
        EXPECT_NE(zeile.find(",-47.5,-8.25,"), std::string::npos) << zeile;
    }
}

TEST(Json, isOneArrayWhateverItHolds) {
    const auto json = [](const Bibliothek::Eintraege& eintraege) {
        std::string text;
        ausgabe::alsJson(eintraege, [&](std::string_view stueck) { text += stueck; });
        return text;
    };
    EXPECT_EQ(json({}), "[]\n");
    const std::string zwei = json({voll(), voll()});
    EXPECT_TRUE(zwei.starts_with("[{\"pfad\":\"/b/a,\\\"b\\\"\\u000a.gpx\","));
    EXPECT_NE(zwei.find("},\n{"), std::string::npos);
    EXPECT_TRUE(zwei.ends_with("}]\n"));
}

}  // namespace
}  // namespace spurkiste
