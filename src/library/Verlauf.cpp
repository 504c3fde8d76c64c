#include "library/Verlauf.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <utility>

namespace spurkiste {

namespace {

template <typename... Faelle>
struct Je : Faelle... {
    using Faelle::operator()...;
};
template <typename... Faelle>
Je(Faelle...) -> Je<Faelle...>;

std::size_t gewicht(const Tat& tat) {
    constexpr Je faelle{
        [](const Umzug& umzug) { return umzug.von.capacity() + umzug.nach.capacity(); },
        [](const Umschrift& umschrift) { return umschrift.pfad.capacity() + umschrift.umkehr.gewicht(); },
        [](const Wegwurf& wegwurf) { return wegwurf.pfad.capacity(); },
        [](const Rueckholung& holung) { return holung.fund.pfad.capacity() + holung.fund.ort.capacity(); },
    };
    return sizeof tat + std::visit(faelle, tat);
}

std::size_t gewichtAller(const Verlauf::Schritt& taten) {
    return std::accumulate(taten.begin(), taten.end(), std::size_t{0},
                           [](std::size_t bisher, const Tat& tat) { return bisher + gewicht(tat); });
}

/// Where the file has to be for the deed, and where it is afterwards; empty where nobody can tell.
std::pair<std::string_view, std::string_view> weg(const Tat& tat) {
    using Weg = std::pair<std::string_view, std::string_view>;
    constexpr Je faelle{
        [](const Umzug& umzug) { return Weg(umzug.von, umzug.nach); },
        [](const Umschrift& umschrift) { return Weg(umschrift.pfad, umschrift.pfad); },
        [](const Wegwurf& wegwurf) { return Weg(wegwurf.pfad, {}); },
        [](const Rueckholung& holung) { return Weg(holung.fund.ort, holung.fund.pfad); },
    };
    return std::visit(faelle, tat);
}

void verfolge(Tat& tat, const dateien::Stand& alt, const dateien::Stand& neu) {
    const Je ersetze{
        [&](dateien::Stand& stand) { stand = stand == alt ? neu : stand; },
        [&](std::optional<dateien::Stand>& stand) { stand = stand == alt ? neu : stand; },
    };
    const Je faelle{
        [&](Umzug& umzug) { ersetze(umzug.stand); },
        [&](Umschrift& umschrift) { ersetze(umschrift.umkehr.stand); },
        [&](Wegwurf& wegwurf) { ersetze(wegwurf.stand); },
        [&](Rueckholung& holung) { ersetze(holung.fund.stand); },
    };
    std::visit(faelle, tat);
}

}  // namespace

Verlauf::Nummer Verlauf::beginne() {
    zurueck_.push_back({++letzte_, true, {}});
    return letzte_;
}

std::deque<Verlauf::Ablage>::iterator Verlauf::stelle(Nummer nummer) {
    return std::find_if(zurueck_.begin(), zurueck_.end(),
                        [&](const Ablage& ablage) { return ablage.nummer == nummer; });
}

void Verlauf::ergaenze(Nummer nummer, Tat tat) {
    if (const auto hier = stelle(nummer); hier != zurueck_.end()) {
        hier->taten.push_back(std::move(tat));
        wieder_.clear();
    }
}

void Verlauf::beende(Nummer nummer) {
    const auto hier = stelle(nummer);
    if (hier == zurueck_.end()) {
        return;
    }
    hier->offen = false;
    if (hier->taten.empty()) {
        zurueck_.erase(hier);
    }
    begrenze();
}

void Verlauf::tue(Tat tat) {
    const Nummer nummer = beginne();
    ergaenze(nummer, std::move(tat));
    beende(nummer);
}

bool Verlauf::ruht() const {
    return std::none_of(zurueck_.begin(), zurueck_.end(), [](const Ablage& ablage) { return ablage.offen; });
}

std::optional<Verlauf::Schritt> Verlauf::nimm(Richtung richtung) {
    assert(ruht());
    auto& hier = richtung == Richtung::zurueck ? zurueck_ : wieder_;
    if (hier.empty()) {
        return std::nullopt;
    }
    Schritt taten = std::move(hier.back().taten);
    hier.pop_back();
    return taten;
}

void Verlauf::legeAb(Richtung richtung, Schritt gegentaten) {
    if (!gegentaten.empty()) {
        auto& dort = richtung == Richtung::zurueck ? wieder_ : zurueck_;
        dort.push_back({++letzte_, false, std::move(gegentaten)});
        begrenze();
    }
}

void Verlauf::verfolge(Richtung richtung, std::string_view pfad, const dateien::Stand& alt, const dateien::Stand& neu,
                       std::optional<Nummer> bis) {
    auto& hier = richtung == Richtung::zurueck ? zurueck_ : wieder_;
    for (auto ablage = hier.rbegin(); ablage != hier.rend() && ablage->nummer != bis; ++ablage) {
        const auto tat = std::find_if(ablage->taten.begin(), ablage->taten.end(),
                                      [&](const Tat& eine) { return weg(eine).first == pfad; });
        if (tat != ablage->taten.end()) {
            spurkiste::verfolge(*tat, alt, neu);
            pfad = weg(*tat).second;
        }
    }
}

void Verlauf::vergiss() {
    zurueck_.clear();
    wieder_.clear();
}

void Verlauf::begrenze() {
    std::size_t anzahl = zurueck_.size();
    std::size_t summe =
        std::accumulate(zurueck_.begin(), zurueck_.end(), std::size_t{0},
                        [](std::size_t bisher, const Ablage& ablage) { return bisher + gewichtAller(ablage.taten); });
    while ((anzahl > kSchritte || summe > kGewicht) && !zurueck_.front().offen) {
        summe -= gewichtAller(zurueck_.front().taten);
        zurueck_.pop_front();
        --anzahl;
    }
}

}  // namespace spurkiste
