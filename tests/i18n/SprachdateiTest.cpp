// The shipped language file: complete, clean, and narrow enough for the places where its texts stand.

#include <iterator>
#include <map>
#include <set>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "base/Text.h"
#include "i18n/Sprachtabelle.h"
#include "i18n/Textbefehle.h"
#include "platform/Ressourcen.h"

namespace spurkiste {
namespace {

const std::string kSportarten =
    "cycling running motorcycling driving hiking walking mountain_biking gravel_cycling e_bike trail_running swimming "
    "skiing inline_skating rowing kayaking";
const std::string kUebrige =
    " routes name date sport length time ascent points type sportAll system language files total classification "
    "selectedRoute distance route roundTrip ghostReady noTimestamps start end show selectRoute weather changeSport "
    "import folder reload";

std::vector<std::string> woerter(const std::string& text) {
    std::istringstream strom(text);
    return {std::istream_iterator<std::string>(strom), {}};
}

const Sprachtabelle& datei() {
    static const auto eine =
        Sprachtabelle::ausJson(dateien::liesGanz(ressourcen::finde("translations", "json").value()).value()).value();
    return eine;
}

TEST(Sprachdatei, HasEveryLanguageUnderItsOwnName) {
    std::vector<std::string> namen;
    for (const auto& sprache : datei().sprachen()) {
        namen.push_back(sprache.name);
    }
    EXPECT_THAT(namen,
                testing::ElementsAre("Deutsch", "English", "Français", "Español", "Italiano", "Nederlands", "Português",
                                     "Polski", "Čeština", "Dansk", "Svenska", "Norsk bokmål", "Suomi", "Türkçe",
                                     "Українська", "日本語", "한국어", "简体中文", "繁體中文"));
    EXPECT_EQ(datei().languages.size(), namen.size());
}

TEST(Sprachdatei, HasWordsForEditingTextInEveryLanguage) {
    const auto worte = [](const std::string& code) {
        std::set<std::string> alle;
        for (int i = 0; i <= static_cast<int>(Textbefehl::allesAuswaehlen); ++i) {
            alle.emplace(textbefehl(static_cast<Textbefehl>(i), code));
        }
        return alle;
    };
    std::set<std::set<std::string>> verschiedene;
    for (const auto& [code, sprache] : datei().languages) {
        EXPECT_EQ(worte(code).size(), 7) << code;
        verschiedene.insert(worte(code));
        for (const std::string& wort : worte(code)) {
            EXPECT_EQ(wort, text::nfc(text::trimme(wort))) << code;
        }
    }
    EXPECT_EQ(verschiedene.size(), datei().languages.size()) << "a language has the words of another";
    EXPECT_EQ(worte("xx"), worte("en"));
    EXPECT_EQ(textbefehl(Textbefehl::allesAuswaehlen, "pt"), "Selecionar tudo");
}

TEST(Sprachdatei, HasEveryTextCleanlyWritten) {
    EXPECT_THAT(datei().keys, testing::UnorderedElementsAreArray(woerter(kSportarten + kUebrige)));
    for (const auto& [code, sprache] : datei().languages) {
        ASSERT_EQ(sprache.values.size(), datei().keys.size()) << code;
        for (const std::string& text : sprache.values) {
            EXPECT_FALSE(text.empty()) << code;
            EXPECT_EQ(text, text::trimme(text)) << code;
            EXPECT_EQ(text, text::einzeilig(text)) << code;
            EXPECT_EQ(text, text::nfc(text)) << code;
        }
    }
}

TEST(Sprachdatei, FitsItsPlaces) {
    // Widths in columns, two for an East Asian character; the columns of the table are that narrow.
    const std::map<std::string, std::size_t> hoechstens{{"date", 13}, {"sport", 12},  {"length", 9},
                                                        {"time", 8},  {"ascent", 10}, {"points", 7},
                                                        {"type", 10}, {"start", 11},  {"end", 11}};
    for (const auto& [code, sprache] : datei().languages) {
        std::set<std::string> namen;
        for (const std::string& key : woerter(kSportarten)) {
            const std::string name = datei().text(code, key);
            EXPECT_LE(text::spalten(name), 13U) << code << ": " << name;
            EXPECT_TRUE(namen.insert(name).second) << code << ": two sports are called " << name;
        }
        for (const auto& [key, breite] : hoechstens) {
            EXPECT_LE(text::spalten(datei().text(code, key)), breite) << code << ": " << datei().text(code, key);
        }
    }
}

TEST(Sprachdatei, WritesTheCaptionsInCapitals) {
    const std::set<std::string> ohneGrossbuchstaben{"ja", "ko", "zh-Hans", "zh-Hant"};
    for (const auto& [code, sprache] : datei().languages) {
        for (const char* key : {"selectedRoute", "changeSport"}) {
            const std::string text = datei().text(code, key);
            EXPECT_EQ(text, text::gross(text, code));
            EXPECT_EQ(text == text::klein(text), ohneGrossbuchstaben.contains(code)) << text;
        }
    }
}

}  // namespace
}  // namespace spurkiste
