#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/ArbeiterPool.h"
#include "hilfe/BeispielEintrag.h"
#include "library/CacheEigenform.h"
#include "track/GpxMetadatenJson.h"
#include "track/JsonText.h"

namespace spurkiste {
namespace {

std::vector<Eintrag> baueListe() {
    std::vector<Eintrag> liste;
    for (int i = 0; i < 40; ++i) {
        GpxMetadaten eintrag = vollerEintrag("/a/},\"\\ü" + std::to_string(i) + R"(":{"pfad":")");
        eintrag.spurName = R"(x},"y":{"pfad":"z)";
        if (i == 20) {
            Skizze::Bau lang;  // many sections
            lang.beginneLinie();
            for (int j = 0; j < 500; ++j) {
                lang.haengeAn({j / 7.0, -j / 8.0});
            }
            eintrag.skizze = std::move(lang).fertig();
        }
        liste.push_back(std::make_shared<const GpxMetadaten>(std::move(eintrag)));
    }
    return liste;
}

std::string alsText(const std::vector<Eintrag>& liste) {
    std::string text(CacheEigenform::kAnfang);
    for (const Eintrag& eintrag : liste) {
        text.append(eintrag == liste.front() ? "" : ",");
        JsonText::haengeAn(text, eintrag->pfad);
        text += ':';
        EXPECT_EQ(GpxMetadatenJson::haengeAn(text, *eintrag), GpxMetadatenJson::Ergebnis::geschrieben);
    }
    return text.append(CacheEigenform::kEnde);
}

CacheEigenform::Text quelle(const std::string& text) {
    return {[&text](std::uint64_t stelle, std::span<char> puffer) {
                return text.copy(puffer.data(), puffer.size(), stelle);
            },
            text.size()};
}

TEST(CacheEigenform, ReadsTheSameWhereverItIsCut) {
    const auto liste = baueListe();
    const std::string text = alsText(liste);
    ArbeiterPool pool(2);
    for (std::size_t abschnitt = 40; abschnitt < text.size() + 100; abschnitt += 1 + abschnitt / 16) {
        const auto gelesen = CacheEigenform::lies(quelle(text), {&pool, 2, {}}, abschnitt);
        ASSERT_TRUE(gelesen) << abschnitt;
        ASSERT_EQ(gelesen->size(), liste.size());
        for (std::size_t i = 0; i < liste.size(); ++i) {
            ASSERT_EQ(*(*gelesen)[i].eintrag, *liste[i]) << abschnitt;
        }
    }
    const auto leer = CacheEigenform::lies(quelle(alsText({})), {});
    EXPECT_TRUE(leer && leer->empty());
}

TEST(CacheEigenform, NeverHoldsALargeTextWithoutRecordsAtOnce) {
    std::size_t laengstes = 0;
    const CacheEigenform::Text ohneEintrag{[&laengstes](std::uint64_t stelle, std::span<char> puffer) {
                                               laengstes = std::max(laengstes, puffer.size());
                                               std::fill(puffer.begin(), puffer.end(), 'x');
                                               if (stelle == 0) {
                                                   CacheEigenform::kAnfang.copy(puffer.data(), puffer.size());
                                               }
                                               return puffer.size();
                                           },
                                           std::uint64_t{64} << 20U};
    EXPECT_FALSE(CacheEigenform::lies(ohneEintrag, {}));
    EXPECT_LT(laengstes, std::size_t{8} << 20U);
}

TEST(CacheEigenform, TakesNothingThatIsNotWholeAndAsItWouldBeWritten) {
    auto liste = baueListe();
    liste.resize(3);
    const std::string text = alsText(liste);
    for (std::size_t laenge = 0; laenge < text.size(); ++laenge) {
        EXPECT_FALSE(CacheEigenform::lies(quelle(text.substr(0, laenge)), {}, 300)) << laenge;
    }
    for (const auto& [alt, neu] : std::vector<std::pair<std::string, std::string>>{
             {"\"version\":3", "\"version\":4"},
             {":{\"pfad\"", ": {\"pfad\""},
             {"Seefeld", "See\\u0066eld"},
             {"Seefeld", "Seefeld\xff"},
             {"12345.678", "12345.6780"},
             {"\"rundkurs\":true,", ""},
             {"\"rundkurs\":true", "\"rundkurs\":1"},
             {"\"dateiName\":\"Tour\",", "\"dateiName\":\"Tour\",\"neu\":1,"},
             {"\"punkte\":4", "\"punkte\":4.5"},
             {"Schnee\"", "Schnee"},
             {"}}", "}} "},
             {"}}", "}"}}) {
        std::string anders = text;
        const auto stelle = alt == "}}" ? anders.rfind(alt) : anders.find(alt);
        ASSERT_NE(stelle, std::string::npos) << alt;
        anders.replace(stelle, alt.size(), neu);
        for (const std::size_t abschnitt : {std::size_t{64}, text.size() * 2}) {
            EXPECT_FALSE(CacheEigenform::lies(quelle(anders), {}, abschnitt)) << neu;
        }
    }
}

TEST(CacheEigenform, GivesBackRecordsThatAreKnownAlready) {
    const auto liste = baueListe();
    const std::string text = alsText(liste);
    const auto anders = std::make_shared<const GpxMetadaten>(vollerEintrag(liste[1]->pfad));
    const auto gelesen =
        CacheEigenform::lies(quelle(text), {nullptr, 0, [&](const std::string& pfad) {
                                                const auto fund = std::ranges::find_if(
                                                    liste, [&](const Eintrag& e) { return e->pfad == pfad; });
                                                return *fund == liste[1] ? anders : *fund == liste[2] ? nullptr : *fund;
                                            }});
    ASSERT_TRUE(gelesen);
    for (std::size_t i = 0; i < liste.size(); ++i) {
        const Eintrag& eintrag = (*gelesen)[i].eintrag;
        EXPECT_EQ(*eintrag, *liste[i]);
        EXPECT_EQ(eintrag == liste[i], i != 1 && i != 2) << i;
    }
}

}  // namespace
}  // namespace spurkiste
