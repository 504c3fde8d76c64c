#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace spurkiste {

/// The desktop's trash. Bound to the main thread.
class Papierkorb {
  public:
    /// What became of one request.
    struct Ergebnis {
        std::vector<std::string> verschoben;  ///< the old paths of what lies in the trash now
        std::optional<std::string> fehler;    ///< why the others do not, one line for the user; absent when none failed
        std::vector<std::string> verschwunden = {};  ///< the paths at which there was nothing any more
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
};

}  // namespace spurkiste
