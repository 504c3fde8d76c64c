// How long the detail panel takes to paint the sketch of a track that it has not painted before, on a screen of two
// device pixels per logical one. A frame is 16 ms.
#include <QApplication>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <utility>

#include <benchmark/benchmark.h>

#include "ui/detail/SkizzenAnsicht.h"

namespace {

using namespace spurkiste;

constexpr int kPunkte = 100'000;
constexpr int kBreite = 334;  // of the card in a window of the usual size

Eintrag eintragMit(Skizze::Bau&& bau) {
    GpxMetadaten eintrag;
    eintrag.skizze = std::move(bau).fertig();
    eintrag.start = eintrag.skizze.punkte().front();
    eintrag.ende = eintrag.skizze.punkte().back();
    return std::make_shared<const GpxMetadaten>(std::move(eintrag));
}

/// The place after `anteil` (0 to 1) of a winding tour.
Koordinate aufDerTour(double anteil) {
    const double winkel = 2 * 3.14159265358979 * anteil;
    const double radius = 0.1 * (1.0 + 0.3 * std::sin(5 * winkel) + 0.05 * std::sin(67 * winkel));
    return {47.0 + radius * std::cos(winkel), 8.5 + 1.4 * radius * std::sin(winkel)};
}

/// What nearly every file gives: one line of a few hundred points.
Eintrag tour(std::mt19937& /*zufall*/) {
    constexpr int anzahl = 257;
    Skizze::Bau bau;
    bau.beginneLinie();
    for (int i = 0; i < anzahl; ++i) {
        bau.haengeAn(aufDerTour(static_cast<double>(i) / anzahl));
    }
    return eintragMit(std::move(bau));
}

/// A recording that was interrupted all the time: lines of two points each, one behind the other.
Eintrag stuecke(std::mt19937& /*zufall*/) {
    Skizze::Bau bau;
    for (int i = 0; i < kPunkte; ++i) {
        if (i % 2 == 0) {
            bau.beginneLinie();
        }
        bau.haengeAn(aufDerTour(static_cast<double>(i) / kPunkte));
    }
    return eintragMit(std::move(bau));
}

/// The walks of years in one file: short lines all over the country.
Eintrag netz(std::mt19937& zufall) {
    std::uniform_real_distribution<double> irgendwo(0.0, 1.0);
    std::uniform_real_distribution<double> schritt(-0.004, 0.004);
    Skizze::Bau bau;
    for (int i = 0; i < kPunkte / 2; ++i) {
        const Koordinate ort{47.0 + irgendwo(zufall), 8.0 + 2 * irgendwo(zufall)};
        bau.beginneLinie();
        bau.haengeAn(ort);
        bau.haengeAn({ort.breite + schritt(zufall), ort.laenge + 2 * schritt(zufall)});
    }
    return eintragMit(std::move(bau));
}

/// A logger that starts anew with every point.
Eintrag punkte(std::mt19937& zufall) {
    std::uniform_real_distribution<double> irgendwo(0.0, 1.0);
    Skizze::Bau bau;
    for (int i = 0; i < kPunkte; ++i) {
        bau.beginneLinie();
        bau.haengeAn({47.0 + irgendwo(zufall), 8.0 + 2 * irgendwo(zufall)});
    }
    return eintragMit(std::move(bau));
}

/// A single line that trembles.
Eintrag zittern(std::mt19937& zufall) {
    std::normal_distribution<double> abweichung(0.0, 0.0005);
    Skizze::Bau bau;
    bau.beginneLinie();
    for (int i = 0; i < kPunkte; ++i) {
        const Koordinate ort = aufDerTour(static_cast<double>(i) / kPunkte);
        bau.haengeAn({ort.breite + abweichung(zufall), ort.laenge + abweichung(zufall)});
    }
    return eintragMit(std::move(bau));
}

template <typename Mache>
void BM_Skizze(benchmark::State& lauf, Mache mache) {
    std::mt19937 zufall(1);
    const std::array<Eintrag, 2> eintraege{mache(zufall), mache(zufall)};
    SkizzenAnsicht ansicht;
    ansicht.resize(kBreite, SkizzenAnsicht::kHoehe);
    ansicht.show();
    QApplication::processEvents();
    std::size_t naechster = 0;
    for (auto _ : lauf) {
        ansicht.zeige(eintraege.at(naechster++ % eintraege.size()));
        ansicht.repaint();
    }
    lauf.counters["Punkte"] = static_cast<double>(eintraege[0]->skizze.punkte().size());
    lauf.counters["Pixel"] =
        ansicht.devicePixelRatioF() * ansicht.devicePixelRatioF() * ansicht.width() * ansicht.height();
}
BENCHMARK_CAPTURE(BM_Skizze, tour, tour)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Skizze, stuecke, stuecke)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Skizze, netz, netz)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Skizze, punkte, punkte)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Skizze, zittern, zittern)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int anzahl, char** werte) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_SCALE_FACTOR", "2");
    benchmark::Initialize(&anzahl, werte);
    const QApplication programm(anzahl, werte);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
