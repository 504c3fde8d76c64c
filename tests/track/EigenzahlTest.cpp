#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Zahl.h"
#include "track/Eigenzahl.h"

namespace spurkiste {
namespace {

/// How many characters were read as a number; -1 when none was.
template <class Zahl>
std::ptrdiff_t lies(const std::string& text, Zahl& zahl) {
    const std::string mitPolster = text + std::string(64, '\0');
    const char* const ende = eigenzahl::lies(mitPolster.data(), zahl);
    return ende != nullptr ? ende - mitPolster.data() : -1;
}

void pruefeSchreibweise(double wert) {
    zahl::Puffer puffer{};
    const std::string text(zahl::schreibe(wert, puffer));
    double gelesen = 0.0;
    ASSERT_EQ(lies(text + ",", gelesen), static_cast<std::ptrdiff_t>(text.size())) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(gelesen), std::bit_cast<std::uint64_t>(wert)) << text;
}

TEST(Eigenzahl, ReadsEveryNumberThatIsWritten) {
    std::mt19937_64 zufall(1);
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = zufall();
        const auto wert = std::bit_cast<double>(bits);
        if (std::isfinite(wert) && !(std::fabs(wert) >= 1e18 && std::fabs(wert) < 1e25)) {
            pruefeSchreibweise(wert);
        }
        const auto grad = static_cast<double>(static_cast<std::int64_t>(bits)) / 5e16;
        pruefeSchreibweise(grad);
        double stellen = 10.0;
        for (int j = 0; j < 15; ++j, stellen *= 10.0) {
            const double gerundet = std::round(grad * stellen) / stellen;
            pruefeSchreibweise(gerundet == 0.0 ? 0.0 : gerundet);
        }
    }
}

TEST(Eigenzahl, RoundsDigitsOfAnyLengthAsTheLibraryDoes) {
    std::mt19937_64 zufall(2);
    int gelesene = 0;
    for (int i = 0; i < 300000; ++i) {
        std::string text = std::to_string(zufall() % (i % 3 == 0 ? 200 : 3));
        text += '.';
        for (auto stellen = zufall() % 22; stellen > 0; --stellen) {
            text += static_cast<char>('0' + zufall() % 10);
        }
        text += static_cast<char>('1' + zufall() % 9);
        double wert = 0.0;
        if (lies(text, wert) < 0) {
            continue;
        }
        double erwartet = 0.0;
        std::from_chars(text.data(), text.data() + text.size(), erwartet);
        ASSERT_EQ(wert, erwartet) << text;
        ++gelesene;
    }
    EXPECT_GT(gelesene, 250000);
    // Halfway between two doubles, and a hair above and below: 2^53 + 1, and a quarter of such a number.
    for (const auto& [text, erwartet] :
         {std::pair("9007199254740993.0000000001", 9007199254740994.0),
          std::pair("2251799813685249.25", 2251799813685249.0), std::pair("2251799813685249.75", 2251799813685250.0),
          std::pair("1125899906842624.125", 1125899906842624.0),
          std::pair("1125899906842624.375", 1125899906842624.5)}) {
        double wert = 0.0;
        ASSERT_GT(lies(std::string(text), wert), 0) << text;
        EXPECT_EQ(wert, erwartet) << text;
    }
}

TEST(Eigenzahl, LeavesOtherFormsToOthers) {
    for (const std::string text :
         {"",     "-",    ".5",  "-.5", "+1", "01",  "-01",   "00",     "1.",
          "1.e5", "1.50", "0.0", "-0",  "1e", "1e+", "1e999", "1e-999", "1000000000000000000000",
          "nan",  "inf",  "x"}) {
        double wert = 0.0;
        EXPECT_LT(lies(text, wert), 0) << text;
    }
    for (const std::string text : {"", "-", "-0", "01", "x", "9999999999999999999"}) {
        std::int64_t wert = 0;
        EXPECT_LT(lies(text, wert), 0) << text;
    }
    double minusNull = 1.0;
    ASSERT_EQ(lies("-0.0", minusNull), 4);
    EXPECT_TRUE(minusNull == 0.0 && std::signbit(minusNull));
    std::int64_t ganz = 0;
    EXPECT_EQ(lies("-123456789012345678}", ganz), 19);
    EXPECT_EQ(ganz, -123456789012345678);
}

}  // namespace
}  // namespace spurkiste
