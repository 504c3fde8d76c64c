#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/Dateien.h"

namespace spurkiste {

/// The desktop's trash. Bound to the main thread.
class Papierkorb {
  public:
    /// A file in the trash.
    struct Fund {
        std::string pfad;                     ///< where it was
        std::string ort;                      ///< where it lies now, an absolute path
        std::optional<dateien::Stand> stand;  ///< of what is there; absent for a link that leads nowhere

        friend bool operator==(const Fund&, const Fund&) = default;
    };
    /// What became of one request.
    struct Ergebnis {
        std::vector<std::string> verschoben;  ///< the old paths of what lies in the trash now
        std::optional<std::string> fehler;    ///< why the others do not, one line for the user; absent when none failed
        std::vector<std::string> verschwunden = {};  ///< the paths at which there was nothing any more
        std::vector<Fund> funde = {};                ///< where the moved ones lie, as far as that can be found out
    };
    /// Called once, on a thread of the trash's own choosing.
    using Fertig = std::function<void(Ergebnis)>;

    Papierkorb() = default;
    Papierkorb(const Papierkorb&) = delete;
    Papierkorb& operator=(const Papierkorb&) = delete;
    virtual ~Papierkorb() = default;

    /// Moves the files, absolute paths, to the trash and returns at once. What cannot be moved there stays where it is
    /// and is never deleted instead.
    virtual void verschiebe(std::vector<std::string> pfade, Fertig fertig) = 0;

    /// Puts a file back to where it was. Any thread. Throws std::system_error, and the file stays in the trash: EEXIST
    /// when something else is at its old path by now.
    virtual void holeZurueck(const Fund& fund) const = 0;
};

}  // namespace spurkiste
