#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"
#include "hilfe/HandAusfuehrer.h"
#include "hilfe/SpeicherEinstellungen.h"
#include "hilfe/TempOrdner.h"
#include "library/Bibliothek.h"
#include "library/Cache.h"

namespace spurkiste {

/// A track of one point, with the sport type where there is one.
inline std::string gpx(double breite, double laenge, const std::string& sport = "") {
    const auto ort = R"(<trkpt lat=")" + std::to_string(breite) + R"(" lon=")" + std::to_string(laenge) + R"("/>)";
    const std::string art = sport.empty() ? "" : "<type>" + sport + "</type>";
    return "<gpx><trk>" + art + "<trkseg>" + ort + "</trkseg></trk></gpx>";
}

using Namen = std::vector<std::string>;

/// The file names of the records, in library order.
inline Namen namen(const Bibliothek& bibliothek) {
    Namen ergebnis;
    for (const Eintrag& eintrag : bibliothek.eintraege().wert()) {
        ergebnis.emplace_back(dateien::letzterTeil(eintrag->pfad));
    }
    return ergebnis;
}

/// A trash that waits until the test says what became of the files.
class HandPapierkorb final : public Papierkorb {
  public:
    struct Anfrage {
        std::vector<std::string> pfade;
        Fertig fertig;
    };
    std::vector<Anfrage> anfragen;

    void verschiebe(std::vector<std::string> pfade, Fertig fertig) override {
        anfragen.push_back({std::move(pfade), std::move(fertig)});
    }
    void holeZurueck(const Fund& fund) const override { dateien::verschiebe(fund.ort, fund.pfad); }

    /// Moves what was asked for into a folder, and tells where it lies.
    void wirfAlles(const TempOrdner& korb) {
        for (const Anfrage& anfrage : std::exchange(anfragen, {})) {
            Ergebnis ergebnis;
            for (const std::string& pfad : anfrage.pfade) {
                const std::string ort = korb.in(std::to_string(++geworfene_));
                dateien::verschiebe(pfad, ort);
                ergebnis.verschoben.push_back(pfad);
                ergebnis.funde.push_back({pfad, ort, dateien::stand(ort)});
            }
            anfrage.fertig(ergebnis);
        }
    }

  private:
    int geworfene_ = 0;
};

/// An alarm clock that rings when the test says so.
class HandWecker final : public Wecker {
  public:
    std::vector<Aufgabe> wartende;

    void wecke(std::chrono::milliseconds /*nach*/, Aufgabe aufgabe) override { wartende.push_back(std::move(aufgabe)); }

    void klingle() {
        for (const Aufgabe& aufgabe : std::exchange(wartende, {})) {
            aufgabe();
        }
    }
};

/// A library on a temporary folder of which the test drives every thread by hand.
class Bibliotheksaufbau : public testing::Test {
  protected:
    TempOrdner ordner;
    SpeicherEinstellungen einstellungen;
    FesteUmgebung umgebung;
    HandAusfuehrer hauptfaden;
    HandAusfuehrer arbeiter;
    HandAusfuehrer schreiber;
    HandAusfuehrer kopierer;
    HandAusfuehrer hintergrund;
    HandAusfuehrer cacheschreiber;
    HandPapierkorb papierkorb;
    Bibliothek::Anschluesse anschluesse{einstellungen, nullptr,   umgebung,    hauptfaden,   arbeiter,       true,
                                        &schreiber,    &kopierer, &papierkorb, &hintergrund, &cacheschreiber};

    std::unique_ptr<Bibliothek> mach() { return std::make_unique<Bibliothek>(anschluesse, ordner.pfad()); }

    /// Lets everything that waits run to its end and tells how many files were read.
    std::size_t arbeiteAb() {
        std::size_t gelesen = 0;
        while (wartende() > 0) {
            gelesen += arbeiter.wartende();
            kopierer.fuehreAlle();
            schreiber.fuehreAlle();
            arbeiter.fuehreAlle();
            hintergrund.fuehreAlle();
            cacheschreiber.fuehreAlle();
            hauptfaden.fuehreAlle();
        }
        return gelesen;
    }

    [[nodiscard]] std::size_t wartende() const {
        return kopierer.wartende() + schreiber.wartende() + arbeiter.wartende() + hintergrund.wartende() +
               cacheschreiber.wartende() + hauptfaden.wartende();
    }

    /// Lets a load come to where the records of the cache are published and the reading of the others begins.
    void lasseNachsehen() {
        while (hintergrund.wartende() + cacheschreiber.wartende() > 0) {
            cacheschreiber.fuehreAlle();
            hintergrund.fuehreAlle();
            hauptfaden.fuehreAlle();
        }
    }

    /// A library that has loaded its folder.
    std::unique_ptr<Bibliothek> geladen() {
        auto bibliothek = mach();
        bibliothek->lade();
        arbeiteAb();
        return bibliothek;
    }

    /// The same with tracks of these names.
    std::unique_ptr<Bibliothek> mitSpuren(const Namen& alle) {
        for (const std::string& name : alle) {
            ordner.schreibe(name, gpx(47, 8));
        }
        return geladen();
    }

    static const GpxMetadaten& erster(const Bibliothek& bibliothek) { return *bibliothek.eintraege().wert().front(); }

    /// The names in the library folder but for the cache, sorted.
    [[nodiscard]] Namen imOrdner() const {
        Namen alle = dateien::liste(ordner.pfad());
        alle.erase(std::remove(alle.begin(), alle.end(), Cache::kDateiname), alle.end());
        std::sort(alle.begin(), alle.end());
        return alle;
    }

    [[nodiscard]] std::string cacheText() const { return ordner.lies(Cache::kDateiname); }
};

}  // namespace spurkiste
