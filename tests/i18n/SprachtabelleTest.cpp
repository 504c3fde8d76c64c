#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "i18n/Sprachtabelle.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;

TEST(Sprachtabelle, ChoosesTheCode) {
    const Sprachtabelle tabelle{{"time"}, {{"de", {}}, {"en", {}}, {"pt", {}}, {"ru", {}}, {"ßa", {}}, {"x", {}}}};
    const Sprachtabelle ohneDeutsch{{"time"}, {{"en", {}}}};
    const struct {
        const Sprachtabelle* tabelle;
        std::string gewaehlt;
        std::vector<std::string> bevorzugt;
        std::string code;
    } faelle[] = {
        {&tabelle, "system", {"de-CH", "fr"}, "de"},
        {&tabelle, "system", {"PT-br"}, "pt"},
        {&tabelle, "system", {"fr-FR", "de"}, "en"},  // only the first preference is asked
        {&tabelle, "system", {"ru_RU"}, "ru"},        // not in the menu, but in the file
        {&tabelle, "system", {"ßab"}, "ßa"},          // characters, not bytes
        {&tabelle, "system", {"x"}, "x"},
        {&tabelle, "system", {""}, "en"},
        {&tabelle, "system", {"zh-Hant-HK"}, "zh-Hant"},
        {&tabelle, "system", {"ZH-tw"}, "zh-Hant"},
        {&tabelle, "system", {"zh-HK"}, "zh-Hans"},
        {&tabelle, "system", {"zh"}, "zh-Hans"},
        {&tabelle, "system", {}, "de"},
        {&ohneDeutsch, "system", {}, "en"},
        {nullptr, "system", {"fr-FR"}, "en"},
        {nullptr, "system", {"zh-TW"}, "zh-Hant"},
        {&tabelle, "xx", {"de"}, "xx"},
        {&tabelle, "System", {"de"}, "System"},
        {&tabelle, "", {"de"}, ""},
    };
    for (const auto& fall : faelle) {
        EXPECT_EQ(Sprachtabelle::code(fall.tabelle, fall.gewaehlt, fall.bevorzugt), fall.code)
            << fall.gewaehlt << " / " << (fall.bevorzugt.empty() ? "nothing" : fall.bevorzugt.front());
    }
}

TEST(Sprachtabelle, FindsTheText) {
    const Sprachtabelle mitEnglisch{{"time", "sport", "time", "end"},
                                    {{"de", {"Deutsch", {"Zeit", "Sport", "Uhrzeit"}}},
                                     {"en", {"English", {"Time", "Sport", "Clock", "Finish"}}},
                                     {"kurz", {"Kurz", {}}}}};
    const Sprachtabelle ohneEnglisch{{"time"}, {{"de", {"Deutsch", {"Zeit"}}}}};
    const struct {
        const Sprachtabelle& tabelle;
        std::string code, key, text;
    } faelle[] = {
        {mitEnglisch, "de", "time", "Zeit"},  // the first of two equal keys
        {mitEnglisch, "de", "end", "end"},    // a known language never borrows from English
        {mitEnglisch, "kurz", "time", "time"}, {mitEnglisch, "fr", "end", "Finish"},
        {mitEnglisch, "", "end", "Finish"},    {mitEnglisch, "de", "Time", "Time"},
        {ohneEnglisch, "fr", "time", "time"},  {Sprachtabelle{}, "de", "time", "time"},
    };
    for (const auto& fall : faelle) {
        EXPECT_EQ(fall.tabelle.text(fall.code, fall.key), fall.text) << fall.code << " / " << fall.key;
    }
}

TEST(Sprachtabelle, ReadsTheFile) {
    const auto tabelle = Sprachtabelle::ausJson(
        "\xEF\xBB\xBF"
        R"({"version": [1.5, null, {"keys": 3}], "keys": 7, "keys": ["a", "b", "a"],
            "languages": {"zh-Hant": {"values": ["\u00e4", ""], "name": "繁"}, "en": false, "ru": {"name": "р", "values": []},
                          "en": {"name": 1, "name": "E", "values": ["1"], "note": {}}}})");
    ASSERT_TRUE(tabelle);
    EXPECT_THAT(tabelle->keys, ElementsAre("a", "b", "a"));
    EXPECT_THAT(tabelle->languages, ElementsAre(std::pair("en", Sprachtabelle::Eintrag{"E", {"1"}}),
                                                std::pair("ru", Sprachtabelle::Eintrag{"р", {}}),
                                                std::pair("zh-Hant", Sprachtabelle::Eintrag{"繁", {"ä", ""}})));
    EXPECT_THAT(tabelle->sprachen(),
                ElementsAre(Sprachtabelle::Sprache{"en", "E"}, Sprachtabelle::Sprache{"zh-Hant", "繁"}));
    EXPECT_TRUE(Sprachtabelle::ausJson(R"({"keys": [], "languages": {}})"));
}

TEST(Sprachtabelle, RefusesWhatIsNoLanguageFile) {
    for (const std::string_view json :
         {"", "null", R"({"keys": []})", R"({"languages": {}})", R"({"keys": ["a", 1], "languages": {}})",
          R"({"keys": [], "languages": []})", R"({"keys": [], "languages": {"de": []}})",
          R"({"keys": [], "languages": {"de": {"name": "D"}}})", R"({"keys": [], "languages": {"de": {"values": []}}})",
          R"({"keys": [], "languages": {"de": {"name": "D", "values": "x"}}})",
          R"({"keys": [], "languages": {"en": {"name": "E", "values": []}, "xx": {"name": "X", "values": [1]}}})",
          R"({"keys": [], "languages": {}} x)", R"({"keys": [], "languages": {})",
          R"({"keys": [], "languages": {}, "more": tru})", "{\"keys\": [\"\xff\"], \"languages\": {}}"}) {
        EXPECT_FALSE(Sprachtabelle::ausJson(json)) << json;
    }
}

}  // namespace
}  // namespace spurkiste
