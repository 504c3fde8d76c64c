#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

#include "library/CacheAbdruck.h"
#include "library/CacheEigenform.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// The records that a library folder keeps between runs, by path, in one JSON file inside the folder. A plain value.
struct Cache {
    /// The only format version that is read and written.
    static constexpr std::int64_t kVersion = 3;
    /// The file's name inside the library folder.
    static constexpr std::string_view kDateiname = ".spurkiste-cache.json";

    std::int64_t version = kVersion;
    std::unordered_map<std::string, Eintrag> eintraege;  ///< by `pfad`
    std::shared_ptr<const CacheAbdruck> abdruck;         ///< of the file it was read from, when that has our own form

    /// The stored record of the file at `pfad` when size and date on disk still match it: the same size, the date
    /// less than one second away. Nothing in every doubt, so also when the record names another path than its key.
    /// Asks the system once per call.
    [[nodiscard]] Eintrag passend(const std::string& pfad) const;

    /// Reads the cache of a folder. Empty when the file is missing, no regular file, a link, unreadable, malformed, of
    /// another version, holds a single record that does not decode or a value longer than JsonStuecke::kHoechstens, or
    /// when memory runs out.
    [[nodiscard]] static Cache liesAus(const std::string& ordner, const CacheEigenform::Helfer& helfer = {});

    /// The cache in a file of which this is known (not null), without reading it.
    [[nodiscard]] static Cache aus(std::shared_ptr<const CacheAbdruck> abdruck);

    /// The cache in a JSON text; nothing when it is malformed, lacks a member, or a single record does not decode.
    /// A version other than kVersion is not an error here. Of members with the same name the last one counts, unknown
    /// ones are ignored, but the whole text must be valid.
    [[nodiscard]] static std::optional<Cache> ausJson(std::string_view json);

    /// Writes the records as the folder's cache file, atomically; of records with the same path the last one counts.
    /// Records with a text that is not UTF-8 (a path, in practice) have no place in JSON and are left out, so that one
    /// odd file does not keep the others from being cached. Returns whether the file now holds them, be it that it did
    /// before; when not (folder not writable, disk full, a number that is not finite) the old file stays as it was.
    static bool schreibeNach(const std::string& ordner, std::span<const Eintrag> eintraege);
};

}  // namespace spurkiste
