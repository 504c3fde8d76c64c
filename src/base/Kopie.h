#pragma once

#include <cstdint>
#include <string>

#include "base/VorlaeufigeDatei.h"

namespace spurkiste::dateien {

/// The copy of a file on its way into a folder: a VorlaeufigeDatei until it is complete and put into place. Shares the
/// source's blocks where the file system can. Has the source's date of last change, and its permissions, but
/// everybody's right to execute it taken and its owner's right to read and write it given.
class Kopie {
  public:
    /// Copies what the source holds at the beginning, through symbolic links, without ever waiting for another
    /// program. Throws std::system_error: EISDIR for a folder, EINVAL for everything else that is no regular file,
    /// and whatever keeps the source from being read or the folder from being written.
    Kopie(const std::string& quelle, const std::string& ordner) : Kopie(Dateinummer::regulaere(quelle), ordner) {}

    /// The size of the source at the beginning, in bytes.
    [[nodiscard]] std::int64_t groesse() const { return groesse_; }

    /// Waits until the copy is on the disk, then puts it at the path, which lies directly in the folder; false when
    /// something is there already. To be called until it returns true. Whoever must not lose the name either calls
    /// sichereOrdner() when all copies have theirs. Throws std::system_error.
    [[nodiscard]] bool stelleHin(const std::string& ziel);

  private:
    Kopie(const Dateinummer& quelle, const std::string& ordner);

    VorlaeufigeDatei datei_;
    std::int64_t groesse_ = 0;
    bool gesichert_ = false;
};

}  // namespace spurkiste::dateien
