// Reading one believable recording of about 1 MB: from disk, cut off in the middle, from memory, from memory without
// the fast way; and the two things that every point asks for, a number and a timestamp. The whole program on 300 MB is
// measured by messe.py.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/Zahl.h"
#include "erzeuge/Erzeuger.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"

namespace {

using spurkiste::GpxLeser;
using spurkiste::GpxMetadaten;
using spurkiste::TempOrdner;

const std::string& spur() {
    static const std::string inhalt = spurkiste::erzeuge::erzeugeSpur(1, 1'000'000);
    return inhalt;
}

// The contents of all elements or attributes that begin and end so.
std::vector<std::string> ausschnitte(std::string_view anfang, char ende) {
    const std::string& text = spur();
    std::vector<std::string> funde;
    for (std::size_t ort = text.find(anfang); ort != std::string::npos; ort = text.find(anfang, ort)) {
        ort += anfang.size();
        funde.push_back(text.substr(ort, text.find(ende, ort) - ort));
    }
    return funde;
}

void zaehleBytes(benchmark::State& lauf, std::size_t bytes) {
    lauf.SetBytesProcessed(static_cast<std::int64_t>(lauf.iterations()) * static_cast<std::int64_t>(bytes));
}

void leseDatei(benchmark::State& lauf, std::string_view inhalt) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("spur.gpx", inhalt);
    if (GpxLeser::lese(pfad)->punkte == 0) {  // loads the place list as well, which is not to be measured
        throw std::logic_error("a recording without points");
    }
    for (auto _ : lauf) {
        benchmark::DoNotOptimize(GpxLeser::lese(pfad));
    }
    zaehleBytes(lauf, inhalt.size());
}

void ganzeDatei(benchmark::State& lauf) {
    leseDatei(lauf, spur());
}
BENCHMARK(ganzeDatei)->Unit(benchmark::kMillisecond);

void abgeschnitteneDatei(benchmark::State& lauf) {
    leseDatei(lauf, std::string_view(spur()).substr(0, spur().size() * 2 / 3));
}
BENCHMARK(abgeschnitteneDatei)->Unit(benchmark::kMillisecond);

void inhaltImSpeicher(benchmark::State& lauf) {
    for (auto _ : lauf) {
        benchmark::DoNotOptimize(GpxLeser::ausInhalt(spur()));
    }
    zaehleBytes(lauf, spur().size());
}
BENCHMARK(inhaltImSpeicher)->Unit(benchmark::kMillisecond);

void inhaltNurDurchExpat(benchmark::State& lauf) {
    for (auto _ : lauf) {
        benchmark::DoNotOptimize(
            GpxLeser::ausInhalt(spur(), spurkiste::XmlLauf::kAmStueck, spurkiste::XmlWeg::nurExpat));
    }
    zaehleBytes(lauf, spur().size());
}
BENCHMARK(inhaltNurDurchExpat)->Unit(benchmark::kMillisecond);

template <class Lies>
void jedenText(benchmark::State& lauf, const std::vector<std::string>& texte, const Lies& lies) {
    for (auto _ : lauf) {
        for (const std::string& text : texte) {
            auto wert = lies(text);
            if (!wert) {
                lauf.SkipWithError("a text that does not read");
                return;
            }
            benchmark::DoNotOptimize(wert);
        }
    }
    lauf.SetItemsProcessed(static_cast<std::int64_t>(lauf.iterations()) * static_cast<std::int64_t>(texte.size()));
}

void zeitstempel(benchmark::State& lauf) {
    jedenText(lauf, ausschnitte("<time>", '<'), [](std::string_view text) { return GpxLeser::datumAus(text); });
}
BENCHMARK(zeitstempel)->Unit(benchmark::kMicrosecond);

void zahlen(benchmark::State& lauf) {
    jedenText(lauf, ausschnitte("lon=\"", '"'), [](std::string_view text) { return spurkiste::zahl::lies(text); });
}
BENCHMARK(zahlen)->Unit(benchmark::kMicrosecond);

}  // namespace
