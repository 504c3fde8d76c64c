// The way back from what was done to files, and forth again.

#include <QPointer>
#include <unordered_set>

#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

void InhaltsAnsicht::nimmZurueck(Richtung richtung) {
    bibliothek_.nimmZurueck(richtung,
                            [selbst = QPointer<InhaltsAnsicht>(this)](const Bibliothek::Zurueckgenommen& ergebnis) {
                                if (selbst) {
                                    selbst->status_->sage(alsText(ergebnis.text));
                                    selbst->waehleBetroffene(ergebnis.pfade);
                                }
                            });
}

/// Selects the files that a step has concerned, so that it can be seen what it has done. Filters stay: what they hide,
/// the panel shows.
void InhaltsAnsicht::waehleBetroffene(const std::vector<std::string>& pfade) {
    if (pfade.empty()) {
        return;
    }
    zustand_.auswahl = Pfadmenge(std::unordered_set<std::string>(pfade.begin(), pfade.end()));
    eintraegeNeu_ = true;
    rolltZurAuswahl_ = true;
    auffrischung_.sofort();
}

}  // namespace spurkiste
