#include "library/Bibliothek.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "library/Cache.h"
#include "places/OrtsEtiketten.h"

namespace spurkiste {

namespace {

constexpr std::string_view kOrdnerName = "GPX-Bibliothek";
constexpr const char* kArchiv = "/Volumes/Feldarchiv";

std::optional<std::string> nichtLeer(std::optional<std::string> text) {
    return text && text->empty() ? std::nullopt : std::move(text);
}

/// The label of each record's coordinate `ort`, in the order of the records.
std::vector<std::optional<std::string>> etiketten(const Bibliothek::Eintraege& eintraege,
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

void sortiereNachPfad(Bibliothek::Eintraege& eintraege) {
    // UTF-8 sorts by bytes as its characters do by number, so only composed forms have to be made.
    std::vector<std::pair<std::string, Eintrag>> mitSchluessel;
    mitSchluessel.reserve(eintraege.size());
    for (Eintrag& eintrag : eintraege) {
        std::string schluessel = text::nfc(eintrag->pfad);
        mitSchluessel.emplace_back(std::move(schluessel), std::move(eintrag));
    }
    std::stable_sort(mitSchluessel.begin(), mitSchluessel.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(mitSchluessel.begin(), mitSchluessel.end(), eintraege.begin(),
                   [](auto& paar) { return std::move(paar.second); });
}

}  // namespace

Bibliothek::Bibliothek(const Anschluesse& anschluesse) : anschluesse_(anschluesse), rueckweg_(anschluesse_.hauptfaden) {
    auto ordner = nichtLeer(anschluesse_.einstellungen.lies(einstellung::kBibliothekOrdner));
    if (!ordner && anschluesse_.altbestand != nullptr) {
        ordner = nichtLeer(anschluesse_.altbestand->lies(einstellung::kBibliothekOrdner));
        if (ordner) {
            anschluesse_.einstellungen.schreibe(einstellung::kBibliothekOrdner, *ordner);
        }
    }
    ordner_.setze(dateien::absolut(ordner ? *ordner : standardOrdner()));
}

Bibliothek::Bibliothek(const Anschluesse& anschluesse, const std::string& ordner)
    : anschluesse_(anschluesse), rueckweg_(anschluesse_.hauptfaden) {
    ordner_.setze(dateien::absolut(ordner));
}

Bibliothek::~Bibliothek() = default;

std::string Bibliothek::standardOrdner() const {
    std::string basis = kArchiv;
    if (!dateien::gibtEs(basis)) {
        const auto dokumente = anschluesse_.umgebung.dokumenteOrdner();
        if (!dokumente) {
            throw std::runtime_error("the user has no documents folder to keep the library in");
        }
        basis = *dokumente;
    }
    return dateien::kindPfad(basis, kOrdnerName);
}

Bibliothek::Eintraege Bibliothek::mitOrtsEtiketten(Eintraege eintraege) {
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

void Bibliothek::setzeEintraege(Eintraege eintraege) {
    stelleVon_.clear();
    stelleVon_.reserve(eintraege.size());
    for (std::size_t i = 0; i < eintraege.size(); ++i) {
        stelleVon_[eintraege[i]->pfad] = i;
    }
    eintraege_.setze(std::move(eintraege));
}

void Bibliothek::fuegeEin(Eintrag eintrag) {
    eintraege_.aendere([&](Eintraege& liste) {
        if (const auto alt = stelleVon_.find(eintrag->pfad); alt != stelleVon_.end()) {
            const std::size_t stelle = alt->second;
            stelleVon_.erase(alt);  // its key lives in the record that goes next
            liste.erase(liste.begin() + static_cast<std::ptrdiff_t>(stelle));
            for (std::size_t i = stelle; i < liste.size(); ++i) {
                stelleVon_[liste[i]->pfad] = i;
            }
        }
        liste.push_back(std::move(eintrag));
        stelleVon_[liste.back()->pfad] = liste.size() - 1;
    });
}

void Bibliothek::speichereCache() const {
    if (anschluesse_.mitCache) {
        // A folder that cannot be written costs the next load its speed and nobody an error.
        (void)Cache::schreibeNach(ordner_.wert(), eintraege_.wert());
    }
}

}  // namespace spurkiste
