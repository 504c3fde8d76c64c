#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/Ausfuehrer.h"
#include "base/Namensordnung.h"
#include "sicht/Ansichtstexte.h"
#include "sicht/Filter.h"
#include "sicht/Reihenfolge.h"
#include "sicht/Sortierung.h"
#include "sicht/Wortliste.h"
#include "sicht/Zahlentexte.h"
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

    /// Whether gleicheAb() would take long: many rows are to be made.
    [[nodiscard]] bool wirdLangsam(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte) const;

    /// What a memory that is to take the place of another must know of it, so that files keep their numbers.
    struct Erbe {
        std::vector<std::shared_ptr<const Zeile>> zeilen;
        std::uint32_t naechsteKennung = 0;
    };
    [[nodiscard]] Erbe erbe() const;

    /// A memory made anew, with the order at hand; any thread. Up to `helfer` tasks of `ausfuehrer`, which may be null,
    /// help with it.
    [[nodiscard]] static Zeilenspeicher neuGebaut(const Erbe& erbe, const std::vector<Eintrag>& eintraege,
                                                  const Ansichtstexte& texte, const Sortierung& sortierung,
                                                  Ausfuehrer* ausfuehrer, unsigned helfer);

    /// The records in their order, with all that follows from each.
    [[nodiscard]] const std::vector<Merkmale>& merkmale() const { return merkmale_; }
    /// The positions of all records in sorted order.
    [[nodiscard]] const std::vector<Reihenfolge::Stelle>& reihenfolge(const Sortierung& sortierung);

    /// The texts that a filter knows of all records; empty when its choices are fixed.
    [[nodiscard]] const Wortliste& worte(FilterFeld feld) const { return worte_[feld]; }
    /// The figures of all records, hidden ones included: a filter does not change how much room they need.
    [[nodiscard]] const Zahlentexte& zahlen() const { return zahlen_; }

  private:
    using Stelle = Reihenfolge::Stelle;

    struct Wandel;
    using Kennungen = std::unordered_map<std::string_view, std::uint32_t>;  // by path

    [[nodiscard]] bool istVon(const Ansichtstexte& texte) const;
    [[nodiscard]] Wandel vergleiche(const std::vector<Eintrag>& eintraege) const;
    void vollziehe(Wandel& wandel, const std::vector<Eintrag>& eintraege);
    void baue(const std::vector<Stelle>& stellen, const std::vector<Eintrag>& eintraege, Kennungen& kennungen,
              Ausfuehrer* ausfuehrer, unsigned helfer);
    [[nodiscard]] Merkmale baueRoh(const Eintrag& eintrag, std::uint32_t kennung) const;
    void zaehleWorte(Merkmale& merkmale);
    [[nodiscard]] Reihenfolge::Bestand bestand() const {
        return {merkmale_, worte_[FilterFeld::sport], *namensordnung_};
    }

    Ansichtstexte texte_;                               // of the rows
    std::optional<text::Namensordnung> namensordnung_;  // absent before the first records
    std::vector<const GpxMetadaten*> adressen_;         // of the records, kept alive by the rows
    std::vector<Merkmale> merkmale_;
    JeFilter<Wortliste> worte_;
    Zahlentexte zahlen_;
    Reihenfolge reihenfolge_;
    std::uint32_t naechsteKennung_ = 0;
};

}  // namespace spurkiste
