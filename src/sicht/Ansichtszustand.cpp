#include "sicht/Ansichtszustand.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace spurkiste {

bool Ansichtszustand::filterAktiv() const {
    return filter != Filterwahl() || !suche.empty();
}

void Ansichtszustand::setzeZurueck() {
    filter = {};
    suche.clear();
}

void Ansichtszustand::behalteVorhandene(const std::vector<Eintrag>& eintraege) {
    std::vector<Eintrag> geblieben;
    for (auto eintrag = eintraege.begin(); eintrag != eintraege.end() && geblieben.size() < auswahl.size(); ++eintrag) {
        if (auswahl.contains((*eintrag)->pfad)) {
            geblieben.push_back(*eintrag);
        }
    }
    if (geblieben.size() < auswahl.size()) {
        Pfadmenge::Menge neue;
        for (const Eintrag& eintrag : geblieben) {
            neue.emplace(std::shared_ptr<const std::string>(eintrag, &eintrag->pfad));
        }
        auswahl = std::move(neue);
    }
}

}  // namespace spurkiste
