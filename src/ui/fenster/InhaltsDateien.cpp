// Files that the user opens from outside: from the desktop's file manager or the command line.

#include <QPointer>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "ui/fenster/InhaltsAnsicht.h"

namespace spurkiste {

namespace {

constexpr std::size_t kWenige = 20;  // files that one looks for one by one

}  // namespace

void InhaltsAnsicht::ladeErstmals() {
    bibliothek_.lade([selbst = QPointer<InhaltsAnsicht>(this)] {
        if (selbst && !std::exchange(selbst->geladen_, true)) {
            selbst->oeffneDateien(std::exchange(selbst->wartend_, {}));
        }
    });
}

void InhaltsAnsicht::oeffneDateien(const std::vector<std::string>& pfade) {
    if (!geladen_) {  // a load would make the results of an import stale
        wartend_.insert(wartend_.end(), pfade.begin(), pfade.end());
        return;
    }
    zeigtErste_ = zuZeigen_.empty();
    zeigtZusammen_ = pfade.size() > kWenige || (zeigtZusammen_ && !zuZeigen_.empty());
    bibliothek_.oeffne(pfade, zeigeSobaldDa());
}

/// Copies files into the library, `zusammen` of them with one gesture, and shows them. Of many nobody looks for each.
void InhaltsAnsicht::importiere(const std::vector<std::string>& pfade, std::size_t zusammen) {
    zeigtErste_ = zuZeigen_.empty();
    bibliothek_.importiere(pfade, {}, zusammen <= kWenige ? zeigeSobaldDa() : Bibliothek::Gefunden());
}

Bibliothek::Gefunden InhaltsAnsicht::zeigeSobaldDa() {
    return [selbst = QPointer<InhaltsAnsicht>(this)](const std::vector<std::string>& gefundene) {
        if (selbst) {
            selbst->zuZeigen_.insert(gefundene.begin(), gefundene.end());
            selbst->zeigeGeoeffnete();
        }
    };
}

/// Whether the files to show may be there. Many are shown together, once all are: each costs a refresh.
bool InhaltsAnsicht::koennenGezeigtWerden() const {
    const bool kommenNoch = bibliothek_.laedt().wert() || bibliothek_.zuKopieren().wert() > 0;
    return !zuZeigen_.empty() && !zeilenbau_.baut() && !(zeigtZusammen_ && kommenNoch);
}

/// Selects those of the opened files that have come to the list by now, the first ones in place of the old selection.
void InhaltsAnsicht::zeigeGeoeffnete() {
    if (!koennenGezeigtWerden()) {
        return;  // the refresh after it comes back here
    }
    Ansichtszustand da = zustand_;
    da.auswahl = zuZeigen_;
    da.behalteVorhandene(bibliothek_.eintraege().wert());
    if (!bibliothek_.laedt().wert()) {
        zuZeigen_.clear();  // what has not come by now never will
    }
    if (da.auswahl.empty()) {
        return;
    }
    const std::string erster = *da.auswahl.begin();
    for (const std::string& pfad : da.auswahl) {
        zuZeigen_.erase(pfad);
    }
    if (!std::exchange(zeigtErste_, false)) {
        for (const std::string& pfad : zustand_.auswahl) {
            da.auswahl.insert(pfad);
        }
    }
    zustand_.auswahl = std::move(da.auswahl);
    auffrischung_.sofort();
    if (tabelle_->gezeigteAuswahl().size() <
        zustand_.auswahl.size()) {  // a filter would hide what the user has just asked for
        zustand_.setzeZurueck();
        auffrischung_.sofort();
    }
    tabelle_->rolleZu(erster);
}

}  // namespace spurkiste
