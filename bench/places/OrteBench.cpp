// Place names and labels: loading the real place file, searching where it is densest, labelling whole libraries.

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <fstream>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <sys/wait.h>
#include <unistd.h>

#include "places/OrtsEtiketten.h"
#include "places/Ortsbuch.h"
#include "platform/Ressourcen.h"

namespace {

using spurkiste::Koordinate;
using Punkte = std::vector<std::optional<Koordinate>>;

/// Loads the shared gazetteer once in a process of its own, so that every measured load pays for fresh memory as the
/// program does, and returns the seconds; negative when there is no place file.
double ladezeit() {
    std::array<int, 2> rohr{-1, -1};
    if (::pipe(rohr.data()) != 0) {
        return -1.0;
    }
    const pid_t kind = ::fork();
    if (kind == 0) {
        const auto anfang = std::chrono::steady_clock::now();
        const std::size_t anzahl = spurkiste::Ortsbuch::geteilt().anzahl();
        const std::chrono::duration<double> dauer = std::chrono::steady_clock::now() - anfang;
        const double ergebnis = anzahl > 0 ? dauer.count() : -1.0;
        const bool gesagt = ::write(rohr[1], &ergebnis, sizeof ergebnis) == sizeof ergebnis;
        ::_exit(gesagt ? 0 : 1);
    }
    double ergebnis = -1.0;
    ::close(rohr[1]);
    if (::read(rohr[0], &ergebnis, sizeof ergebnis) != sizeof ergebnis) {
        ergebnis = -1.0;
    }
    ::close(rohr[0]);
    ::waitpid(kind, nullptr, 0);
    return ergebnis;
}

void laden(benchmark::State& zustand) {
    for (auto _ : zustand) {
        const double sekunden = ladezeit();
        if (sekunden < 0.0) {
            zustand.SkipWithError("no place file; set SPURKISTE_RESSOURCEN");
            break;
        }
        zustand.SetIterationTime(sekunden);
    }
}
BENCHMARK(laden)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The south-west corner of the cell whose 5 by 5 cells hold the most places of the place file.
Koordinate dichtesteZelle() {
    std::map<std::pair<int, int>, int> summe;
    std::ifstream datei(spurkiste::ressourcen::finde("orte", "tsv").value_or(""));
    std::string name;
    double breite = 0.0;
    double laenge = 0.0;
    while (std::getline(datei, name, '\t') && datei >> breite >> laenge && datei.ignore()) {
        const int zeile = static_cast<int>((breite + 90.0) * 10.0);
        const int spalte = static_cast<int>((laenge + 180.0) * 10.0);
        for (int z = -2; z <= 2; ++z) {
            for (int s = -2; s <= 2; ++s) {
                ++summe[{zeile + z, spalte + s}];
            }
        }
    }
    std::pair<int, int> dichteste{900, 1800};
    for (const auto& [zelle, anzahl] : summe) {
        dichteste = anzahl > summe[dichteste] ? zelle : dichteste;
    }
    return {dichteste.first / 10.0 - 90.0, dichteste.second / 10.0 - 180.0};
}

/// Random points of the densest cell; the argument is the search distance: 15 km always hits, a metre hardly ever.
void sucheInDichtesterZelle(benchmark::State& zustand) {
    const auto& buch = spurkiste::Ortsbuch::geteilt();
    const Koordinate ecke = dichtesteZelle();
    std::mt19937_64 zufall(1);  // NOLINT(cert-msc*): the same points in every run
    std::uniform_real_distribution<double> inZelle(0.0, 0.0999);
    std::vector<Koordinate> punkte(1000);
    for (Koordinate& punkt : punkte) {
        punkt = {ecke.breite + inZelle(zufall), ecke.laenge + inZelle(zufall)};
    }
    std::size_t i = 0;
    std::size_t treffer = 0;
    for (auto _ : zustand) {
        treffer += buch.naechster(punkte[i++ % punkte.size()], static_cast<double>(zustand.range(0))) ? 1 : 0;
    }
    zustand.counters["hits"] = benchmark::Counter(static_cast<double>(treffer), benchmark::Counter::kAvgIterations);
}
BENCHMARK(sucheInDichtesterZelle)->Arg(15000)->Arg(1);

constexpr double kMeterJeGrad = 111194.93;

/// Starts as a collector of tracks has them: spots strewn over the Alps and their surroundings, a few of them visited
/// often and most of them seldom, the receiver's noise around each, one record in fifty without points.
Punkte glaubhaft(std::size_t anzahl, unsigned saat) {
    std::mt19937_64 zufall(saat);
    std::uniform_real_distribution<double> breite(43.0, 52.0);
    std::uniform_real_distribution<double> laenge(4.0, 17.0);
    std::normal_distribution<double> rauschen(0.0, 15.0 / kMeterJeGrad);
    std::uniform_real_distribution<double> anteil(0.0, 1.0);
    std::vector<Koordinate> orte(4000);
    for (Koordinate& ort : orte) {
        ort = {breite(zufall), laenge(zufall)};
    }
    Punkte punkte(anzahl);
    for (auto& punkt : punkte) {
        const double haeufigkeit = anteil(zufall);
        const auto welcher = static_cast<std::size_t>(haeufigkeit * haeufigkeit * static_cast<double>(orte.size()));
        if (anteil(zufall) >= 0.02) {
            punkt = Koordinate{orte[welcher].breite + rauschen(zufall), orte[welcher].laenge + rauschen(zufall) * 1.4};
        }
    }
    return punkte;
}

/// Every point its own spot: a lattice of 310 m, walked in random order.
Punkte lauterVerschiedene(std::size_t anzahl) {
    const auto seite = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(anzahl))));
    Punkte punkte(anzahl);
    for (std::size_t i = 0; i < anzahl; ++i) {
        const double weite = 310.0 / kMeterJeGrad;
        const std::size_t zeile = i / seite;
        punkte[i] = Koordinate{static_cast<double>(zeile) * weite, static_cast<double>(i % seite) * weite};
    }
    std::shuffle(punkte.begin(), punkte.end(), std::mt19937_64(1));  // NOLINT(cert-msc*)
    return punkte;
}

/// Starts on the 180th degree, written east and west of it in turn: the mean of each pair lies in the Atlantic, so all
/// groups gather there, and every other point looks for its group right beside them.
Punkte haufen(std::size_t anzahl) {
    std::mt19937_64 zufall(1);  // NOLINT(cert-msc*)
    std::normal_distribution<double> rauschen(0.0, 15.0 / kMeterJeGrad);
    Punkte punkte(anzahl);
    for (std::size_t i = 0; i < anzahl; ++i) {
        const double breite = -16.8 + rauschen(zufall);
        const std::array<double, 4> laengen{180.0, 0.0, -180.0, 400.0 / kMeterJeGrad};
        punkte[i] = Koordinate{breite, laengen[i % 4]};
    }
    return punkte;
}

/// A circle around the pole, where groups on both sides of the 180th degree gather on the other side.
Punkte polkreis(std::size_t anzahl) {
    std::mt19937_64 zufall(1);  // NOLINT(cert-msc*)
    std::uniform_real_distribution<double> laenge(-180.0, 180.0);
    Punkte punkte(anzahl);
    for (auto& punkt : punkte) {
        punkt = Koordinate{89.995, laenge(zufall)};
    }
    return punkte;
}

void etiketten(benchmark::State& zustand, const Punkte& starts, const Punkte& ziele) {
    const auto& buch = spurkiste::Ortsbuch::geteilt();
    for (auto _ : zustand) {
        benchmark::DoNotOptimize(spurkiste::OrtsEtiketten::berechne(starts, buch));
        benchmark::DoNotOptimize(spurkiste::OrtsEtiketten::berechne(ziele, buch));
    }
}

std::size_t anzahl(const benchmark::State& zustand) {
    return static_cast<std::size_t>(zustand.range(0));
}

void etikettenGlaubhaft(benchmark::State& zustand) {
    etiketten(zustand, glaubhaft(anzahl(zustand), 1), glaubhaft(anzahl(zustand), 2));
}
void etikettenLauterVerschiedene(benchmark::State& zustand) {
    const Punkte punkte = lauterVerschiedene(anzahl(zustand));
    etiketten(zustand, punkte, punkte);
}
void etikettenAlleGleich(benchmark::State& zustand) {
    const Punkte punkte(anzahl(zustand), Koordinate{47.3769, 8.5417});
    etiketten(zustand, punkte, punkte);
}
void etikettenHaufen(benchmark::State& zustand) {
    const Punkte punkte = haufen(anzahl(zustand));
    etiketten(zustand, punkte, punkte);
}
void etikettenPolkreis(benchmark::State& zustand) {
    const Punkte punkte = polkreis(anzahl(zustand));
    etiketten(zustand, punkte, punkte);
}
BENCHMARK(etikettenGlaubhaft)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(etikettenLauterVerschiedene)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(etikettenAlleGleich)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(etikettenHaufen)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(etikettenPolkreis)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
