// The cache file of a large library: 10 000 records with full sketches, 300 to 510 points each. Argument: 0 for
// coordinates with seven decimals, as most devices write them, 1 for all digits of a double.

#include <QByteArray>
#include <QJsonDocument>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "base/Dateien.h"
#include "hilfe/TempOrdner.h"
#include "library/Cache.h"
#include "library/CacheSchreiber.h"

namespace {

using spurkiste::Cache;
using spurkiste::CacheSchreiber;
using spurkiste::Eintrag;
using spurkiste::GpxMetadaten;
using spurkiste::Koordinate;
using spurkiste::Skizze;
using spurkiste::TempOrdner;

constexpr int kEintraege = 10000;

std::vector<Eintrag> baueEintraege(bool alleStellen) {
    std::mt19937_64 zufall(1);
    std::uniform_real_distribution<double> zwischen0und1;
    const auto wuerfle = [&] { return zwischen0und1(zufall); };
    const auto grad = [&](double wert) { return alleStellen ? wert : std::round(wert * 1e7) / 1e7; };
    std::vector<Eintrag> liste;
    for (int i = 0; i < kEintraege; ++i) {
        GpxMetadaten eintrag;
        eintrag.dateiName = "Tour-" + std::to_string(i);
        eintrag.pfad = "/home/anna/GPX-Bibliothek/" + eintrag.dateiName + ".gpx";
        eintrag.spurName = "Morgenrunde um den See";
        eintrag.dateiDatum.sekunden = 7e8 + i + wuerfle();
        eintrag.datum = eintrag.dateiDatum;
        eintrag.dateiGroesse = 100000 + i;
        eintrag.streckeMeter = 1e5 * wuerfle();
        eintrag.dauerSekunden = 3600.0;
        eintrag.anstiegMeter = 1e3 * wuerfle();
        eintrag.sportRoh = "cycling";
        eintrag.startOrt = eintrag.zielOrt = "Garmisch-Partenkirchen";
        Koordinate ort{grad(47.0 + wuerfle()), grad(11.0 + wuerfle())};
        eintrag.start = ort;
        Skizze::Bau skizze;
        skizze.beginneLinie();
        const auto punkte = 300 + static_cast<int>(211.0 * wuerfle());
        for (int j = 0; j < punkte; ++j) {
            skizze.haengeAn(ort);
            ort = {grad(ort.breite + 1e-3 * (wuerfle() - 0.5)), grad(ort.laenge + 1e-3 * (wuerfle() - 0.5))};
        }
        eintrag.ende = ort;
        eintrag.punkte = 10 * punkte;
        eintrag.skizze = std::move(skizze).fertig();
        liste.push_back(std::make_shared<const GpxMetadaten>(std::move(eintrag)));
    }
    return liste;
}

const TempOrdner& ordnerMitCache(bool alleStellen) {
    static const TempOrdner ordner;
    if (!Cache::schreibeNach(ordner.pfad(), baueEintraege(alleStellen))) {
        throw std::runtime_error("the cache cannot be written");
    }
    return ordner;
}

std::int64_t dateigroesse(const TempOrdner& ordner) {
    return static_cast<std::int64_t>(std::filesystem::file_size(ordner.in(Cache::kDateiname)));
}

void lies(benchmark::State& zustand) {
    const TempOrdner& ordner = ordnerMitCache(zustand.range(0) != 0);
    for ([[maybe_unused]] auto durchlauf : zustand) {
        Cache cache = Cache::liesAus(ordner.pfad());
        zustand.PauseTiming();
        if (cache.eintraege.size() != kEintraege) {
            zustand.SkipWithError("the cache was not read");
        }
        // Back to the system, as a program has it at its start: touching fresh memory is a good part of the time.
        cache = {};
        ::malloc_trim(0);
        zustand.ResumeTiming();
    }
    zustand.SetBytesProcessed(static_cast<std::int64_t>(zustand.iterations()) * dateigroesse(ordner));
}

/// The measure for the above: a well-known reader of any JSON, and of bytes that lie in memory already.
void liesMitQt(benchmark::State& zustand) {
    const TempOrdner& ordner = ordnerMitCache(zustand.range(0) != 0);
    const auto text = QByteArray::fromStdString(ordner.lies(Cache::kDateiname));
    for ([[maybe_unused]] auto durchlauf : zustand) {
        QJsonDocument dokument = QJsonDocument::fromJson(text);
        zustand.PauseTiming();
        if (!dokument.isObject()) {
            zustand.SkipWithError("the cache was not read");
        }
        dokument = {};
        ::malloc_trim(0);
        zustand.ResumeTiming();
    }
    zustand.SetBytesProcessed(static_cast<std::int64_t>(zustand.iterations()) * text.size());
}

/// The file is taken away each time: one that is equal would not be written.
void schreibe(benchmark::State& zustand) {
    const std::vector<Eintrag> liste = baueEintraege(zustand.range(0) != 0);
    const TempOrdner& ordner = ordnerMitCache(zustand.range(0) != 0);
    for ([[maybe_unused]] auto durchlauf : zustand) {
        zustand.PauseTiming();
        std::filesystem::remove(std::filesystem::path(ordner.pfad()) / Cache::kDateiname);
        zustand.ResumeTiming();
        if (!Cache::schreibeNach(ordner.pfad(), liste)) {
            zustand.SkipWithError("the cache cannot be written");
        }
    }
    zustand.SetBytesProcessed(static_cast<std::int64_t>(zustand.iterations()) * dateigroesse(ordner));
}

/// Nothing has changed. Second argument: whether the writer knows which records the file holds.
void schreibeUnveraendertes(benchmark::State& zustand) {
    const TempOrdner& ordner = ordnerMitCache(zustand.range(0) != 0);
    const Cache cache = Cache::liesAus(ordner.pfad());
    if (!cache.abdruck) {
        zustand.SkipWithError("the cache was not read");
        return;
    }
    std::vector<Eintrag> liste;
    for (const auto& stelle : cache.abdruck->stellen) {
        liste.push_back(stelle.eintrag);
    }
    for ([[maybe_unused]] auto durchlauf : zustand) {
        const auto ergebnis = CacheSchreiber::schreibe(ordner.pfad() + "/" + std::string(Cache::kDateiname), liste,
                                                       zustand.range(1) != 0 ? cache.abdruck.get() : nullptr);
        if (ergebnis.ausgang != CacheSchreiber::Ausgang::unveraendert) {
            zustand.SkipWithError("the cache was written");
        }
    }
}

BENCHMARK(lies)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(liesMitQt)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(schreibeUnveraendertes)->ArgsProduct({{0, 1}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(schreibe)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace
