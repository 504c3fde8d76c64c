#include "library/Bibliothek.h"

#include <stdexcept>
#include <utility>

#include "base/Dateien.h"
#include "library/BibliothekLaeufe.h"

namespace spurkiste {

namespace {

constexpr std::string_view kOrdnerName = "GPX-Bibliothek";
constexpr const char* kArchiv = "/Volumes/Feldarchiv";

Ausfuehrer& cacheschreiber(const Bibliothek::Anschluesse& anschluesse) {
    return anschluesse.cacheschreiber != nullptr ? *anschluesse.cacheschreiber : anschluesse.arbeiter;
}

std::optional<std::string> nichtLeer(std::optional<std::string> text) {
    return text && text->empty() ? std::nullopt : std::move(text);
}

}  // namespace

Bibliothek::Bibliothek(const Anschluesse& anschluesse)
    : anschluesse_(anschluesse),
      cache_(anschluesse_.hauptfaden, cacheschreiber(anschluesse_)),
      rueckweg_(anschluesse_.hauptfaden) {
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
    : anschluesse_(anschluesse),
      cache_(anschluesse_.hauptfaden, cacheschreiber(anschluesse_)),
      rueckweg_(anschluesse_.hauptfaden) {
    ordner_.setze(dateien::absolut(ordner));
}

Bibliothek::~Bibliothek() {
    if (ladung_) {
        *ladung_->abbruch = true;
    }
    beendeKopien();
    if (anschluesse_.mitCache && geoeffnet_.wert() && istEtwasFaellig()) {
        cache_.schreibe(ordner_.wert(), eintraege_.wert(), {});
    }
}

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

Ausfuehrer& Bibliothek::hintergrund() const {
    return anschluesse_.hintergrund != nullptr ? *anschluesse_.hintergrund : anschluesse_.arbeiter;
}

void Bibliothek::setzeEintraege(Eintraege eintraege, Pfadverzeichnis verzeichnis) {
    const auto altes =
        std::make_shared<std::pair<Eintraege, Pfadverzeichnis>>(std::move(eintraege), std::move(verzeichnis));
    std::swap(verzeichnis_, altes->second);
    eintraege_.aendere([&](Eintraege& liste) { std::swap(liste, altes->first); });
    constexpr std::size_t viele = 1000;
    if (altes->first.size() > viele) {
        hintergrund().fuehreAus([altes] {});  // taking a long list apart takes time as well
    }
}

void Bibliothek::fuegeEin(Eintrag eintrag) {
    if (rechnetWer()) {
        protokoll_.eingetragen(eintrag);
    }
    eingefuegte_.push_back(eintrag->pfad);
    eintraege_.aendere([&](Eintraege& liste) { verzeichnis_.fuegeEin(liste, std::move(eintrag)); });
}

void Bibliothek::speichereCache(std::vector<Fertig> fertige) {
    if (!anschluesse_.mitCache) {
        for (const Fertig& fertig : fertige) {
            fertig();
        }
    } else if (ladung_) {
        cacheFaellig_ = true;  // what the load is about to find out is more than the list knows
    } else {
        cache_.schreibe(ordner_.wert(), eintraege_.wert(), std::move(fertige));
    }
}

}  // namespace spurkiste
