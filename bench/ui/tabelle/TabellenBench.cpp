// How long the table takes to show other rows, to paint a page and to be scrolled, and what of that allocates.
#include <QApplication>
#include <QScrollBar>
#include <QTimer>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "erzeuge/Erzeuger.h"
#include "hilfe/Ansichtsbau.h"
#include "sicht/Ansichtsbild.h"
#include "ui/tabelle/TabellenAnsicht.h"

namespace {

std::atomic<std::int64_t> anforderungen = 0;

}  // namespace

// Takes the place of the C library's function for every library of the process, the toolkit included: counting only
// what operator new hands out would miss most of it. The names are the C library's.
// NOLINTBEGIN(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp, readability-identifier-naming)
extern "C" {
void* __libc_malloc(std::size_t groesse);
void* __libc_calloc(std::size_t anzahl, std::size_t groesse);
void* __libc_realloc(void* speicher, std::size_t groesse);

void* malloc(std::size_t groesse) {
    anforderungen.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(groesse);
}
void* calloc(std::size_t anzahl, std::size_t groesse) {
    anforderungen.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(anzahl, groesse);
}
void* realloc(void* speicher, std::size_t groesse) {
    anforderungen.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(speicher, groesse);
}
}
// NOLINTEND(bugprone-reserved-identifier, cert-dcl37-c, cert-dcl51-cpp, readability-identifier-naming)

namespace {

using namespace spurkiste;
using Zeilen = std::vector<std::shared_ptr<const Zeile>>;

constexpr QSize kGroesse(1055,
                         638);  // of the table in a window of the usual size

/// A library, its picture, and a table that shows it.
class Buehne {
  public:
    explicit Buehne(std::int64_t anzahl)
        : eintraege_(erzeuge::erzeugeEintraege(static_cast<std::size_t>(anzahl), 1, false)) {
        tabelle.resize(kGroesse);
        tabelle.show();
        zeige(zeilenMit({}));
        QApplication::processEvents();
    }

    Zeilen zeilenMit(const Ansichtszustand& zustand) {
        return berechneAnsichtsbild(eintraege_, zustand, texte_, speicher_).zeilen;
    }

    void zeige(Zeilen zeilen) { tabelle.setzeZeilen(std::move(zeilen)); }

    TabellenAnsicht tabelle;

  private:
    std::vector<Eintrag> eintraege_;
    Ansichtstexte texte_ = texteIn("de");
    Zeilenspeicher speicher_;
};

Ansichtszustand suche(std::string_view wort) {
    Ansichtszustand zustand;
    zustand.suche = wort;
    return zustand;
}

/// From one list of rows to another and back, without making them and without painting.
void wechsle(benchmark::State& lauf, Buehne& buehne, const Zeilen& a, const Zeilen& b) {
    bool zuB = true;
    buehne.zeige(a);
    for (auto _ : lauf) {
        lauf.PauseTiming();
        Zeilen naechste = zuB ? b : a;
        zuB = !zuB;
        lauf.ResumeTiming();
        buehne.zeige(std::move(naechste));
    }
    lauf.counters["Zeilen"] = static_cast<double>(a.size());
    lauf.counters["davon"] = static_cast<double>(b.size());
}

/// A letter is typed and taken back: scattered rows go and come.
void BM_SucheWechselt(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    wechsle(lauf, buehne, buehne.zeilenMit({}), buehne.zeilenMit(suche("z")));
}
BENCHMARK(BM_SucheWechselt)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// The same with every row selected.
void BM_SucheWechseltMitAuswahl(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    buehne.tabelle.selectAll();
    wechsle(lauf, buehne, buehne.zeilenMit({}), buehne.zeilenMit(suche("z")));
}
BENCHMARK(BM_SucheWechseltMitAuswahl)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// All rows change their places.
void BM_SortierungWechselt(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    Ansichtszustand nachName;
    nachName.sortierung.klicke(Spalte::name);
    wechsle(lauf, buehne, buehne.zeilenMit({}), buehne.zeilenMit(nachName));
}
BENCHMARK(BM_SortierungWechselt)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Everything is selected, as by Ctrl+A.
void BM_AllesAuswaehlen(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    for (auto _ : lauf) {
        lauf.PauseTiming();
        buehne.tabelle.clearSelection();
        lauf.ResumeTiming();
        buehne.tabelle.selectAll();
    }
}
BENCHMARK(BM_AllesAuswaehlen)->Arg(10'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// What a menu of the rows asks first: which of the selected files can be seen.
void BM_GezeigteAuswahl(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    buehne.tabelle.selectAll();
    for (auto _ : lauf) {
        benchmark::DoNotOptimize(buehne.tabelle.gezeigteAuswahl());
    }
}
BENCHMARK(BM_GezeigteAuswahl)->Arg(10'000)->Arg(50'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// One row comes, and goes again.
void BM_EineZeile(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    const Zeilen alle = buehne.zeilenMit({});
    Zeilen eineWeniger = alle;
    eineWeniger.erase(eineWeniger.begin() + static_cast<std::ptrdiff_t>(alle.size() / 3));
    wechsle(lauf, buehne, alle, eineWeniger);
}
BENCHMARK(BM_EineZeile)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// A key stroke as a whole: the picture, and its rows in the table.
void BM_Tastendruck(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    constexpr std::string_view worte[] = {"", "z", "zü", "zür", "zü", "z", "", "e", "ee", "e"};
    std::size_t naechstes = 0;
    for (auto _ : lauf) {
        buehne.zeige(buehne.zeilenMit(suche(worte[++naechstes % std::size(worte)])));
    }
}
BENCHMARK(BM_Tastendruck)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

/// Counts what painting allocates, against the number of cells painted.
class Zaehlung {
  public:
    explicit Zaehlung(benchmark::State& lauf) : lauf_(lauf) {}
    ~Zaehlung() {
        const auto zellen = static_cast<double>(reihen_) * static_cast<double>(kSpalten.size());
        lauf_.counters["Anforderungen/Bild"] = static_cast<double>(summe_) / static_cast<double>(bilder_);
        lauf_.counters["Anforderungen/Zelle"] = static_cast<double>(summe_) / zellen;
    }
    Zaehlung(const Zaehlung&) = delete;
    Zaehlung& operator=(const Zaehlung&) = delete;

    void male(TabellenAnsicht& tabelle) {
        const std::int64_t vorher = anforderungen;
        tabelle.viewport()->repaint();
        summe_ += anforderungen - vorher;
        reihen_ += tabelle.viewport()->height() / ZellenZeichner::kZeilenhoehe;
        ++bilder_;
    }

  private:
    benchmark::State& lauf_;
    std::int64_t summe_ = 0;
    std::int64_t reihen_ = 0;
    std::int64_t bilder_ = 0;
};

/// A page that has been painted before, again.
void BM_Seite(benchmark::State& lauf) {
    Buehne buehne(1'000);
    Zaehlung zaehlung(lauf);
    for (auto _ : lauf) {
        zaehlung.male(buehne.tabelle);
    }
}
BENCHMARK(BM_Seite)->Unit(benchmark::kMillisecond);

/// A page of rows that nobody has seen yet.
void BM_SeiteNeu(benchmark::State& lauf) {
    Buehne buehne(1'000);
    Zaehlung zaehlung(lauf);
    for (auto _ : lauf) {
        lauf.PauseTiming();
        buehne.tabelle.kleide();
        lauf.ResumeTiming();
        zaehlung.male(buehne.tabelle);
    }
}
BENCHMARK(BM_SeiteNeu)->Unit(benchmark::kMillisecond);

/// From top to bottom, `range(1)` pixels at a time: 96 are a notch of the wheel, 608 a page. One step is one picture.
void BM_Rollen(benchmark::State& lauf) {
    Buehne buehne(lauf.range(0));
    Zaehlung zaehlung(lauf);
    QScrollBar& balken = *buehne.tabelle.verticalScrollBar();
    for (auto _ : lauf) {
        balken.setValue(balken.value() < balken.maximum() ? balken.value() + static_cast<int>(lauf.range(1)) : 0);
        zaehlung.male(buehne.tabelle);
    }
}
BENCHMARK(BM_Rollen)->Args({100'000, 96})->Args({100'000, 608})->Unit(benchmark::kMillisecond);
// Every row once.
BENCHMARK(BM_Rollen)->Name("BM_RollenGanz")->Args({100'000, 608})->Iterations(5264)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int anzahl, char** werte) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    benchmark::Initialize(&anzahl, werte);
    const QApplication programm(anzahl, werte);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
