#pragma once

#include <atomic>
#include <memory>
#include <string>

#include "library/Aenderungsprotokoll.h"
#include "library/CacheAbdruck.h"
#include "library/CacheEigenform.h"

namespace spurkiste {

/// What a look into a library folder came to.
struct Ordnerlesung {
    enum class Ausgang { gelesen, unerreichbar, unlesbar, abgebrochen };

    Ausgang ausgang = Ausgang::abgebrochen;
    std::string grund;                 ///< for `unlesbar`: the system's own words
    Aenderungsprotokoll::Stand stand;  ///< for `gelesen`: the records that the cache has, by path, and all other files

    std::shared_ptr<const CacheAbdruck> abdruck;  ///< of the cache file; null when it is not known

    /// What to look into, and with what.
    struct Auftrag {
        std::string ordner;
        bool mitCache = true;
        std::shared_ptr<const CacheAbdruck> abdruck;  ///< what is known of the cache file: if it still is that one, it
                                                      ///< need not be read
        CacheEigenform::Helfer helfer;
    };

    /// Makes the folder if it is missing, lists it, and finds the records of unchanged files in its cache, if
    /// `mitCache`; then it also clears away what killed programs left behind. Any thread; ends early, with nothing,
    /// once `abbruch` is true.
    [[nodiscard]] static Ordnerlesung lies(const Auftrag& auftrag, const std::atomic<bool>& abbruch);
};

}  // namespace spurkiste
