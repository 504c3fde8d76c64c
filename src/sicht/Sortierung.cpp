#include "sicht/Sortierung.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace spurkiste {

Sortierung::Sortierung() : vergleiche_{{Spalte::datum, true}} {}

Sortierung::Sortierung(std::vector<Vergleich> vergleiche) : vergleiche_(std::move(vergleiche)) {
    for (auto stelle = vergleiche_.begin(); stelle != vergleiche_.end(); ++stelle) {
        assert(istSortierbar(stelle->spalte));
        assert(std::none_of(vergleiche_.begin(), stelle, [&](auto davor) { return davor.spalte == stelle->spalte; }));
    }
}

void Sortierung::klicke(Spalte spalte) {
    if (!istSortierbar(spalte)) {
        return;
    }
    if (!vergleiche_.empty() && vergleiche_.front().spalte == spalte) {
        vergleiche_.front().absteigend = !vergleiche_.front().absteigend;
        return;
    }
    std::erase_if(vergleiche_, [&](Vergleich vergleich) { return vergleich.spalte == spalte; });
    vergleiche_.insert(vergleiche_.begin(), {spalte, false});
}

}  // namespace spurkiste
