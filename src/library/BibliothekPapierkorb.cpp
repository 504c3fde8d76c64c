// How files leave the library.

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "library/BibliothekLaeufe.h"

namespace spurkiste {

namespace {

constexpr const char* kGescheitert = "Papierkorb fehlgeschlagen: ";

/// What is said of files that were gone before the trash came; at least one.
std::string schonWeg(const std::vector<std::string>& pfade) {
    const std::string letzter = text::einzeilig(dateien::letzterTeil(pfade.back()));
    return pfade.size() == 1 ? letzter + " war schon verschwunden"
                             : std::to_string(pfade.size()) + " Dateien waren schon verschwunden, zuletzt " + letzter;
}

}  // namespace

void Bibliothek::inPapierkorb(const std::unordered_set<std::string>& kennungen) {
    std::unordered_set<std::string> gefragte;
    for (const auto& [gefragt, jetzt] : wuerfe_) {
        gefragte.insert(gefragt);
        gefragte.insert(jetzt);
    }
    std::vector<std::string> pfade;
    for (const Eintrag& eintrag : eintraege_.wert()) {
        if (kennungen.contains(eintrag->pfad) && !gefragte.contains(eintrag->pfad)) {
            pfade.push_back(eintrag->pfad);
        }
    }
    if (pfade.empty()) {
        return;
    }
    if (anschluesse_.papierkorb == nullptr) {
        hinweis_.setze(kGescheitert + std::generic_category().message(ENOTSUP));
        return;
    }
    const Verlauf::Nummer schritt = verlauf_.beginne();
    wirfWeg(std::move(pfade), [this, schritt](const Papierkorb::Ergebnis& ergebnis) {
        for (const Papierkorb::Fund& fund : ergebnis.funde) {
            verlauf_.ergaenze(schritt, Rueckholung{fund});
        }
        beendeSchritt(schritt);
    });
}

void Bibliothek::wirfWeg(std::vector<std::string> pfade, Geworfen danach) {
    for (const std::string& pfad : pfade) {
        wuerfe_[pfad] = pfad;
    }
    auto gelandet = [this, pfade, danach = std::move(danach)](const Papierkorb::Ergebnis& ergebnis) {
        landeWurf(pfade, ergebnis, danach);
    };
    anschluesse_.papierkorb->verschiebe(std::move(pfade), rueckweg_.zurueck(std::move(gelandet)));
}

void Bibliothek::landeWurf(const std::vector<std::string>& gefragte, const Papierkorb::Ergebnis& ergebnis,
                           const Geworfen& danach) {
    std::unordered_map<std::string, std::string> jetzt;
    for (const std::string& pfad : gefragte) {
        jetzt.insert(wuerfe_.extract(pfad));
    }
    std::vector<std::string> weg;
    std::vector<std::string> neueDa;  // what has come to the path of a file that is gone
    const auto entscheide = [&](const std::string& pfad) {
        const bool unserer = dateien::kindPfad(ordner_.wert(), dateien::letzterTeil(pfad)) == pfad;
        (unserer && dateien::gibtEs(pfad) ? neueDa : weg).push_back(pfad);
    };
    std::for_each(ergebnis.verschoben.begin(), ergebnis.verschoben.end(), entscheide);
    std::vector<std::string> umbenannte;
    std::vector<std::string> verschwundene;
    for (const std::string& pfad : ergebnis.verschwunden) {
        if (jetzt[pfad] != pfad) {
            umbenannte.push_back(jetzt[pfad]);
        } else {
            entscheide(pfad);
            if (verzeichnis_.stelle(pfad) && !dateien::gibtEs(pfad)) {
                verschwundene.push_back(pfad);
            }
        }
    }
    if (!weg.empty()) {
        entferne(weg);
        speichereCache();
    }
    if (!neueDa.empty()) {
        entferne(neueDa);
        parseUndHaengeAn(std::move(neueDa), generation_, {});
    }
    if (ergebnis.fehler) {
        hinweis_.setze(kGescheitert + *ergebnis.fehler);
    } else if (!verschwundene.empty()) {
        hinweis_.setze(schonWeg(verschwundene));
    }
    if (umbenannte.empty()) {
        danach(ergebnis);
        return;
    }
    wirfWeg(std::move(umbenannte), [danach, bisher = ergebnis](const Papierkorb::Ergebnis& spaeteres) {
        Papierkorb::Ergebnis alles = bisher;
        alles.verschoben.insert(alles.verschoben.end(), spaeteres.verschoben.begin(), spaeteres.verschoben.end());
        alles.funde.insert(alles.funde.end(), spaeteres.funde.begin(), spaeteres.funde.end());
        alles.fehler = alles.fehler ? alles.fehler : spaeteres.fehler;
        danach(alles);
    });
}

void Bibliothek::entferne(const std::vector<std::string>& pfade) {
    if (rechnetWer()) {
        protokoll_.entfernt(pfade);
    }
    for (const auto& lauf : laeufe_) {
        for (const std::string& pfad : pfade) {
            lauf->lenkeUm(pfad, pfad);
        }
    }
    eintraege_.aendere([&](Eintraege& liste) { (void)verzeichnis_.entferne(liste, pfade); });
}

}  // namespace spurkiste
