#pragma once

#include <string>
#include <variant>
#include <vector>

#include "library/Pfadverzeichnis.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// What happened to the library's files while a worker computed a list that does not know of it yet, in order; replayed
/// on that list, it knows. A value, bound to one thread.
class Aenderungsprotokoll {
  public:
    /// A list that somebody has computed.
    struct Stand {
        std::vector<Eintrag> eintraege;
        Pfadverzeichnis verzeichnis;       ///< of `eintraege`
        std::vector<std::string> zuLesen;  ///< paths of files whose records are not known yet, each once
    };

    /// A file has another path, in the same folder.
    void umbenannt(std::string alt, std::string neu);
    /// Files are gone.
    void entfernt(std::vector<std::string> pfade);
    /// This is what a file holds now.
    void eingetragen(Eintrag eintrag);
    /// A file holds something else now, nobody knows what.
    void geaendert(std::string pfad);

    [[nodiscard]] bool leer() const { return schritte_.empty(); }
    void vergiss() { schritte_.clear(); }

    /// Replays it on records that were made from the list as it was when the record began.
    void spieleNach(std::vector<Eintrag>& eintraege, Pfadverzeichnis& verzeichnis) const;

    /// Replays it on what was found in a folder at some time since the record began: any part of what happened may be
    /// in it already. Whatever is in doubt is to be read, since reading finds out.
    void spieleNach(Stand& stand) const;

    /// The record as it is called under another path: the name goes with it.
    [[nodiscard]] static Eintrag unterPfad(const GpxMetadaten& eintrag, const std::string& pfad);

  private:
    struct Umbenennung {
        std::string alt;
        std::string neu;
    };
    struct Entfernung {
        std::vector<std::string> pfade;
    };
    struct Aenderung {
        std::string pfad;
    };
    using Schritt = std::variant<Umbenennung, Entfernung, Eintrag, Aenderung>;
    class AufListe;
    class AufStand;

    std::vector<Schritt> schritte_;
};

}  // namespace spurkiste
