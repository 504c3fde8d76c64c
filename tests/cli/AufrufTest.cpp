#include <vector>

#include <gtest/gtest.h>

#include "cli/Aufruf.h"

namespace spurkiste {
namespace {

using Argumente = std::vector<std::string_view>;

TEST(Aufruf, readsEveryRightCall) {
    struct Fall {
        Argumente argumente;
        Aufruf erwartet;
    };
    using Befehl = Aufruf::Befehl;
    using Format = Aufruf::Format;
    const std::vector<Fall> faelle = {
        {{"--help"}, {Befehl::hilfe, "", Format::tabelle, {}, false}},
        {{"liste", "-h"}, {Befehl::hilfe, "", Format::tabelle, {}, false}},
        {{"--version"}, {Befehl::version, "", Format::tabelle, {}, false}},
        {{"liste", "/a"}, {Befehl::liste, "/a", Format::tabelle, {}, false}},
        {{"--format", "json", "liste", "."}, {Befehl::liste, ".", Format::json, {}, false}},
        {{"liste", "--format=csv", "a b", "--ohne-cache"}, {Befehl::liste, "a b", Format::csv, {}, true}},
        {{"liste", "x", "--ressourcen", "/r", "--format=tabelle"}, {Befehl::liste, "x", Format::tabelle, "/r", false}},
        {{"liste", "--", "--format"}, {Befehl::liste, "--format", Format::tabelle, {}, false}},
        {{"liste", "-"}, {Befehl::liste, "-", Format::tabelle, {}, false}},
        {{"doppelte", "/a"}, {Befehl::doppelte, "/a", Format::tabelle, {}, false}},
        {{"pruefe", "/a", "b.gpx", "--json"},
         {Befehl::pruefe, "", Format::tabelle, {}, false, {"/a", "b.gpx"}, {}, true}},
        {{"sport", "e_bike", "a.gpx", "b"},
         {Befehl::sport, "", Format::tabelle, {}, false, {"a.gpx", "b"}, GpxSportart::eBike, false}},
    };
    for (const Fall& fall : faelle) {
        const auto ergebnis = Aufruf::lies(fall.argumente);
        const auto* aufruf = std::get_if<Aufruf>(&ergebnis);
        ASSERT_NE(aufruf, nullptr) << std::get<Aufruf::Fehler>(ergebnis).text;
        EXPECT_EQ(aufruf->befehl, fall.erwartet.befehl);
        EXPECT_EQ(aufruf->ordner, fall.erwartet.ordner);
        EXPECT_EQ(aufruf->format, fall.erwartet.format);
        EXPECT_EQ(aufruf->ressourcen, fall.erwartet.ressourcen);
        EXPECT_EQ(aufruf->ohneCache, fall.erwartet.ohneCache);
        EXPECT_EQ(aufruf->dateien, fall.erwartet.dateien);
        EXPECT_EQ(aufruf->sport, fall.erwartet.sport);
        EXPECT_EQ(aufruf->json, fall.erwartet.json);
    }
}

TEST(Aufruf, answersEveryWrongCallWithOneLine) {
    const std::vector<Argumente> faelle = {
        {},
        {"zeige"},
        {"liste"},
        {"liste", ""},
        {"liste", "a", "b"},
        {"liste", "a", "--format"},
        {"liste", "a", "--format="},
        {"liste", "a", "--format", "xml"},
        {"liste", "a", "--ressourcen"},
        {"liste", "a", "--ohne-cache=ja"},
        {"liste", "a", "--schnell"},
        {"liste", "a", "-x"},
        {"--help=ja"},
        {"sport"},
        {"sport", "fliegen", "a.gpx"},
        {"sport", "cycling"},
        {"sport", "cycling", ""},
        {"sport", "cycling", "a.gpx", "--json"},
        {"pruefe"},
        {"pruefe", "a", "--format", "json"},
        {"doppelte", "a", "b"},
        {"doppelte", "a", "--ohne-cache"},
    };
    for (const Argumente& argumente : faelle) {
        const auto ergebnis = Aufruf::lies(argumente);
        const auto* fehler = std::get_if<Aufruf::Fehler>(&ergebnis);
        ASSERT_NE(fehler, nullptr) << (argumente.empty() ? "" : argumente.back());
        EXPECT_FALSE(fehler->text.empty());
        EXPECT_EQ(fehler->text.find('\n'), std::string::npos);
    }
}

}  // namespace
}  // namespace spurkiste
