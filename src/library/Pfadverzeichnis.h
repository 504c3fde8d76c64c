#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Finds the records of a list by their path, and changes the list without going through all of it. A value that
/// belongs to one list, which nobody else changes; moving both keeps them together. Its keys live in the list's
/// records.
class Pfadverzeichnis {
  public:
    using Liste = std::vector<Eintrag>;

    /// Of an empty list.
    Pfadverzeichnis() = default;
    /// Of records with the same path the last one is known.
    explicit Pfadverzeichnis(const Liste& liste);
    Pfadverzeichnis(const Pfadverzeichnis&) = delete;
    Pfadverzeichnis& operator=(const Pfadverzeichnis&) = delete;
    Pfadverzeichnis(Pfadverzeichnis&&) = default;
    Pfadverzeichnis& operator=(Pfadverzeichnis&&) = default;
    ~Pfadverzeichnis() = default;

    /// Where the record of the path stands; nothing when there is none.
    [[nodiscard]] std::optional<std::size_t> stelle(std::string_view pfad) const;

    /// Appends the record; one with the same path goes.
    void fuegeEin(Liste& liste, Eintrag eintrag);

    /// Puts another record in the place of one. Its path is the same or one that no record of the list has.
    void ersetze(Liste& liste, std::size_t stelle, Eintrag eintrag);

    /// Removes the records of these paths and tells of how many there were.
    std::size_t entferne(Liste& liste, const std::vector<std::string>& pfade);

  private:
    /// Each record has a number for as long as it is in the list, in ascending order: positions move, numbers stay.
    using Nummer = std::uint64_t;

    [[nodiscard]] std::size_t stelleVon(Nummer nummer) const;

    std::unordered_map<std::string_view, Nummer> nummern_;
    std::vector<Nummer> reihe_;  // in the order of the list
};

}  // namespace spurkiste
