#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "sicht/Ansichtsbild.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// A record in a line: its name, and what `aendere` makes of the rest.
template <typename Aenderung>
Eintrag eintragMit(const std::string& name, Aenderung aendere) {
    GpxMetadaten eintrag;
    eintrag.pfad = "/bibliothek/" + name + ".gpx";
    eintrag.dateiName = name;
    aendere(eintrag);
    return std::make_shared<const GpxMetadaten>(std::move(eintrag));
}

inline Eintrag eintragMit(const std::string& name) {
    return eintragMit(name, [](GpxMetadaten&) {});
}

/// The texts of a language as far as a picture needs them: German ones, whatever the code.
inline Ansichtstexte texteIn(const std::string& sprache) {
    Ansichtstexte texte;
    texte.sprache = sprache;
    texte.sportarten = {"Rad",    "Laufen", "Motorrad",  "Auto", "Wandern", "Gehen",  "MTB",  "Gravel",
                        "E-Bike", "Trail",  "Schwimmen", "Ski",  "Inline",  "Rudern", "Kajak"};
    texte.routen = "Routen";
    texte.dateien = "Dateien";
    texte.gesamt = "gesamt";
    return texte;
}

/// The picture without any memory.
inline Ansichtsbild bildVon(const std::vector<Eintrag>& eintraege, const Ansichtszustand& zustand,
                            const Ansichtstexte& texte = texteIn("de")) {
    Zeilenspeicher speicher;
    return berechneAnsichtsbild(eintraege, zustand, texte, speicher);
}

/// The file names of the visible rows.
inline std::vector<std::string> namenVon(const Ansichtsbild& bild) {
    std::vector<std::string> namen;
    for (const auto& zeile : bild.zeilen) {
        namen.push_back(zeile->eintrag()->dateiName);
    }
    return namen;
}

}  // namespace spurkiste
