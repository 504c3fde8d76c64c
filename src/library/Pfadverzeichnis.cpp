#include "library/Pfadverzeichnis.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace spurkiste {

Pfadverzeichnis::Pfadverzeichnis(const Liste& liste) {
    nummern_.reserve(liste.size());
    reihe_.reserve(liste.size());
    for (const Eintrag& eintrag : liste) {
        nummern_.insert_or_assign(eintrag->pfad, reihe_.size());
        reihe_.push_back(reihe_.size());
    }
}

std::optional<std::size_t> Pfadverzeichnis::stelle(std::string_view pfad) const {
    const auto fund = nummern_.find(pfad);
    return fund == nummern_.end() ? std::nullopt : std::optional(stelleVon(fund->second));
}

std::size_t Pfadverzeichnis::stelleVon(Nummer nummer) const {
    const auto ort = std::lower_bound(reihe_.begin(), reihe_.end(), nummer);
    assert(ort != reihe_.end() && *ort == nummer);
    return static_cast<std::size_t>(ort - reihe_.begin());
}

void Pfadverzeichnis::fuegeEin(Liste& liste, Eintrag eintrag) {
    if (nummern_.contains(eintrag->pfad)) {
        (void)entferne(liste, {eintrag->pfad});
    }
    const Nummer nummer = reihe_.empty() ? 0 : reihe_.back() + 1;
    liste.push_back(std::move(eintrag));
    reihe_.push_back(nummer);
    nummern_.emplace(liste.back()->pfad, nummer);
}

void Pfadverzeichnis::ersetze(Liste& liste, std::size_t stelle, Eintrag eintrag) {
    nummern_.erase(liste[stelle]->pfad);  // the key lives in the record that goes next
    liste[stelle] = std::move(eintrag);
    nummern_.emplace(liste[stelle]->pfad, reihe_[stelle]);
}

std::size_t Pfadverzeichnis::entferne(Liste& liste, const std::vector<std::string>& pfade) {
    std::vector<std::size_t> stellen;
    for (const std::string& pfad : pfade) {
        if (const auto fund = nummern_.find(pfad); fund != nummern_.end()) {
            stellen.push_back(stelleVon(fund->second));
            nummern_.erase(fund);
        }
    }
    if (stellen.empty()) {
        return 0;
    }
    std::sort(stellen.begin(), stellen.end());
    std::size_t bleibt = stellen.front();
    for (std::size_t i = bleibt, naechste = 0; i < liste.size(); ++i) {
        if (naechste < stellen.size() && stellen[naechste] == i) {
            ++naechste;
            continue;
        }
        liste[bleibt] = std::move(liste[i]);
        reihe_[bleibt++] = reihe_[i];
    }
    liste.resize(bleibt);
    reihe_.resize(bleibt);
    return stellen.size();
}

}  // namespace spurkiste
