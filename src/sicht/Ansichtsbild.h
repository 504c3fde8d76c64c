#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sicht/Ansichtstexte.h"
#include "sicht/Ansichtszustand.h"
#include "sicht/Filter.h"
#include "sicht/Pfadmenge.h"
#include "sicht/Zeile.h"
#include "sicht/Zeilenspeicher.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// What an empty table says.
struct Leertext {
    std::string_view titel;
    std::string_view beschreibung;

    friend bool operator==(const Leertext&, const Leertext&) = default;
};

/// Everything that the main view shows of the library at one moment; each widget shows its piece of it. A value that
/// needs neither the library nor the memory it was made with. Texts are UTF-8.
struct Ansichtsbild {
    std::vector<std::shared_ptr<const Zeile>> zeilen;  ///< the visible rows, sorted
    std::size_t anzahl = 0;                            ///< of all records
    double summeMeter = 0.0;                           ///< length of the visible rows together, finite
    bool filterAktiv = false;                          ///< whether a filter or the search is in effect
    Eintrag ausgewaehlt;                               ///< the record to show in detail, hidden or not; null: none

    // Empty until the library is known.
    std::string routenText;        ///< header, "7 / 41 ROUTEN"
    std::string summeText;         ///< header, "74,2 km"
    std::string dateienText;       ///< status line, "7 / 41 Dateien"
    std::string gesamtText;        ///< status line, "74,2 km gesamt"
    std::optional<Leertext> leer;  ///< over the table, when it is empty for good

    /// The choices of each filter besides "all": what the records have that pass all other filters and the search, and
    /// the current choice. Fixed ones in their order, others by code points, in canonical composition.
    JeFilter<std::vector<std::string>> optionen;
};

/// The picture of the records (library order, none null) in a state and a language. `speicher` holds what the last
/// picture left, of whatever records, state and language; it only saves time. Main thread.
[[nodiscard]] Ansichtsbild berechneAnsichtsbild(const std::vector<Eintrag>& eintraege, const Ansichtszustand& zustand,
                                                const Ansichtstexte& texte, Zeilenspeicher& speicher);
/// The picture of the records that the memory has.
[[nodiscard]] Ansichtsbild berechneAnsichtsbild(const Ansichtszustand& zustand, const Ansichtstexte& texte,
                                                Zeilenspeicher& speicher);
/// The record to show in detail alone, as the picture has it: for when nothing but the selection has changed.
[[nodiscard]] Eintrag ausgewaehlter(const Pfadmenge& auswahl, const Zeilenspeicher& speicher);

}  // namespace spurkiste
