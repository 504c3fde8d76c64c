#pragma once

#include <cstdint>
#include <vector>

#include "base/Dateien.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Which records a cache file holds, and where: what is needed to tell that there is nothing to write, or to copy the
/// bytes of a record in place of encoding it again. An immutable value that is shared between threads.
struct CacheAbdruck {
    /// One record's path, colon and object.
    struct Stelle {
        Eintrag eintrag;  ///< the record that reading the bytes gives, by identity
        std::uint64_t ab = 0;
        std::uint64_t laenge = 0;
    };

    dateien::Stand stand;         ///< the state of the file in which all this holds
    std::vector<Stelle> stellen;  ///< in the order of the file, one comma between neighbours
};

}  // namespace spurkiste
