#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "hilfe/Ansichtsbau.h"
#include "hilfe/HandAusfuehrer.h"
#include "sicht/Zeilenbau.h"

namespace spurkiste {
namespace {

class ZeilenbauTest : public testing::Test {
  protected:
    HandAusfuehrer hier;
    HandAusfuehrer dort;
    int neue = 0;
    Zeilenbau bau{{&hier, &dort, &dort, 1}, [this] { ++neue; }};

    static std::vector<Eintrag> liste(int anzahl) {
        std::vector<Eintrag> eintraege;
        for (int i = 0; i < anzahl; ++i) {
            eintraege.push_back(eintragMit("Tour " + std::to_string(i)));
        }
        return eintraege;
    }

    void gleicheAb(const std::vector<Eintrag>& eintraege, const std::string& sprache = "de") {
        bau.gleicheAb(eintraege, texteIn(sprache), {});
    }

    void baueFertig() {
        dort.fuehreAlle();
        hier.fuehreAlle();
    }

    [[nodiscard]] std::vector<std::string> namen() {
        return namenVon(berechneAnsichtsbild({}, texteIn("de"), bau.speicher()));
    }

    [[nodiscard]] std::vector<std::uint32_t> kennungen() {
        std::vector<std::uint32_t> ergebnis;
        for (const Merkmale& einer : bau.speicher().merkmale()) {
            ergebnis.push_back(einer.zeile->kennung());
        }
        return ergebnis;
    }
};

TEST_F(ZeilenbauTest, WenigesEntstehtSofort) {
    gleicheAb(liste(3));
    EXPECT_FALSE(bau.baut());
    EXPECT_EQ(bau.speicher().merkmale().size(), 3U);
}

TEST_F(ZeilenbauTest, BisVielesDaIstBleibtAllesWieEsWar) {
    auto eintraege = liste(3);
    gleicheAb(eintraege);
    const auto viele = liste(2000);
    gleicheAb(viele);
    gleicheAb(eintraege);  // overtaken by nothing: the newest records are asked for when the rows have come
    EXPECT_TRUE(bau.baut());
    EXPECT_EQ(bau.speicher().merkmale().size(), 3U);

    baueFertig();
    EXPECT_EQ(neue, 1);
    EXPECT_FALSE(bau.baut());
    EXPECT_EQ(namen(), namenVon(bildVon(viele, {})));
    gleicheAb(eintraege);
    EXPECT_EQ(bau.speicher().merkmale().size(), 3U);
    bau.raeumeAuf();
    baueFertig();
}

TEST_F(ZeilenbauTest, DateienBehaltenIhreNummerUndNeueBekommenEineEigene) {
    auto eintraege = liste(2000);
    gleicheAb(eintraege);
    baueFertig();
    const auto vorher = kennungen();
    gleicheAb(eintraege, "en");
    baueFertig();
    EXPECT_EQ(kennungen(), vorher);
    eintraege.push_back(eintragMit("neu"));
    gleicheAb(eintraege, "en");
    EXPECT_THAT(vorher, testing::Not(testing::Contains(kennungen().back())));
}

/// What is compared in sequence must come out as if made anew, wherever records came, went, moved or were replaced.
TEST_F(ZeilenbauTest, AenderungenAllerArtErgebenWasNeuGebautWuerde) {
    const auto eintraege = liste(400);
    std::vector<std::vector<Eintrag>> faelle(7, eintraege);
    faelle[0].erase(faelle[0].begin() + 50, faelle[0].begin() + 150);            // a long piece
    std::rotate(faelle[1].begin() + 7, faelle[1].begin() + 8, faelle[1].end());  // to the end
    std::rotate(faelle[2].begin(), faelle[2].end() - 1, faelle[2].end());        // to the front
    faelle[3][200] = eintragMit("Tour 200");                                     // replaced
    std::reverse(faelle[4].begin(), faelle[4].end());                            // all moved
    faelle[5].insert(faelle[5].begin() + 9, 1, eintragMit("dazwischen"));        // new
    faelle[6].clear();                                                           // gone
    for (std::size_t fall = 0; fall < faelle.size(); ++fall) {
        for (const auto& stand : {faelle[fall], eintraege}) {
            gleicheAb(stand);
            EXPECT_EQ(namen(), namenVon(bildVon(stand, {}))) << fall;
            for (std::size_t i = 0; i < stand.size(); ++i) {
                ASSERT_EQ(bau.speicher().merkmale()[i].zeile->eintrag(), stand[i]) << fall;
            }
        }
    }
}

}  // namespace
}  // namespace spurkiste
