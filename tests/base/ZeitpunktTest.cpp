#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Zeitpunkt.h"

namespace spurkiste {

namespace {

std::string alsText(int jahr, unsigned monat, unsigned tag, const char* rest) {
    std::array<char, 64> puffer{};
    std::snprintf(puffer.data(), puffer.size(), "%04d-%02u-%02u%s", jahr, monat, tag, rest);
    return puffer.data();
}

}  // namespace

TEST(ZeitpunktTest, LiestDieBeidenFormen) {
    constexpr double k2024 = 736214400.0;  // 2024-05-01T00:00:00Z
    const std::vector<std::pair<std::string_view, double>> faelle = {
        {"2001-01-01T00:00:00Z", 0.0},
        {"1970-01-01T00:00:00Z", -978307200.0},
        {"2000-12-31T23:59:59.5Z", -0.5},
        {"2024-05-01T00:00:00Z", k2024},
        {"2024-05-01T08:15:30.250+02:00", k2024 + 22530.25},
        {"2024-05-01T00:00:00+00:00", k2024},
        {"2024-05-01T00:00:00-00:00", k2024},
        {"2024-04-30T14:00:00-10:00", k2024},
        {"2024-05-01T05:45:00+05:45", k2024},
        {"2024-05-01T23:59:00+23:59", k2024},
        {"2024-05-01T00:00:00.0Z", k2024},
        {"2024-05-01T00:00:00.125000000000000000000000000000000000001Z", k2024 + 0.125},
        {"2024-02-29T00:00:00Z", k2024 - 62 * 86400.0},
        {"0000-01-01T00:00:00Z", -63145526400.0},
        {"9999-12-31T23:59:59Z", 252423993599.0},
    };
    for (const auto& [text, sekunden] : faelle) {
        const auto gelesen = Zeitpunkt::ausIso8601(text);
        ASSERT_TRUE(gelesen.has_value()) << text;
        EXPECT_EQ(gelesen->sekunden, sekunden) << text;
    }
    const auto lang = Zeitpunkt::ausIso8601("2024-05-01T00:00:00." + std::string(100000, '9') + "Z");
    ASSERT_TRUE(lang.has_value());
    EXPECT_NEAR(lang->sekunden, k2024 + 1.0, 1e-6);
}

TEST(ZeitpunktTest, LiestSonstNichts) {
    for (const std::string_view text : {"",
                                        "2024",
                                        "2024-05-01",
                                        "2024-05-01T08:15",
                                        "2024-05-01T08:15Z",
                                        "2024-05-01T08:15:30",
                                        "2024-05-01 08:15:30Z",
                                        "2024-05-01t08:15:30Z",
                                        "2024-05-01T08:15:30z",
                                        "20240501T081530Z",
                                        "2024-05-01T08:15:30.Z",
                                        "2024-05-01T08:15:30,5Z",
                                        "2024-05-01T08:15:30+0200",
                                        "2024-05-01T08:15:30+02",
                                        "2024-05-01T08:15:30+24:00",
                                        "2024-05-01T08:15:30+02:60",
                                        "2024-05-01T08:15:30Z+02:00",
                                        "2024-05-01T08:15:30ZZ",
                                        "2024-05-01T08:15:30Z ",
                                        " 2024-05-01T08:15:30Z",
                                        "2024-05-01T24:00:00Z",
                                        "2024-05-01T08:60:00Z",
                                        "2024-05-01T23:59:60Z",
                                        "2024-00-01T08:15:30Z",
                                        "2024-13-01T08:15:30Z",
                                        "2023-02-29T08:15:30Z",
                                        "1900-02-29T08:15:30Z",
                                        "-2024-05-01T08:15:30Z",
                                        "12024-05-01T08:15:30Z",
                                        "2024-5-1T08:15:30Z",
                                        "+024-05-01T08:15:30Z",
                                        "2024-05-01T08:15:3\xC2\xB2Z"}) {
        EXPECT_EQ(Zeitpunkt::ausIso8601(text), std::nullopt) << text;
    }
    const std::string gut = "2024-05-01T08:15:30.5+02:00";
    for (std::size_t i = 0; i < gut.size(); ++i) {
        EXPECT_EQ(Zeitpunkt::ausIso8601(gut.substr(0, i)), std::nullopt) << "the first " << i;
        std::string fremd = gut;
        fremd[i] = '\0';
        EXPECT_EQ(Zeitpunkt::ausIso8601(fremd), std::nullopt) << "zero at " << i;
    }
}

TEST(ZeitpunktTest, KenntDenKalender) {
    using std::chrono::day;
    using std::chrono::month;
    using std::chrono::year;
    const auto vergleiche = [](int jahr, unsigned monat, unsigned tag) {
        const auto gelesen = Zeitpunkt::ausIso8601(alsText(jahr, monat, tag, "T12:34:56Z"));
        const auto datum = year(jahr) / month(monat) / day(tag);
        ASSERT_EQ(gelesen.has_value(), datum.ok()) << jahr << " " << monat << " " << tag;
        if (gelesen) {
            const auto tage = std::chrono::sys_days(datum).time_since_epoch().count();
            ASSERT_EQ(gelesen->alsUnix(), std::int64_t{tage} * 86400 + 45296) << jahr << " " << monat << " " << tag;
        }
    };
    for (const int jahr : {0, 1, 4, 100, 399, 400, 1582, 1900, 1970, 2000, 2023, 2024, 2100, 9999}) {
        for (unsigned monat = 0; monat <= 13; ++monat) {
            for (unsigned tag = 0; tag <= 32; ++tag) {
                vergleiche(jahr, monat, tag);
            }
        }
    }
    std::mt19937 zufall(3);
    std::uniform_int_distribution<int> jahre(0, 9999);
    std::uniform_int_distribution<unsigned> monate(1, 12);
    std::uniform_int_distribution<unsigned> tage(1, 31);
    for (int i = 0; i < 20000; ++i) {
        vergleiche(jahre(zufall), monate(zufall), tage(zufall));
    }
}

TEST(ZeitpunktTest, UnixSekundenHaltenJedenWertAus) {
    EXPECT_EQ(Zeitpunkt::ausUnix(978307200, 500000000).sekunden, 0.5);
    EXPECT_EQ(Zeitpunkt::ausUnix(-1, 0).alsUnix(), -1);
    EXPECT_EQ(Zeitpunkt{-0.25}.alsUnix(), 978307199);
    constexpr auto min = std::numeric_limits<std::int64_t>::min();
    constexpr auto max = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(Zeitpunkt::ausUnix(min, 0).alsUnix(), min);
    EXPECT_EQ(Zeitpunkt::ausUnix(max, 999999999).alsUnix(), max);
    EXPECT_EQ(Zeitpunkt{1e300}.alsUnix(), max);
}

}  // namespace spurkiste
