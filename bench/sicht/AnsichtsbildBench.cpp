// How long the picture of the main view takes: a key stroke, a click on a column header, a library that fills up.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "erzeuge/Erzeuger.h"
#include "sicht/Ansichtsbild.h"
#include "track/GpxMetadaten.h"

namespace {

using namespace spurkiste;

std::vector<Eintrag> erfinde(std::int64_t anzahl) {
    return erzeuge::erzeugeEintraege(static_cast<std::size_t>(anzahl), 1, false);
}

Ansichtstexte deutsch() {
    Ansichtstexte texte;
    texte.sprache = "de";
    texte.sportarten = {"Rad",    "Laufen",       "Motorrad",  "Auto", "Wandern", "Gehen",  "MTB",  "Gravel",
                        "E-Bike", "Trailrunning", "Schwimmen", "Ski",  "Inline",  "Rudern", "Kajak"};
    return texte;
}

/// Typing words and taking them back, letter by letter: each picture takes the place of the one before.
void BM_Tastendruck(benchmark::State& lauf) {
    const auto eintraege = erfinde(lauf.range(0));
    const auto texte = deutsch();
    Zeilenspeicher speicher;
    Ansichtszustand zustand;
    auto bild = berechneAnsichtsbild(eintraege, zustand, texte, speicher);
    constexpr std::string_view worte[] = {"", "z", "zü", "zür", "zürs", "zür", "zü", "z", "", "e", "ee", "e"};
    std::size_t naechstes = 0;
    for (auto _ : lauf) {
        zustand.suche = worte[++naechstes % std::size(worte)];
        bild = berechneAnsichtsbild(eintraege, zustand, texte, speicher);
    }
}
BENCHMARK(BM_Tastendruck)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// A click on the header of a column, and again, and again.
void BM_Spaltenklick(benchmark::State& lauf) {
    const auto eintraege = erfinde(lauf.range(0));
    const auto texte = deutsch();
    Zeilenspeicher speicher;
    Ansichtszustand zustand;
    auto bild = berechneAnsichtsbild(eintraege, zustand, texte, speicher);
    for (auto _ : lauf) {
        zustand.sortierung.klicke(static_cast<Spalte>(lauf.range(1)));
        bild = berechneAnsichtsbild(eintraege, zustand, texte, speicher);
    }
}
BENCHMARK(BM_Spaltenklick)
    ->ArgsProduct({{10'000, 100'000},
                   {static_cast<long>(Spalte::name), static_cast<long>(Spalte::datum),
                    static_cast<long>(Spalte::sport)}})
    ->Unit(benchmark::kMillisecond);

/// The first picture: everything is new.
void BM_Erstes(benchmark::State& lauf) {
    const auto eintraege = erfinde(lauf.range(0));
    const auto texte = deutsch();
    for (auto _ : lauf) {
        Zeilenspeicher speicher;
        benchmark::DoNotOptimize(berechneAnsichtsbild(eintraege, {}, texte, speicher));
    }
}
BENCHMARK(BM_Erstes)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// A load: records come one by one, every 50th asks for a picture.
void BM_Laden(benchmark::State& lauf) {
    const auto eintraege = erfinde(lauf.range(0));
    const auto texte = deutsch();
    for (auto _ : lauf) {
        Zeilenspeicher speicher;
        std::vector<Eintrag> bisher;
        Ansichtsbild bild;
        for (const auto& eintrag : eintraege) {
            bisher.push_back(eintrag);
            if (bisher.size() % 50 == 0) {
                bild = berechneAnsichtsbild(bisher, {}, texte, speicher);
            }
        }
    }
}
BENCHMARK(BM_Laden)->Arg(10'000)->Arg(20'000)->Unit(benchmark::kMillisecond);

/// The end of a load: the list in another order, and a third of the records with another label.
void BM_Etikettieren(benchmark::State& lauf) {
    const auto eintraege = erfinde(lauf.range(0));
    auto andere = eintraege;
    std::sort(andere.begin(), andere.end(), [](const auto& a, const auto& b) { return a->pfad < b->pfad; });
    for (std::size_t i = 0; i < andere.size(); i += 3) {
        auto neu = *andere[i];
        neu.startOrt = "Oberndorf";
        andere[i] = std::make_shared<const GpxMetadaten>(std::move(neu));
    }
    const auto texte = deutsch();
    Zeilenspeicher speicher;
    auto bild = berechneAnsichtsbild(eintraege, {}, texte, speicher);
    for (bool zurueck = false; auto _ : lauf) {
        zurueck = !zurueck;
        bild = berechneAnsichtsbild(zurueck ? andere : eintraege, {}, texte, speicher);
    }
}
BENCHMARK(BM_Etikettieren)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

}  // namespace
