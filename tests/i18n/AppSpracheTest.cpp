#include <cstdlib>
#include <thread>

#include <gtest/gtest.h>

#include "hilfe/SpeicherEinstellungen.h"
#include "hilfe/TempOrdner.h"
#include "i18n/AppSprache.h"
#include "platform/Ressourcen.h"

namespace spurkiste {
namespace {

TEST(AppSprache, AsksSettingAndSystemAnewEachTime) {
    SpeicherEinstellungen einstellungen;
    FesteUmgebung umgebung;
    EXPECT_EQ(AppSprache::code(), "de");
    AppSprache::richteEin(&einstellungen, &umgebung);
    umgebung.sprachen = {"fr-CH"};
    EXPECT_EQ(AppSprache::text("hiking"), "Rando");
    einstellungen.schreibe("appLanguage", "ja");
    EXPECT_EQ(AppSprache::text("hiking"), "ハイク");
    einstellungen.schreibe("appLanguage", "xx");
    EXPECT_EQ(AppSprache::code(), "xx");
    EXPECT_EQ(AppSprache::text("hiking"), "Hiking");
    einstellungen.schreibe("appLanguage", "");
    EXPECT_EQ(AppSprache::code(), "fr");
    einstellungen.schreibe("appLanguage", "system");
    umgebung.sprachen = {"sv"};
    EXPECT_EQ(AppSprache::text("weather"), "Väder");
    AppSprache::richteEin(nullptr, nullptr);
    EXPECT_EQ(AppSprache::text("weather"), "Wetter");
}

/// First use from many threads, of a file that is unusable and is replaced by a good one later.
bool bleibtOhneDatei() {
    const TempOrdner ordner;
    ordner.schreibe("translations.json", R"({"keys": ["time"], "languages": {"en": {"name": "E"}}})");
    ressourcen::setzeOrdner(ordner.pfad());
    {
        std::vector<std::jthread> faeden(8);
        for (auto& faden : faeden) {
            faden = std::jthread([] { static_cast<void>(AppSprache::text("time")); });
        }
    }
    ordner.schreibe("translations.json", R"({"keys": ["time"], "languages": {"en": {"name": "E", "values": ["T"]}}})");
    FesteUmgebung umgebung;
    umgebung.sprachen = {"de-DE"};
    AppSprache::richteEin(nullptr, &umgebung);
    const bool ohne =
        AppSprache::text("time") == "time" && AppSprache::code() == "en" && AppSprache::sprachen().empty();
    umgebung.sprachen = {"zh-CN"};
    return ohne && AppSprache::code() == "zh-Hans";
}

TEST(AppSprache, LivesWithoutAFileForTheWholeRun) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");  // a process of its own, since the file is read once
    EXPECT_EXIT(std::exit(bleibtOhneDatei() ? 0 : 1), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace spurkiste
