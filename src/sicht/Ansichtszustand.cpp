#include "sicht/Ansichtszustand.h"

#include <utility>

namespace spurkiste {

bool Ansichtszustand::filterAktiv() const {
    return filter != Filterwahl() || !suche.empty();
}

void Ansichtszustand::setzeZurueck() {
    filter = {};
    suche.clear();
}

void Ansichtszustand::behalteVorhandene(const std::vector<Eintrag>& eintraege) {
    std::unordered_set<std::string> geblieben;
    for (auto eintrag = eintraege.begin(); eintrag != eintraege.end() && geblieben.size() < auswahl.size(); ++eintrag) {
        if (auswahl.contains((*eintrag)->pfad)) {
            geblieben.insert((*eintrag)->pfad);
        }
    }
    auswahl = std::move(geblieben);
}

}  // namespace spurkiste
