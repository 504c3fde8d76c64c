// What loading costs beyond the reading of the files: listing, handing out, landing, labelling.

#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"
#include "hilfe/HandAusfuehrer.h"
#include "hilfe/SpeicherEinstellungen.h"
#include "hilfe/TempOrdner.h"
#include "library/Bibliothek.h"
#include "places/Ortsbuch.h"

namespace spurkiste {
namespace {

/// A folder of so many tiny tracks, a kilometre apart, kept for all measurements of that size.
const TempOrdner& ordnerMit(std::int64_t anzahl) {
    static std::map<std::int64_t, TempOrdner> ordner;
    const auto [stelle, neu] = ordner.try_emplace(anzahl);
    for (std::int64_t i = 0; neu && i < anzahl; ++i) {
        const std::string ort = R"(<trkpt lat=")" + std::to_string(static_cast<double>(i / 300) * 0.01) + R"(" lon=")" +
                                std::to_string(static_cast<double>(i % 300) * 0.01) + R"("/>)";
        stelle->second.schreibe(std::to_string(i) + ".gpx", "<gpx><trk><trkseg>" + ort + "</trkseg></trk></gpx>");
    }
    return stelle->second;
}

/// A load without a cache: time on the main thread alone, each result landing as a change of its own.
void ladeUndLande(benchmark::State& zustand) {
    const TempOrdner& ordner = ordnerMit(zustand.range(0));
    SpeicherEinstellungen einstellungen;
    const FesteUmgebung umgebung;
    (void)Ortsbuch::geteilt();
    for ([[maybe_unused]] const auto schritt : zustand) {
        HandAusfuehrer hauptfaden;
        HandAusfuehrer arbeiter;
        Bibliothek bibliothek({einstellungen, nullptr, umgebung, hauptfaden, arbeiter, false}, ordner.pfad());
        std::size_t aenderungen = 0;
        const Abo abo = bibliothek.eintraege().beobachte([&] { ++aenderungen; });
        bibliothek.lade();
        while (arbeiter.wartende() > 0) {
            zustand.PauseTiming();
            arbeiter.fuehreAlle();
            zustand.ResumeTiming();
            hauptfaden.fuehreAlle();
        }
        benchmark::DoNotOptimize(aenderungen);
    }
    zustand.SetComplexityN(zustand.range(0));
    zustand.SetItemsProcessed(zustand.iterations() * zustand.range(0));
}
BENCHMARK(ladeUndLande)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

/// Sorting and labelling a list that is in order already, as after a load from the cache.
void etikettiere(benchmark::State& zustand) {
    Bibliothek::Eintraege eintraege;
    for (std::int64_t i = 0; i < zustand.range(0); ++i) {
        GpxMetadaten roh;
        roh.pfad = "/bibliothek/Höhenweg " + std::to_string(i) + ".gpx";
        roh.start = Koordinate{46.0 + static_cast<double>(i % 997) * 0.003, 7.0 + static_cast<double>(i % 89) * 0.03};
        roh.ende = roh.start;
        eintraege.push_back(std::make_shared<const GpxMetadaten>(std::move(roh)));
    }
    eintraege = listenordnung::mitOrtsEtiketten(std::move(eintraege));
    for ([[maybe_unused]] const auto schritt : zustand) {
        benchmark::DoNotOptimize(listenordnung::mitOrtsEtiketten(eintraege));
    }
}
BENCHMARK(etikettiere)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// An import of files of 100 kB each, from the call until the last of them is on the disk and in the list. On the disk
/// of the temporary folder, whose speed at flushing is most of it.
void importiere(benchmark::State& zustand) {
    const TempOrdner quellordner;
    std::vector<std::string> quellen;
    for (std::int64_t i = 0; i < zustand.range(0); ++i) {
        quellen.push_back(quellordner.schreibe(std::to_string(i) + ".gpx",
                                               "<gpx><trk><name>" + std::string(100'000, 'x') + "</name></trk></gpx>"));
    }
    SpeicherEinstellungen einstellungen;
    const FesteUmgebung umgebung;
    (void)Ortsbuch::geteilt();
    for ([[maybe_unused]] const auto schritt : zustand) {
        const TempOrdner ordner;
        ::sync();
        Hauptschlange hauptfaden;
        ArbeiterPool arbeiter;
        ArbeiterPool kopierer(1);
        Bibliothek::Anschluesse anschluesse{einstellungen, nullptr, umgebung, hauptfaden, arbeiter};
        anschluesse.kopierer = &kopierer;
        const auto beginn = std::chrono::steady_clock::now();
        Bibliothek bibliothek(anschluesse, ordner.pfad());
        bibliothek.importiere(quellen, [&] { hauptfaden.beende(); });
        hauptfaden.laufe();
        zustand.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - beginn).count());
    }
    zustand.SetItemsProcessed(zustand.iterations() * zustand.range(0));
}
BENCHMARK(importiere)->Arg(1)->Arg(200)->Unit(benchmark::kMillisecond)->UseManualTime();

}  // namespace
}  // namespace spurkiste
