// How a list settles: sorted and labelled away from the main thread, published, cached.

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "base/Dateien.h"
#include "base/Speicher.h"
#include "library/BibliothekLaeufe.h"

namespace spurkiste {

namespace {

constexpr std::size_t kLang = 10000;  // records that leave behind memory worth the milliseconds it takes to return it

}  // namespace

void Bibliothek::schliesseAb(Abschluss abschluss) {
    abschluesse_.push_back(std::move(abschluss));
    ordne();
}

/// Begins to settle the list if somebody waits for it and nothing stands against it. To be called whenever that may
/// have become so.
void Bibliothek::ordne() {
    if (rechnetWer() || abschluesse_.empty() || wartetAufImporte()) {
        return;
    }
    ordnet_ = true;
    geweckt_ = false;
    inOrdnung_ = std::exchange(abschluesse_, {});
    protokoll_.vergiss();
    const auto liste = std::make_shared<Eintraege>(eintraege_.wert());
    const auto neue = std::make_shared<std::vector<std::string>>(std::exchange(eingefuegte_, {}));
    rueckweg_.hinUndZurueck(
        hintergrund(),
        [liste, neue] {
            // By now the load has left behind what it needed, and sorting leaves as much.
            const bool lang = liste->size() > kLang;
            if (lang) {
                speicher::gibZurueck();
            }
            auto ergebnis = std::make_shared<listenordnung::Ergebnis>(
                listenordnung::ordne(std::exchange(*liste, {}), std::exchange(*neue, {})));
            if (lang) {
                speicher::gibZurueck();
            }
            return ergebnis;
        },
        [this, nummer = ++ordnung_](const std::shared_ptr<listenordnung::Ergebnis>& ergebnis) {
            landeOrdnung(nummer, *ergebnis);
        });
}

/// Whether the list had better be settled later, together with what other imports bring.
bool Bibliothek::wartetAufImporte() {
    if (anschluesse_.wecker == nullptr || geweckt_ || (importe_.empty() && importlaeufe_ == 0)) {
        return false;
    }
    if (!std::exchange(weckerLaeuft_, true)) {
        anschluesse_.wecker->wecke(std::chrono::seconds(1), rueckweg_.hier([this] {
            weckerLaeuft_ = false;
            geweckt_ = true;
            ordne();
        }));
    }
    return true;
}

void Bibliothek::landeOrdnung(std::uint64_t nummer, listenordnung::Ergebnis& ergebnis) {
    if (nummer != ordnung_ || !ordnet_) {
        return;  // overtaken
    }
    ordnet_ = false;
    // What was read and then vanished must not stay as a row without a file; without it, the list settles once more.
    std::erase_if(ergebnis.verschwunden,
                  [this](const std::string& pfad) { return !verzeichnis_.stelle(pfad) || dateien::gibtEs(pfad); });
    if (!ergebnis.verschwunden.empty()) {
        entferne(ergebnis.verschwunden);
        abschluesse_.insert(abschluesse_.begin(), std::make_move_iterator(inOrdnung_.begin()),
                            std::make_move_iterator(inOrdnung_.end()));
        inOrdnung_.clear();
        ordne();
        return;
    }
    if (ergebnis.neu) {
        protokoll_.spieleNach(ergebnis.eintraege, ergebnis.verzeichnis);
        setzeEintraege(std::move(ergebnis.eintraege), std::move(ergebnis.verzeichnis));
    }
    std::vector<Fertig> fertige = beende(std::exchange(inOrdnung_, {}));
    ordne();
    speichereCache(std::move(fertige));
}

/// Ends the runs that waited for a settled list, and returns what is to be called at the end of all.
std::vector<Bibliothek::Fertig> Bibliothek::beende(std::vector<Abschluss> abschluesse) {
    std::vector<Fertig> fertige;
    for (Abschluss& abschluss : abschluesse) {
        if (abschluss.endetLauf) {
            beendeLauf();
        }
        if (abschluss.fertig) {
            fertige.push_back(std::move(abschluss.fertig));
        }
    }
    return fertige;
}

bool Bibliothek::istEtwasFaellig() const {
    return cacheFaellig_ || !inOrdnung_.empty() || !abschluesse_.empty();
}

/// Before a load or another folder: what is under way for the list as it is counts no more. What was to be cached is
/// cached as it is, without its order, which a cache need not have.
void Bibliothek::ueberhole() {
    if (ladung_) {
        *ladung_->abbruch = true;
    }
    const bool zuSchreiben = istEtwasFaellig() && geoeffnet_.wert() && anschluesse_.mitCache;
    std::move(abschluesse_.begin(), abschluesse_.end(), std::back_inserter(inOrdnung_));
    abschluesse_.clear();
    ordnet_ = false;
    cacheFaellig_ = false;
    protokoll_.vergiss();
    std::vector<Fertig> fertige = beende(std::exchange(inOrdnung_, {}));
    if (zuSchreiben) {
        cache_.schreibe(ordner_.wert(), eintraege_.wert(), std::move(fertige));
        return;
    }
    for (Fertig& fertig : fertige) {
        rueckweg_.zurueck(std::move(fertig))();
    }
}

}  // namespace spurkiste
