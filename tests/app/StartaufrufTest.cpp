#include <vector>

#include <gtest/gtest.h>

#include "app/Startaufruf.h"

namespace spurkiste {
namespace {

using Argumente = std::vector<std::string_view>;
using Befehl = Startaufruf::Befehl;

TEST(Startaufruf, readsEveryRightCall) {
    struct Fall {
        Argumente argumente;
        Befehl befehl;
        std::optional<std::string> ordner;
        std::vector<std::string> dateien = {};
    };
    const std::vector<Fall> faelle = {
        {{}, Befehl::fenster, std::nullopt},
        {{"--ordner", "a b"}, Befehl::fenster, "a b"},
        {{"--ordner=/x"}, Befehl::fenster, "/x"},
        {{"--ordner", "/x", "--version"}, Befehl::version, "/x"},
        {{"-h"}, Befehl::hilfe, std::nullopt},
        {{"a.gpx", "--ordner", "/x", "b c.gpx"}, Befehl::fenster, "/x", {"a.gpx", "b c.gpx"}},
        {{"--", "--help", "-"}, Befehl::fenster, std::nullopt, {"--help", "-"}},
    };
    for (const Fall& fall : faelle) {
        const auto ergebnis = Startaufruf::lies(fall.argumente);
        const auto* aufruf = std::get_if<Startaufruf>(&ergebnis);
        ASSERT_NE(aufruf, nullptr) << std::get<Startaufruf::Fehler>(ergebnis).text;
        EXPECT_EQ(aufruf->befehl, fall.befehl);
        EXPECT_EQ(aufruf->ordner, fall.ordner);
        EXPECT_EQ(aufruf->dateien, fall.dateien);
    }
}

TEST(Startaufruf, answersEveryWrongCallWithOneLine) {
    for (const Argumente& argumente :
         std::vector<Argumente>{{"--ordner"}, {"--ordner", ""}, {"--ordner="}, {"--foo"}, {"--ordnerx=/a"}, {""}}) {
        const auto ergebnis = Startaufruf::lies(argumente);
        const auto* fehler = std::get_if<Startaufruf::Fehler>(&ergebnis);
        ASSERT_NE(fehler, nullptr) << argumente.front();
        EXPECT_EQ(fehler->text.find('\n'), std::string::npos);
    }
}

}  // namespace
}  // namespace spurkiste
