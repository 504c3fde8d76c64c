// How the whole window feels: the way from a key stroke to the rows in the model, a click on a title, and whether the
// event loop keeps answering while a load floods in. Offscreen, on made-up libraries on disk.

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMenu>
#include <QTimer>
#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include <benchmark/benchmark.h>

#include "base/ArbeiterPool.h"
#include "erzeuge/Erzeuger.h"
#include "hilfe/SpeicherEinstellungen.h"
#include "hilfe/TempOrdner.h"
#include "library/Bibliothek.h"
#include "platform/qt/QtAusfuehrer.h"
#include "platform/qt/QtDateimanager.h"
#include "ui/fenster/InhaltsAnsicht.h"

namespace spurkiste {
namespace {

const TempOrdner& ordnerMit(std::int64_t anzahl) {
    static std::map<std::int64_t, TempOrdner> ordner;
    const auto [stelle, neu] = ordner.try_emplace(anzahl);
    if (neu) {
        erzeuge::Wunsch wunsch;
        wunsch.anzahl = static_cast<std::size_t>(anzahl);
        wunsch.punkte = 20;
        erzeuge::schreibeBibliothek(stelle->second.pfad(), wunsch);
    }
    return stelle->second;
}

/// A window on a library of so many files, as the program makes it; not loaded before it is shown.
struct Buehne {
    explicit Buehne(std::int64_t anzahl, bool mitCache)
        : bibliothek({einstellungen, nullptr, umgebung, hauptfaden, arbeiter, mitCache}, ordnerMit(anzahl).pfad()),
          fenster(bibliothek, einstellungen, dateimanager, sprachwechsel) {}

    /// Runs the event loop until the load is over; returns the longest time between two turns, in milliseconds.
    double lade() {
        QEventLoop schleife;
        QElapsedTimer uhr;
        qint64 laengste = 0;
        QTimer takt;
        takt.setInterval(0);
        QObject::connect(&takt, &QTimer::timeout, [&] {
            if (uhr.isValid()) {
                laengste = std::max(laengste, uhr.nsecsElapsed());
            }
            uhr.start();
        });
        takt.start();
        bibliothek.lade([&] { QTimer::singleShot(0, &schleife, &QEventLoop::quit); });
        schleife.exec();
        QApplication::processEvents();
        return static_cast<double>(laengste) / 1e6;
    }

    SpeicherEinstellungen einstellungen{{"appLanguage", "de"}};
    FesteUmgebung umgebung;
    QtAusfuehrer hauptfaden;
    ArbeiterPool arbeiter;
    QtDateimanager dateimanager;
    Meldestelle sprachwechsel;
    Bibliothek bibliothek;
    InhaltsAnsicht fenster;
};

/// Typing and deleting: from the change of the text to the new rows in the model.
void tastendruck(benchmark::State& zustand) {
    Buehne buehne(zustand.range(0), false);
    buehne.lade();
    auto* feld = buehne.fenster.findChild<QLineEdit*>();
    const QStringList worte{"", "r", "ru", "run", "rund", "run", "ru", "r"};
    qsizetype naechstes = 0;
    for ([[maybe_unused]] const auto schritt : zustand) {
        feld->setText(worte[++naechstes % worte.size()]);
    }
}
BENCHMARK(tastendruck)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// Clicks on the title of the names, whose order is the natural one.
void spaltenklick(benchmark::State& zustand) {
    Buehne buehne(zustand.range(0), false);
    buehne.lade();
    auto* tabelle = buehne.fenster.findChild<TabellenAnsicht*>();
    for ([[maybe_unused]] const auto schritt : zustand) {
        Q_EMIT tabelle->kopfGeklickt(Spalte::name);
    }
}
BENCHMARK(spaltenklick)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// Ctrl+A, until the window has caught up.
void allesAuswaehlen(benchmark::State& zustand) {
    Buehne buehne(zustand.range(0), false);
    buehne.lade();
    auto* tabelle = buehne.fenster.findChild<TabellenAnsicht*>();
    for ([[maybe_unused]] const auto schritt : zustand) {
        zustand.PauseTiming();
        tabelle->clearSelection();
        QApplication::processEvents();
        zustand.ResumeTiming();
        tabelle->selectAll();
        QApplication::processEvents();
    }
}
BENCHMARK(allesAuswaehlen)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// With everything selected: the menu of the rows comes up.
void kontextmenue(benchmark::State& zustand) {
    Buehne buehne(zustand.range(0), false);
    buehne.lade();
    auto* tabelle = buehne.fenster.findChild<TabellenAnsicht*>();
    tabelle->selectAll();
    QApplication::processEvents();
    for ([[maybe_unused]] const auto schritt : zustand) {
        Q_EMIT tabelle->kontextmenueGewuenscht({});
        zustand.PauseTiming();
        delete buehne.fenster.findChild<QMenu*>();
        zustand.ResumeTiming();
    }
}
BENCHMARK(kontextmenue)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// A load whose files are all read: its time, and the longest turn of the event loop. The second argument says
/// whether the cache is written at the end.
void flut(benchmark::State& zustand) {
    double laengste = 0;
    for ([[maybe_unused]] const auto schritt : zustand) {
        zustand.PauseTiming();
        (void)ordnerMit(zustand.range(0));
        auto buehne = std::make_unique<Buehne>(zustand.range(0), zustand.range(1) != 0);
        std::filesystem::remove(ordnerMit(zustand.range(0)).in(".spurkiste-cache.json"));
        zustand.ResumeTiming();
        laengste = std::max(laengste, buehne->lade());
        zustand.PauseTiming();
        buehne.reset();
        zustand.ResumeTiming();
    }
    zustand.counters["laengste_runde_ms"] = laengste;
    zustand.SetItemsProcessed(zustand.iterations() * zustand.range(0));
}
BENCHMARK(flut)
    ->Args({1000, 0})
    ->Args({10000, 0})
    ->Args({10000, 1})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

}  // namespace
}  // namespace spurkiste

int main(int anzahl, char** argumente) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication programm(anzahl, argumente);
    benchmark::Initialize(&anzahl, argumente);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
