#pragma once

#include <memory>
#include <span>
#include <string>

#include "library/CacheAbdruck.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Writes cache files. Any thread, but one at a time for each folder.
class CacheSchreiber {
  public:
    CacheSchreiber() = delete;

    /// What became of the file.
    enum class Ausgang {
        unveraendert,  ///< it holds these very bytes already and was not touched
        geschrieben,
        gescheitert,  ///< folder not writable, disk full, a number that is not finite: the old file stays as it was
    };
    struct Ergebnis {
        Ausgang ausgang = Ausgang::gescheitert;
        std::shared_ptr<const CacheAbdruck> abdruck;  ///< of the file as it is now; null when that is not known
    };

    /// Writes the records as the cache file at the path, atomically; of records with the same path the last one
    /// counts. Records with a text that is not UTF-8 (a path, in practice) have no place in JSON and are left out.
    /// `vorher` is what is known of the file (may be null): the bytes of records that it names are not made again, but
    /// taken from there, when the file is still the one that it speaks of.
    [[nodiscard]] static Ergebnis schreibe(const std::string& pfad, std::span<const Eintrag> eintraege,
                                           const CacheAbdruck* vorher);
};

}  // namespace spurkiste
