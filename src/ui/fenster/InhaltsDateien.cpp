// Files that the user opens from outside: from the desktop's file manager or the command line.

#include <QPointer>
#include <filesystem>
#include <system_error>
#include <unordered_set>
#include <utility>

#include "base/Dateien.h"
#include "ui/fenster/InhaltsAnsicht.h"

namespace spurkiste {

namespace {

namespace fs = std::filesystem;

/// Whether both paths lead to the same folder, by whatever way.
bool istDerselbeOrdner(const fs::path& a, const fs::path& b) {
    std::error_code fehlt;
    return fs::equivalent(a, b, fehlt) && !fehlt;
}

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
    const std::string& ordner = bibliothek_.ordner().wert();
    std::unordered_set<std::string> eigene;
    for (const std::string& pfad : pfade) {
        std::error_code fehlt;
        if (!fs::exists(pfad, fehlt) || fs::is_directory(pfad, fehlt)) {
            continue;
        }
        if (istDerselbeOrdner(fs::path(pfad).parent_path(), ordner)) {
            eigene.insert(ordner + (ordner.ends_with('/') ? "" : "/") + std::string(dateien::letzterTeil(pfad)));
        } else {
            bibliothek_.importiere({pfad});
        }
    }
    zeigeInDerListe(eigene);
}

void InhaltsAnsicht::zeigeInDerListe(const std::unordered_set<std::string>& pfade) {
    if (zeilenbau_.baut()) {
        zuZeigen_ = pfade;
        return;
    }
    Ansichtszustand neu = zustand_;
    neu.auswahl = Pfadmenge(pfade);
    neu.behalteVorhandene(bibliothek_.eintraege().wert());
    if (neu.auswahl.empty()) {
        return;
    }
    zustand_.auswahl = std::move(neu.auswahl);
    auffrischung_.sofort();
    if (tabelle_->gezeigteAuswahl().size() <
        zustand_.auswahl.size()) {  // a filter would hide what the user has just asked for
        zustand_.setzeZurueck();
        auffrischung_.sofort();
    }
    tabelle_->rolleZu(*zustand_.auswahl.begin());
}

}  // namespace spurkiste
