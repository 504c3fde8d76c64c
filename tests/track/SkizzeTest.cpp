#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "track/Skizze.h"

namespace spurkiste {
namespace {

/// Lines of these lengths; the points count up.
Skizze::Bau baue(const std::vector<int>& laengen) {
    Skizze::Bau bau;
    double wert = 0.0;
    for (const int laenge : laengen) {
        bau.beginneLinie();
        for (int i = 0; i < laenge; ++i, ++wert) {
            bau.haengeAn({wert, -wert});
        }
    }
    return bau;
}

TEST(Skizze, IsTheSameInMemoryOfItsOwnAndInAStore) {
    const std::vector<std::vector<int>> formen = {{},     {0},       {1},          {300},
                                                  {0, 0}, {3, 0, 2}, {0, 5, 0, 0}, std::vector<int>(70, 1)};
    std::optional<Skizze::Lager> lager(std::size_t{4096});
    std::vector<Skizze> gelagerte;
    for (const auto& form : formen) {
        gelagerte.push_back(baue(form).fertigIn(*lager));
    }
    lager.reset();  // the sketches keep what they need
    for (std::size_t i = 0; i < formen.size(); ++i) {
        const Skizze eigene = baue(formen[i]).fertig();
        ASSERT_EQ(eigene.linien(), formen[i].size());
        double wert = 0.0;
        for (std::size_t linie = 0; linie < formen[i].size(); ++linie) {
            ASSERT_EQ(eigene.linie(linie).size(), static_cast<std::size_t>(formen[i][linie]));
            for (const Koordinate& punkt : eigene.linie(linie)) {
                ASSERT_EQ(punkt, (Koordinate{wert, -wert}));
                ++wert;
            }
        }
        for (std::size_t j = 0; j < formen.size(); ++j) {
            EXPECT_EQ(eigene == gelagerte[j], i == j) << i << ' ' << j;
            EXPECT_EQ(baue(formen[i]).gleicht(gelagerte[j]), i == j) << i << ' ' << j;
        }
    }
}

TEST(Skizze, KeepsEveryBitOfItsPoints) {
    const double oft = 47.1234567;
    const double hoechste = 214.7483647;
    const std::vector<std::vector<double>> formen = {{oft, -oft, 0.0, 180.0, -1e-7, hoechste, -hoechste},
                                                     {oft, -0.0},
                                                     {oft, 47.12345678, 0.1},
                                                     {1e300, oft},
                                                     {oft, std::nextafter(oft, 90.0)},
                                                     {hoechste, 214.7483648}};
    for (const auto& form : formen) {
        Skizze::Bau bau;
        bau.beginneLinie();
        for (const double wert : form) {
            bau.haengeAn({oft, wert});
        }
        EXPECT_EQ(bau.istRund(), &form == &formen.front());
        bau.beginneLinie();
        bau.haengeAn({1.0, 2.0});
        const Skizze skizze = std::move(bau).fertig();
        ASSERT_EQ(skizze.linie(0).size(), form.size());
        for (std::size_t i = 0; i < form.size(); ++i) {
            const Koordinate ort = skizze.linie(0)[i];
            EXPECT_EQ(ort.breite, oft);
            EXPECT_EQ(std::bit_cast<std::uint64_t>(ort.laenge), std::bit_cast<std::uint64_t>(form[i])) << form[i];
        }
        EXPECT_EQ(skizze.linie(1).front(), (Koordinate{1.0, 2.0}));
    }
}

}  // namespace
}  // namespace spurkiste
