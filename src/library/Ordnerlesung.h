#pragma once

#include <atomic>
#include <optional>
#include <string>

#include "library/Aenderungsprotokoll.h"

namespace spurkiste {

/// What a look into a library folder came to.
struct Ordnerlesung {
    enum class Ausgang { gelesen, unerreichbar, unlesbar, abgebrochen };

    Ausgang ausgang = Ausgang::abgebrochen;
    std::string grund;                 ///< for `unlesbar`: the system's own words
    Aenderungsprotokoll::Stand stand;  ///< for `gelesen`: the records that the cache has, by path, and all other files

    /// Makes the folder if it is missing, lists it, and finds the records of unchanged files in its cache, if
    /// `mitCache`; then it also clears away what killed programs left behind. Any thread; ends early, with nothing,
    /// once `abbruch` is true.
    [[nodiscard]] static Ordnerlesung lies(const std::string& ordner, bool mitCache, const std::atomic<bool>& abbruch);
};

}  // namespace spurkiste
