#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "base/Namensordnung.h"
#include "sicht/Ansichtstexte.h"
#include "sicht/Filter.h"
#include "sicht/Reihenfolge.h"
#include "sicht/Sortierung.h"
#include "sicht/Wortliste.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Remembers between two pictures what follows from each record and the language alone, and the order of the records:
/// a key stroke then costs neither texts nor sorting, and a new record only itself. It changes how fast a picture is
/// made, never what it shows. A record is told by its address, and kept alive while it is remembered; what is no longer
/// among the records is forgotten. One per window, bound to the main thread.
class Zeilenspeicher {
  public:
    /// Brings the memory up to the records and the language. Costs a pass over the pointers, and for each new record
    /// the making of its row. No record is null.
    void gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte);

    /// The records in their order, with all that follows from each.
    [[nodiscard]] const std::vector<Merkmale>& merkmale() const { return merkmale_; }
    /// The positions of all records in sorted order.
    [[nodiscard]] const std::vector<Reihenfolge::Stelle>& reihenfolge(const Sortierung& sortierung);

    /// The texts that a filter knows of all records; empty when its choices are fixed.
    [[nodiscard]] const Wortliste& worte(FilterFeld feld) const { return worte_[feld]; }

  private:
    using Stelle = Reihenfolge::Stelle;

    struct Beiseite;

    void ersetzeAb(std::size_t ab, const std::vector<Eintrag>& eintraege);
    [[nodiscard]] bool bleibt(std::size_t stelle, const std::vector<Eintrag>& eintraege) const;
    [[nodiscard]] std::vector<Beiseite> raeumeBeiseite(std::size_t ab, const std::vector<Eintrag>& eintraege);
    [[nodiscard]] std::vector<std::size_t> holeZurueck(std::size_t ab, const std::vector<Eintrag>& eintraege,
                                                       std::vector<Beiseite>& beiseite);
    void baueNeue(const std::vector<std::size_t>& offen, const std::vector<Eintrag>& eintraege,
                  const std::vector<Beiseite>& beiseite);
    [[nodiscard]] Merkmale baue(const Eintrag& eintrag, std::uint32_t kennung);
    [[nodiscard]] Reihenfolge::Bestand bestand() const {
        return {merkmale_, worte_[FilterFeld::sport], *namensordnung_};
    }

    Ansichtstexte texte_;                               // of the rows
    std::optional<text::Namensordnung> namensordnung_;  // absent before the first records
    std::vector<const GpxMetadaten*> adressen_;         // of the records, kept alive by the rows
    std::vector<Merkmale> merkmale_;
    JeFilter<Wortliste> worte_;
    Reihenfolge reihenfolge_;
    std::uint32_t naechsteKennung_ = 0;
};

}  // namespace spurkiste
