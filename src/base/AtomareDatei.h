#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Dateien.h"
#include "base/VorlaeufigeDatei.h"

namespace spurkiste::dateien {

/// A file that appears whole or not at all: written as a VorlaeufigeDatei in the same folder, then put in the place of
/// the old one. A symbolic link at the path is such an old one: it is replaced itself, never followed. Unless rights
/// are taken over, the file is its owner's alone. Without uebernimm() or tausche() nothing remains of it and the old
/// file stays as it was.
class AtomareDatei {
  public:
    /// Throws std::system_error when the folder cannot be written.
    explicit AtomareDatei(const std::string& ziel) : ziel_(ziel), datei_(ordnerVon(ziel)) {}

    /// Appends bytes. Throws std::system_error (disk full, quota).
    void schreibe(std::string_view bytes) { datei_.schreibe(bytes); }

    /// Waits until the bytes are on the disk, so that even a power failure leaves the old file or the whole new one.
    /// For files that nothing else can restore. Throws std::system_error.
    void sichere() { datei_.sichere(); }

    /// The file by the system's number, for giving it rights and attributes.
    [[nodiscard]] int nummer() const { return datei_.nummer(); }

    /// Dates the file, whose bytes are all written, at least a second after the state of another one, so that nobody
    /// who compares dates to the second takes it for that. Where that is impossible, it is passed over.
    void datiereNach(const Stand& altes) const;

    /// Its state, which stays the same when it is put in place; nothing when the system does not say. Not to be asked
    /// afterwards.
    [[nodiscard]] std::optional<Stand> stand() const { return dateien::stand(datei_.nummer()); }

    /// Puts the file in place. Throws std::system_error; the old file is then unchanged. To be called once.
    void uebernimm() { datei_.ersetze(ziel_); }

    /// The same, as long as the old file, open for reading, is still what it was at that state: what another program
    /// makes of it meanwhile is never lost. False, and nothing is changed, when that has happened or may happen at any
    /// moment. To be called once.
    [[nodiscard]] bool tausche(const Leser& altes, const Stand& stand) {
        return datei_.tausche(ziel_, altes.nummer(), stand);
    }

    /// Waits until the disk knows that the file is in place; where that cannot be told, it is passed over.
    void sichereOrdner() const { dateien::sichereOrdner(ordnerVon(ziel_)); }

  private:
    std::string ziel_;
    VorlaeufigeDatei datei_;
};

}  // namespace spurkiste::dateien
