#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Text.h"

namespace spurkiste {

namespace {

using Paare = std::vector<std::pair<std::string, std::string>>;

const std::string kNul("\0", 1);

}  // namespace

TEST(TextTest, ErkenntUtf8) {
    for (const std::string_view text :
         {"", "Zug", "Zürich", "日本", "\xF0\x9F\x9A\xB2", "\xEF\xBB\xBF", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_TRUE(text::istUtf8(text)) << text;
    }
    for (const std::string_view text :
         {"\xFC", "Z\xFCrich", "\xC3", "ab\xE6\x97", "\xC0\x80", "\xC1\xBF", "\xE0\x80\xAF", "\xED\xA0\x80",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\x80", "a\xFF"}) {
        EXPECT_FALSE(text::istUtf8(text)) << text;
    }
    EXPECT_TRUE(text::istUtf8(kNul));
}

TEST(TextTest, TrimmtWeissraumDesUnicode) {
    const Paare faelle = {
        {"", ""},
        {" \t\r\n ", ""},
        {" a b ", "a b"},
        {"\xC2\xA0Weg\xE2\x80\xAF", "Weg"},    // no-break spaces
        {"\xE3\x80\x80日\xE2\x80\xA8", "日"},  // ideographic space, line separator
        {"\xC2\x85x\x0B\x0C", "x"},
        {"\xE2\x80\x8Bx", "\xE2\x80\x8Bx"},  // a zero width space is none
        {"\xFF x \xC3", "\xFF x \xC3"},      // bytes that are not UTF-8 are none
        {" \x80 ", "\x80"},
        {"x\xA0", "x\xA0"},  // a lone byte of a no-break space
        {kNul + " ", kNul},
    };
    for (const auto& [text, getrimmt] : faelle) {
        EXPECT_EQ(text::trimme(text), getrimmt) << text;
    }
}

TEST(TextTest, MachtKleinUndKomponiert) {
    const Paare klein = {{"ÄPFEL.GPX", "äpfel.gpx"},
                         {"GPX", "gpx"},
                         {"ΟΔΟΣ", "οδος"},
                         {"İ", "i\xCC\x87"},
                         {"A\xFF"
                          "B",
                          "a\xFF"
                          "b"},
                         {"", ""}};
    for (const auto& [text, ergebnis] : klein) {
        EXPECT_EQ(text::klein(text), ergebnis) << text;
    }
    const Paare nfc = {{"u\xCC\x88", "ü"},
                       {"ü", "ü"},
                       {"\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB", "한"},
                       {"\xE2\x84\xAB", "Å"},
                       {"q\xCC\xA3\xCC\x87", "q\xCC\xA3\xCC\x87"},
                       {"q\xCC\x87\xCC\xA3", "q\xCC\xA3\xCC\x87"},
                       {"u\xCC\x88\xFF", "u\xCC\x88\xFF"},
                       {"ﬁ", "ﬁ"}};
    for (const auto& [text, ergebnis] : nfc) {
        EXPECT_EQ(text::nfc(text), ergebnis) << text;
    }
}

TEST(TextTest, ZaehltSpaltenUndSchneidetZwischenZeichen) {
    const std::vector<std::pair<std::string, std::size_t>> breiten = {
        {"", 0},         {"Zürich", 6},      {"Zu\xCC\x88rich", 6},
        {"日本", 4},     {"한", 2},          {"\xE1\x84\x92\xE1\x85\xA1\xE1\x86\xAB", 2},
        {"🚲", 2},        {"\xFF", 1},        {"a\x1B[b", 3},
        {"ｆｕｌｌ", 8}, {"\xE2\x80\x8D", 0}};
    for (const auto& [text, spalten] : breiten) {
        EXPECT_EQ(text::spalten(text), spalten) << text;
    }
    const std::vector<std::tuple<std::string, std::size_t, std::string>> schnitte = {
        {"Zürich", 3, "Zür"},
        {"Zürich", 6, "Zürich"},
        {"Zürich", 99, "Zürich"},
        {"Zu\xCC\x88rich", 2, "Zu\xCC\x88"},  // the mark stays with its letter
        {"日本", 3, "日"},                    // half a character is none
        {"日本", 1, ""},
        {"a👨\xE2\x80\x8D👩\xE2\x80\x8D👧b", 3, "a"},  // a family is one character
        {"a\xFF"
         "b",
         2, "a\xFF"},
        {"", 5, ""},
        {"abc", 0, ""}};
    for (const auto& [text, breite, anfang] : schnitte) {
        EXPECT_EQ(text::anfangBis(text, breite), anfang) << text;
    }
}

TEST(TextTest, MachtTextSicherFuerEineZeile) {
    const Paare faelle = {{"a\nb\r\tc", "a b  c"},
                          {"\x1B[31mrot", " [31mrot"},
                          {"a\xC2\x9B"
                           "b",
                           "a b"},  // a control sequence in one character
                          {"x\xE2\x80\xAE"
                           "gpx.exe\xE2\x80\xA9",
                           "x gpx.exe "},  // right to left override
                          {"Z\xFCrich\xE6\x97", "Z\xEF\xBF\xBDrich\xEF\xBF\xBD"},
                          {"👨\xE2\x80\x8D👩", "👨\xE2\x80\x8D👩"},
                          {kNul, " "},
                          {"日本", "日本"}};
    for (const auto& [text, zeile] : faelle) {
        EXPECT_EQ(text::einzeilig(text), zeile) << text;
    }
}

TEST(TextTest, ZeigtJsonOhneSteuerzeichenMitDemselbenWert) {
    const Paare faelle = {{"[\"a\",\n\"\\u001b\"]\n", "[\"a\",\n\"\\u001b\"]\n"},
                          {"\"\x7F\xC2\x9B[31m\"", R"("\u007f\u009b[31m")"},
                          {"\"x\xE2\x80\xAEgpx\xE2\x80\xA8\"", R"("x\u202egpx\u2028")"},
                          {"\"Zürich 日本 👨\xE2\x80\x8D👩\"", "\"Zürich 日本 👨\xE2\x80\x8D👩\""},
                          {"", ""}};
    for (const auto& [json, gezeigt] : faelle) {
        EXPECT_EQ(text::jsonGezeigt(json), gezeigt);
    }
}

TEST(TextTest, KenntEinByteZeichensaetze) {
    const auto windows = text::einByteZeichensatz("windows-1252");
    ASSERT_TRUE(windows.has_value());
    for (std::size_t byte = 0; byte < 128; ++byte) {
        EXPECT_EQ((*windows)[byte], static_cast<std::int32_t>(byte));
    }
    EXPECT_EQ((*windows)[0x80], 0x20AC);
    EXPECT_EQ((*windows)[0xFC], 0xFC);
    const auto griechisch = text::einByteZeichensatz("ISO-8859-7");
    ASSERT_TRUE(griechisch.has_value());
    EXPECT_EQ((*griechisch)[0xE1], 0x3B1);
    EXPECT_EQ((*griechisch)[0xFF], -1) << "no character has this byte";
    for (const char* name : {"", "UTF-8", "UTF-16", "Shift_JIS", "GB18030", "UTF-7", "no such encoding"}) {
        EXPECT_FALSE(text::einByteZeichensatz(name).has_value()) << name;
    }
}

}  // namespace spurkiste
