#pragma once

#include <string>
#include <vector>

#include "library/Pfadverzeichnis.h"
#include "track/GpxMetadaten.h"

/// The order and the labels of a list that has settled. Every function may be called from any thread.
namespace spurkiste::listenordnung {

/// Sorts by path: Unicode scalar values after canonical composition, stable.
void sortiereNachPfad(std::vector<Eintrag>& eintraege);

/// The records sorted by path and with the labels of their start and finish spots, which name all records together. A
/// record whose labels stay is the same object.
[[nodiscard]] std::vector<Eintrag> mitOrtsEtiketten(std::vector<Eintrag> eintraege);

/// A settled list.
struct Ergebnis {
    std::vector<Eintrag> eintraege;
    Pfadverzeichnis verzeichnis;            ///< of `eintraege`
    bool neu = true;                        ///< false: it is the very list that it was made from, or memory ran out
    std::vector<std::string> verschwunden;  ///< of the new paths those at which there is no file any more
};

/// Settles a list to which records of the paths `neue` have come since the last time.
[[nodiscard]] Ergebnis ordne(const std::vector<Eintrag>& eintraege, const std::vector<std::string>& neue = {});

}  // namespace spurkiste::listenordnung
