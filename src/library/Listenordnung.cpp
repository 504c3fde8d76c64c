#include "library/Listenordnung.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "places/OrtsEtiketten.h"

namespace spurkiste::listenordnung {

namespace {

/// The label of each record's coordinate `ort`, in the order of the records.
std::vector<std::optional<std::string>> etiketten(const std::vector<Eintrag>& eintraege,
                                                  std::optional<Koordinate> GpxMetadaten::*ort) {
    std::vector<std::optional<Koordinate>> punkte;
    punkte.reserve(eintraege.size());
    for (const Eintrag& eintrag : eintraege) {
        punkte.push_back((*eintrag).*ort);
    }
    if (std::none_of(punkte.begin(), punkte.end(), [](const auto& punkt) { return punkt.has_value(); })) {
        return std::vector<std::optional<std::string>>(eintraege.size());  // the gazetteer need not be loaded
    }
    return OrtsEtiketten::berechne(punkte, Ortsbuch::geteilt());
}

}  // namespace

void sortiereNachPfad(std::vector<Eintrag>& eintraege) {
    // UTF-8 sorts by bytes as its characters do by number, so only composed forms have to be made, and few differ from
    // the path itself.
    std::deque<std::string> komponierte;
    std::vector<std::pair<std::string_view, Eintrag>> mitSchluessel;
    mitSchluessel.reserve(eintraege.size());
    for (Eintrag& eintrag : eintraege) {
        std::string schluessel = text::nfc(eintrag->pfad);
        const bool anders = schluessel != eintrag->pfad;
        const std::string_view text = anders ? komponierte.emplace_back(std::move(schluessel)) : eintrag->pfad;
        mitSchluessel.emplace_back(text, std::move(eintrag));
    }
    std::stable_sort(mitSchluessel.begin(), mitSchluessel.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(mitSchluessel.begin(), mitSchluessel.end(), eintraege.begin(),
                   [](auto& paar) { return std::move(paar.second); });
}

std::vector<Eintrag> mitOrtsEtiketten(std::vector<Eintrag> eintraege) {
    sortiereNachPfad(eintraege);
    auto startOrte = etiketten(eintraege, &GpxMetadaten::start);
    auto zielOrte = etiketten(eintraege, &GpxMetadaten::ende);
    for (std::size_t i = 0; i < eintraege.size(); ++i) {
        Eintrag& eintrag = eintraege[i];
        if (eintrag->startOrt != startOrte[i] || eintrag->zielOrt != zielOrte[i]) {
            auto neu = std::make_shared<GpxMetadaten>(*eintrag);
            neu->startOrt = std::move(startOrte[i]);
            neu->zielOrt = std::move(zielOrte[i]);
            eintrag = std::move(neu);
        }
    }
    return eintraege;
}

Ergebnis ordne(const std::vector<Eintrag>& eintraege, const std::vector<std::string>& neue) try {
    Ergebnis ergebnis;
    std::copy_if(neue.begin(), neue.end(), std::back_inserter(ergebnis.verschwunden),
                 [](const std::string& pfad) { return !dateien::gibtEs(pfad); });
    ergebnis.eintraege = mitOrtsEtiketten(eintraege);
    ergebnis.neu = ergebnis.eintraege != eintraege;
    ergebnis.verzeichnis = ergebnis.neu ? Pfadverzeichnis(ergebnis.eintraege) : Pfadverzeichnis();
    return ergebnis;
} catch (const std::bad_alloc&) {
    Ergebnis wieBisher;
    wieBisher.neu = false;
    return wieBisher;
}

}  // namespace spurkiste::listenordnung
