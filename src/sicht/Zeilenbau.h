#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "base/Ausfuehrer.h"
#include "base/Rueckweg.h"
#include "sicht/Ansichtstexte.h"
#include "sicht/Sortierung.h"
#include "sicht/Zeilenspeicher.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Keeps a window's memory of rows up to the records. Where few rows are new they are made at once; many are made
/// elsewhere, and until then the memory stays what it was, whole. Bound to one thread.
class Zeilenbau {
  public:
    /// Where rows are made; everything must outlive the object.
    struct Werkstatt {
        Ausfuehrer* hier = nullptr;    ///< runs tasks on the object's thread
        Ausfuehrer* dort = nullptr;    ///< runs tasks elsewhere; null, either of both: all rows are made at once
        Ausfuehrer* helfer = nullptr;  ///< tasks of it may help; may be null
        unsigned anzahlHelfer = 0;     ///< how many at most
    };

    /// `neue` is called when rows from elsewhere have arrived, in a turn of its own.
    Zeilenbau(const Werkstatt& werkstatt, std::function<void()> neue);

    /// Brings the memory up to the records, or begins to. `sortierung` is the order that is probably asked for next.
    void gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte, const Sortierung& sortierung);

    /// Whether rows are being made elsewhere, so that the memory is not up to the records.
    [[nodiscard]] bool baut() const { return baut_; }
    [[nodiscard]] Zeilenspeicher& speicher() { return *speicher_; }

    /// Lets go of the memory that the newest one replaced, away from this thread; to be called when nobody shows its
    /// rows any more.
    void raeumeAuf();

  private:
    void lande(const std::shared_ptr<Zeilenspeicher>& neuer);

    Werkstatt werkstatt_;
    std::function<void()> neue_;
    std::shared_ptr<Zeilenspeicher> speicher_ = std::make_shared<Zeilenspeicher>();
    std::shared_ptr<Zeilenspeicher> alter_;
    bool baut_ = false;
    std::optional<Rueckweg> rueckweg_;  // absent where all is done here
};

}  // namespace spurkiste
