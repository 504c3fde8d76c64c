// A library without a window that does what the lines of its standard input say, one after the other, for tests that
// disturb or kill it: Bibliothekslauf FOLDER SETTINGS. Words are parted by tabs:
//
//   lade | importiere FILE... | benenne NAME NEW-NAME | sport NAME SPORT | einstellung KEY VALUE
//
// After each it says "gut", or "schlecht" and the notice: then the user has been told. Ends with 1 after any of these.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"
#include "hilfe/SpeicherEinstellungen.h"
#include "library/Bibliothek.h"
#include "platform/posix/DateiEinstellungen.h"

namespace {

using namespace spurkiste;

class Lauf {
  public:
    Lauf(const std::string& ordner, const std::string& einstellungen)
        : einstellungen_(einstellungen), bibliothek_(anschluesse(), ordner) {}

    int laufe() {
        hauptfaden_.fuehreAus([this] { naechste(); });
        hauptfaden_.laufe();
        return ende_;
    }

  private:
    Bibliothek::Anschluesse anschluesse() {
        Bibliothek::Anschluesse alle{einstellungen_, nullptr, umgebung_, hauptfaden_, arbeiter_};
        alle.schreiber = &schreiber_;
        alle.kopierer = &kopierer_;
        alle.hintergrund = &hintergrund_;
        alle.cacheschreiber = &cacheschreiber_;
        return alle;
    }

    Eintrag eintrag(const std::string& name) const {
        const auto& alle = bibliothek_.eintraege().wert();
        const auto stelle = std::find_if(alle.begin(), alle.end(), [&](const auto& e) { return e->dateiName == name; });
        return stelle == alle.end() ? nullptr : *stelle;
    }

    void melde(bool gut) {
        ende_ = gut ? ende_ : 1;
        std::cout << (gut ? "gut" : "schlecht " + bibliothek_.hinweis().wert().value_or("?")) << std::endl;
        hauptfaden_.fuehreAus([this] { naechste(); });
    }

    void naechste() {
        std::string zeile;
        if (!std::getline(std::cin, zeile)) {
            hauptfaden_.beende();
            return;
        }
        std::istringstream strom(zeile);
        std::vector<std::string> worte;
        for (std::string wort; std::getline(strom, wort, '\t');) {
            worte.push_back(wort);
        }
        const auto fertig = [this] { melde(!bibliothek_.hinweis().wert()); };
        if (worte[0] == "lade") {
            bibliothek_.lade(fertig);
        } else if (worte[0] == "importiere") {
            bibliothek_.importiere({worte.begin() + 1, worte.end()}, fertig);
        } else if (worte[0] == "einstellung") {
            einstellungen_.schreibe(worte[1], worte[2]);
            melde(true);
        } else if (const auto gemeinter = eintrag(worte[1]); gemeinter == nullptr) {
            melde(false);
        } else if (worte[0] == "benenne") {
            melde(bibliothek_.benenneUm(*gemeinter, worte[2]).has_value());
        } else {
            bibliothek_.setzeSportart(*GpxSportart::ausRawValue(worte[2]), *gemeinter, fertig);
        }
    }

    int ende_ = 0;
    DateiEinstellungen einstellungen_;
    FesteUmgebung umgebung_;
    Hauptschlange hauptfaden_;
    ArbeiterPool arbeiter_;
    ArbeiterPool hintergrund_{1};
    ArbeiterPool kopierer_{1};
    ArbeiterPool schreiber_{1, ArbeiterPool::AmEnde::kommtDran};
    ArbeiterPool cacheschreiber_{1, ArbeiterPool::AmEnde::kommtDran};
    Bibliothek bibliothek_;
};

bool istSpeichermangel() {
    try {
        if (const auto ausnahme = std::current_exception()) {
            std::rethrow_exception(ausnahme);
        }
        return false;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

int main(int anzahl, char** argumente) {
    // As the command line does: memory that runs out in a thread's own business, where nobody can say so, ends it.
    std::set_terminate([] {
        if (!istSpeichermangel()) {
            std::abort();
        }
        std::fputs("Der Speicher reicht nicht.\n", stderr);
        std::_Exit(1);
    });
    try {
        return anzahl == 3 ? Lauf(argumente[1], argumente[2]).laufe() : 2;
    } catch (const std::exception& fehler) {
        std::cerr << fehler.what() << std::endl;
        return 1;
    }
}
