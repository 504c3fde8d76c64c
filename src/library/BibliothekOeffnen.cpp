// Files that the user opens from outside: from the desktop's file manager or the command line.

#include <algorithm>
#include <utility>

#include "base/Dateien.h"
#include "library/BibliothekLaeufe.h"
#include "library/Oeffnung.h"

namespace spurkiste {

/// Whether the list has the file as it is now.
bool Bibliothek::kennt(const std::string& pfad) const {
    const auto stelle = verzeichnis_.stelle(pfad);
    const auto angaben = dateien::angaben(pfad);
    return stelle && angaben && eintraege_.wert()[*stelle]->dateiGroesse == angaben->groesse &&
           eintraege_.wert()[*stelle]->dateiDatum == angaben->geaendert;
}

void Bibliothek::oeffne(const std::vector<std::string>& pfade, const Gefunden& gefunden) {
    const std::string& ordner = ordner_.wert();
    std::vector<std::string> eigene;
    std::vector<std::string> fremde;
    std::vector<std::string> meldungen;
    for (const std::string& pfad : pfade) {
        if (const auto einwand = oeffnung::einwand(pfad)) {
            meldungen.push_back(oeffnung::meldung(pfad, *einwand));
        } else if (oeffnung::liegtIn(ordner, pfad)) {
            eigene.push_back(dateien::kindPfad(ordner, dateien::letzterTeil(pfad)));
        } else {
            fremde.push_back(pfad);
        }
    }
    if (!meldungen.empty()) {
        const std::size_t anzahl = meldungen.size();
        hinweis_.setze("Nicht geöffnet: " +
                       (anzahl > 1 ? std::to_string(anzahl) + " Dateien, zuletzt " : std::string()) + meldungen.back());
    }
    std::vector<std::string> unbekannte;
    std::copy_if(eigene.begin(), eigene.end(), std::back_inserter(unbekannte),
                 [this](const std::string& pfad) { return !kennt(pfad); });
    if (!unbekannte.empty()) {
        parseUndHaengeAn(std::move(unbekannte), generation_, {});
    }
    if (!eigene.empty()) {
        gefunden(eigene);
    }
    const auto bestand = std::make_shared<oeffnung::Bestand>(ordner);
    for (const std::string& pfad : fremde) {
        auto import = std::make_shared<Import>();
        import->quellen = {pfad};
        import->ordner = ordner;
        import->generation = generation_;
        import->gefunden = gefunden;
        import->bestand = bestand;
        reiheEin(import);
    }
}

}  // namespace spurkiste
