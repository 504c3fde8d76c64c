#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "base/Zahl.h"

namespace spurkiste {

namespace {

/// Whether the text is a number by the grammar of JSON (RFC 8259, section 6).
bool istJsonZahl(std::string_view text) {
    std::size_t i = 0;
    const auto ziffern = [&] {
        const std::size_t anfang = i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
            ++i;
        }
        return i - anfang;
    };
    i += text.starts_with('-') ? 1 : 0;
    const std::size_t erste = i;
    const std::size_t ganze = ziffern();
    bool gut = ganze == 1 || (ganze > 1 && text[erste] != '0');
    if (i < text.size() && text[i] == '.') {
        ++i;
        gut = ziffern() > 0 && gut;
    }
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        ++i;
        i += i < text.size() && (text[i] == '+' || text[i] == '-') ? 1 : 0;
        gut = ziffern() > 0 && gut;
    }
    return gut && i == text.size();
}

void pruefeRundreise(double wert) {
    zahl::Puffer puffer{};
    const auto text = zahl::schreibe(wert, puffer);
    ASSERT_TRUE(istJsonZahl(text)) << text;
    const auto gelesen = zahl::lies(text);
    ASSERT_TRUE(gelesen.has_value()) << text;
    ASSERT_EQ(std::bit_cast<std::uint64_t>(*gelesen), std::bit_cast<std::uint64_t>(wert)) << text;
}

}  // namespace

TEST(ZahlTest, LiestNurGanzeEndlicheZahlen) {
    const std::vector<std::pair<std::string_view, double>> gut = {
        {"47.5", 47.5},   {"-3e2", -300.0},
        {"+8", 8.0},      {"0", 0.0},
        {".5", 0.5},      {"5.", 5.0},
        {"1E-2", 0.01},   {"007", 7.0},
        {"1e308", 1e308}, {"5e-324", DBL_TRUE_MIN},
        {"0e999", 0.0},   {"0.1000000000000000055511151231257827021181583404541015625", 0.1}};
    for (const auto& [text, wert] : gut) {
        EXPECT_EQ(zahl::lies(text), wert) << text;
    }
    EXPECT_TRUE(std::signbit(zahl::lies("-0").value_or(1.0)));
    const std::string langeNull = "0." + std::string(5000, '0') + "1";
    for (const std::string_view text :
         {"",     " ",   "47,5",   "47.5 m", " 47.5", "47.5 ",    "\t1",   "1\n",    "+",      "-",     "+-1",
          "-+1",  "--1", "++1",    ".",      "e5",    "1e",       "1e+",   "0x10",   "1_000",  "1'000", "nan",
          "-nan", "NaN", "nan(1)", "inf",    "-inf",  "Infinity", "1e999", "-1e999", "1e-999", "1.2.3", "١"}) {
        EXPECT_EQ(zahl::lies(text), std::nullopt) << text;
    }
    EXPECT_EQ(zahl::lies(std::string_view("1\0", 2)), std::nullopt);
    EXPECT_EQ(zahl::lies(langeNull), std::nullopt);
    EXPECT_EQ(zahl::lies("1" + std::string(5000, '0') + "e-5000"), 1.0);
}

TEST(ZahlTest, GeschriebenesLiestSichBitfuerbitZurueck) {
    for (const double wert : {0.0,
                              -0.0,
                              1.0,
                              -1.0,
                              0.1,
                              1e-7,
                              1.5e-7,
                              -47.3769,
                              8.5417,
                              99999999.9999999,
                              1e8,
                              1e15,
                              9007199254740993.0,
                              1e21,
                              1e300,
                              DBL_MAX,
                              -DBL_MAX,
                              DBL_MIN,
                              DBL_TRUE_MIN,
                              DBL_EPSILON}) {
        pruefeRundreise(wert);
    }
    std::mt19937_64 zufall(20240501);
    for (int i = 0; i < 100000; ++i) {
        const double wert = std::bit_cast<double>(zufall());  // every order of magnitude, denormals too
        if (std::isfinite(wert)) {
            pruefeRundreise(wert);
        }
    }
    // What files really hold: few decimals, and the neighbours of such values, which must not be taken for them.
    std::uniform_int_distribution<std::int64_t> ziffern(-2000000000000000, 2000000000000000);
    std::uniform_int_distribution<int> stellen(0, 10);
    for (int i = 0; i < 100000; ++i) {
        const double wert = static_cast<double>(ziffern(zufall)) / std::pow(10.0, stellen(zufall));
        pruefeRundreise(wert);
        pruefeRundreise(std::nextafter(wert, 1e300));
    }
}

TEST(ZahlTest, SchreibtKurz) {
    const std::vector<std::pair<double, std::string_view>> faelle = {{0.0, "0"},
                                                                     {-0.0, "-0"},
                                                                     {12.5, "12.5"},
                                                                     {-8.0, "-8"},
                                                                     {100.0, "100"},
                                                                     {0.0000001, "0.0000001"},
                                                                     {0.00000001, "1e-08"},
                                                                     {1e300, "1e+300"},
                                                                     {47.3769, "47.3769"},
                                                                     {0.1 + 0.2, "0.30000000000000004"}};
    for (const auto& [wert, text] : faelle) {
        zahl::Puffer puffer{};
        EXPECT_EQ(zahl::schreibe(wert, puffer), text);
        pruefeRundreise(wert);
    }
}

TEST(ZahlTest, GanzSchneidetAbUndBleibtInDenGrenzen) {
    constexpr auto min = std::numeric_limits<long long>::min();
    constexpr auto max = std::numeric_limits<long long>::max();
    const std::vector<std::pair<double, long long>> faelle = {{1.9, 1},
                                                              {-1.9, -1},
                                                              {-0.5, 0},
                                                              {1e300, max},
                                                              {-1e300, min},
                                                              {9223372036854775808.0, max},
                                                              {-9223372036854775808.0, min},
                                                              {HUGE_VAL, max},
                                                              {-HUGE_VAL, min},
                                                              {NAN, 0}};
    for (const auto& [wert, ganz] : faelle) {
        EXPECT_EQ(zahl::ganz(wert), ganz) << wert;
    }
}

}  // namespace spurkiste
