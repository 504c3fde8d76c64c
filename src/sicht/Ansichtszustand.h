#pragma once

#include <string>
#include <vector>

#include "sicht/Filter.h"
#include "sicht/Pfadmenge.h"
#include "sicht/Sortierung.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// What the user of one window has set, and what else decides what it shows. A value; each window has its own.
struct Ansichtszustand {
    /// Paths of the selected records, hidden ones included. Only gestures and behalteVorhandene() change it.
    Pfadmenge auswahl;
    Sortierung sortierung;
    std::string suche;   ///< the text of the search field as it stands, blanks included
    Filterwahl filter;   ///< that of the sport is a label, so it belongs to one language
    bool laedt = false;  ///< whether the library is reading files
    /// What there is to say before the library is known: nothing, that it is being opened, or, once it is, what it has.
    enum class Oeffnung { still, dauert, offen };
    Oeffnung oeffnung = Oeffnung::offen;

    /// Whether a filter or the search is in effect.
    [[nodiscard]] bool filterAktiv() const;

    /// Takes back all filters and the search.
    void setzeZurueck();

    /// Takes out of the selection what is no longer among the records; for whenever the records have changed.
    void behalteVorhandene(const std::vector<Eintrag>& eintraege);

    friend bool operator==(const Ansichtszustand&, const Ansichtszustand&) = default;
};

}  // namespace spurkiste
