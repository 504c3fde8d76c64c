#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Dateien.h"
#include "base/VorlaeufigeDatei.h"

namespace spurkiste::dateien {

/// A file that appears whole or not at all: written as a VorlaeufigeDatei in the same folder, then moved over the old
/// one, whose permissions it takes over. Where the path is a symbolic link, the link stays and its target is replaced.
/// Without uebernimm() nothing remains of it and the old file stays as it was.
class AtomareDatei {
  public:
    /// Throws std::system_error when the folder cannot be written.
    explicit AtomareDatei(const std::string& ziel);

    /// Appends bytes. Throws std::system_error (disk full, quota).
    void schreibe(std::string_view bytes) { datei_.schreibe(bytes); }

    /// Waits until the bytes are on the disk, so that even a power failure leaves the old file or the whole new one.
    /// For files that nothing else can restore. Throws std::system_error.
    void sichere() { datei_.sichere(); }

    /// Its state, which stays the same when it is put in place; nothing when the system does not say. Not to be asked
    /// afterwards.
    [[nodiscard]] std::optional<Stand> stand() const { return dateien::stand(datei_.nummer()); }

    /// Puts the file in place. Throws std::system_error; the old file is then unchanged. To be called once.
    void uebernimm() { datei_.ersetze(ziel_); }

    /// Waits until the disk knows that the file is in place; where that cannot be told, it is passed over.
    void sichereOrdner() const;

  private:
    std::string ziel_;
    VorlaeufigeDatei datei_;
};

}  // namespace spurkiste::dateien
