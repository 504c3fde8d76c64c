#include <algorithm>
#include <chrono>
#include <cstddef>
#include <filesystem>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "hilfe/BeispielEintrag.h"
#include "hilfe/TempOrdner.h"
#include "library/Cache.h"
#include "library/CacheSchreiber.h"

namespace spurkiste {
namespace {

using Ausgang = CacheSchreiber::Ausgang;

Eintrag eintragMit(const std::string& pfad, double anstieg) {
    auto eintrag = std::make_shared<GpxMetadaten>(vollerEintrag(pfad));
    eintrag->anstiegMeter = anstieg;
    return eintrag;
}

std::vector<Eintrag> baueListe(std::size_t anzahl) {
    std::vector<Eintrag> liste;
    for (std::size_t i = 0; i < anzahl; ++i) {
        liste.push_back(eintragMit("/a/" + std::to_string(i), static_cast<double>(i)));
    }
    return liste;
}

/// What a file is in which nothing but the records was ever written.
std::string frisch(const std::vector<Eintrag>& liste) {
    const TempOrdner ordner;
    EXPECT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
    return ordner.lies(Cache::kDateiname);
}

TEST(CacheSchreiber, LeavesAFileAloneThatHoldsTheseBytes) {
    const TempOrdner ordner;
    const std::string pfad = ordner.in(Cache::kDateiname);
    const auto liste = baueListe(50);
    const auto erstes = CacheSchreiber::schreibe(pfad, liste, nullptr);
    ASSERT_EQ(erstes.ausgang, Ausgang::geschrieben);
    ASSERT_TRUE(erstes.abdruck);
    const auto stand = dateien::stand(pfad);
    for (const CacheAbdruck* vorher : {erstes.abdruck.get(), static_cast<const CacheAbdruck*>(nullptr)}) {
        const auto nochmals = CacheSchreiber::schreibe(pfad, liste, vorher);
        EXPECT_EQ(nochmals.ausgang, Ausgang::unveraendert);
        EXPECT_TRUE(nochmals.abdruck && nochmals.abdruck->stand == stand);
    }
    EXPECT_EQ(dateien::stand(pfad), stand);

    const Cache gelesen = Cache::liesAus(ordner.pfad());
    ASSERT_TRUE(gelesen.abdruck);
    std::vector<Eintrag> wieder;
    for (const Eintrag& eintrag : liste) {
        wieder.push_back(gelesen.eintraege.at(eintrag->pfad));
    }
    EXPECT_EQ(CacheSchreiber::schreibe(pfad, wieder, gelesen.abdruck.get()).ausgang, Ausgang::unveraendert);
    EXPECT_EQ(dateien::stand(pfad), stand);
}

TEST(CacheSchreiber, WritesTheSameWhateverItTakesFromTheOldFile) {
    const TempOrdner ordner;
    const std::string pfad = ordner.in(Cache::kDateiname);
    auto liste = baueListe(60);
    auto vorher = CacheSchreiber::schreibe(pfad, liste, nullptr).abdruck;
    std::mt19937 zufall(1);
    for (int runde = 0; runde < 60; ++runde) {
        for (auto aenderungen = zufall() % 3; aenderungen > 0; --aenderungen) {
            const std::size_t stelle = zufall() % liste.size();
            switch (zufall() % 5) {
                case 0:
                    liste.erase(liste.begin() + static_cast<std::ptrdiff_t>(stelle));
                    break;
                case 1:
                    liste.insert(liste.begin() + static_cast<std::ptrdiff_t>(stelle),
                                 eintragMit("/b/" + std::to_string(runde) + "ü\"", 1.0));
                    break;
                case 2:
                    liste[stelle] = eintragMit(liste[stelle]->pfad, runde);
                    break;
                case 3:
                    std::shuffle(liste.begin(), liste.end(), zufall);
                    break;
                default:
                    liste.push_back(eintragMit(std::string("/\xff"), 1.0));
                    liste.push_back(eintragMit(liste[stelle]->pfad, -1.0));
            }
        }
        const std::string davor = ordner.lies(Cache::kDateiname);
        const auto ergebnis = CacheSchreiber::schreibe(pfad, liste, zufall() % 8 == 0 ? nullptr : vorher.get());
        ASSERT_EQ(ordner.lies(Cache::kDateiname), frisch(liste)) << runde;
        ASSERT_EQ(ergebnis.ausgang == Ausgang::unveraendert, davor == ordner.lies(Cache::kDateiname));
        ASSERT_TRUE(ergebnis.abdruck && ergebnis.abdruck->stand == dateien::stand(pfad));
        vorher = ergebnis.abdruck;
    }
}

TEST(CacheSchreiber, TakesNothingFromAFileThatSomebodyElseHasWritten) {
    const TempOrdner ordner;
    const std::string pfad = ordner.in(Cache::kDateiname);
    const auto liste = baueListe(5);
    const auto vorher = CacheSchreiber::schreibe(pfad, liste, nullptr).abdruck;
    const std::string soll = ordner.lies(Cache::kDateiname);
    std::string fremdes = soll;
    fremdes[fremdes.size() / 2] ^= 1;
    ordner.schreibe(Cache::kDateiname, fremdes);
    std::filesystem::last_write_time(pfad, std::filesystem::last_write_time(pfad) + std::chrono::seconds(1));
    EXPECT_EQ(CacheSchreiber::schreibe(pfad, liste, vorher.get()).ausgang, Ausgang::geschrieben);
    EXPECT_EQ(ordner.lies(Cache::kDateiname), soll);
    ordner.schreibe(Cache::kDateiname, soll + " ");
    EXPECT_EQ(CacheSchreiber::schreibe(pfad, liste, vorher.get()).ausgang, Ausgang::geschrieben);
    std::filesystem::remove(pfad);
    EXPECT_EQ(CacheSchreiber::schreibe(pfad, liste, vorher.get()).ausgang, Ausgang::geschrieben);
    EXPECT_EQ(ordner.lies(Cache::kDateiname), soll);

    auto kaputte = liste;
    kaputte.push_back(eintragMit("/c", std::numeric_limits<double>::infinity()));
    EXPECT_EQ(CacheSchreiber::schreibe(pfad, kaputte, nullptr).ausgang, Ausgang::gescheitert);
    EXPECT_EQ(ordner.lies(Cache::kDateiname), soll);
}

}  // namespace
}  // namespace spurkiste
