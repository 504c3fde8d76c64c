#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "track/XmlZeichen.h"

namespace spurkiste {

TEST(XmlZeichenTest, KenntDieGrenzenDerErlaubtenZeichenAnJederStelleEinesBlocks) {
    using namespace std::string_view_literals;
    const std::vector<std::pair<std::string_view, bool>> faelle = {
        {"\0"sv, false},
        {"\x08"sv, false},
        {"\t\n\r"sv, true},
        {"\x0B"sv, false},
        {"\x0C"sv, false},
        {"\x0E"sv, false},
        {"\x1F"sv, false},
        {" \x7F"sv, true},
        {"\x80"sv, false},
        {"\xBF"sv, false},
        {"\xC0\x80"sv, false},
        {"\xC1\xBF"sv, false},
        {"\xC2\x80"sv, true},
        {"\xDF\xBF"sv, true},
        {"\xC3"sv, false},
        {"\xC3\x7F"sv, false},
        {"\xC3\xC0"sv, false},
        {"\xE0\x9F\xBF"sv, false},
        {"\xE0\xA0\x80"sv, true},
        {"\xE2\x82"sv, false},
        {"\xE2\x82\x7F"sv, false},
        {"\xE2\x82\xC0"sv, false},
        {"\xED\x9F\xBF"sv, true},
        {"\xED\xA0\x80"sv, false},
        {"\xEE\x80\x80"sv, true},
        {"\xEF\xBB\xBF"sv, true},
        {"\xEF\xBF\xBD"sv, true},
        {"\xEF\xBF\xBE"sv, false},
        {"\xEF\xBF\xBF"sv, false},
        {"\xF0\x8F\xBF\xBF"sv, false},
        {"\xF0\x90\x80\x80"sv, true},
        {"\xF0\x9F\x9A"sv, false},
        {"\xF0\x9F\x9A\xC0"sv, false},
        {"\xF0\x9F\xBF\xBF"sv, true},
        {"\xF4\x8F\xBF\xBF"sv, true},
        {"\xF4\x90\x80\x80"sv, false},
        {"\xF5\x80\x80\x80"sv, false},
        {"\xFF"sv, false},
    };
    for (std::size_t i = 0; i < faelle.size(); ++i) {
        for (std::size_t davor = 0; davor < 36; ++davor) {
            for (const std::size_t danach : {0U, 1U, 15U, 16U, 40U}) {
                std::string text(davor, 'x');
                text.append(faelle[i].first).append(danach, '\n');
                EXPECT_EQ(xmlzeichen::alleErlaubt(text), faelle[i].second) << i << " behind " << davor;
                EXPECT_EQ(xmlzeichen::einzeln::alleErlaubt(text), faelle[i].second) << i << " behind " << davor;
            }
        }
    }
}

TEST(XmlZeichenTest, FindetDasErsteBesondereZeichenUndKeinAnderes) {
    for (int byte = 0; byte < 256; ++byte) {
        const char zeichen = static_cast<char>(byte);
        const bool beendetText = std::string_view("<&]\r\0", 5).find(zeichen) != std::string_view::npos;
        const bool beendetWert = std::string_view("<&'").find(zeichen) != std::string_view::npos || byte < 0x20;
        for (std::size_t davor = 0; davor < 36; ++davor) {
            std::string text(davor, 'x');
            text.append(1, zeichen).append(20, '>').append(16, '\0');
            const char* const treffer = text.data() + davor;
            const char* const null = treffer + 21;
            EXPECT_EQ(xmlzeichen::textende(text.data()), beendetText ? treffer : null) << byte;
            EXPECT_EQ(xmlzeichen::einzeln::textende(text.data()), beendetText ? treffer : null) << byte;
            EXPECT_EQ(xmlzeichen::wertende(text.data(), '\''), beendetWert ? treffer : null) << byte;
            EXPECT_EQ(xmlzeichen::einzeln::wertende(text.data(), '\''), beendetWert ? treffer : null) << byte;
        }
    }
}

}  // namespace spurkiste
