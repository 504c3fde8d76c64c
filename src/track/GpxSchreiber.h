#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

#include "track/GpxSportart.h"
#include "track/GpxUmkehr.h"

namespace spurkiste {

/// Why a sport type could not be put into a GPX file.
enum class GpxSchreibfehler {
    keineSpur,                 ///< the root element has neither a track nor a route
    nichtLesbar,               ///< the file is no XML document, or cannot be read at all
    nachSchreibenNichtLesbar,  ///< written, but reading it back gave no record
};

/// The error's one-line description for the user. Any thread.
[[nodiscard]] std::string beschreibung(GpxSchreibfehler fehler);

/// A GpxSchreibfehler on its way to the caller; what() is its description.
class GpxSchreibausnahme final : public std::runtime_error {
  public:
    explicit GpxSchreibausnahme(GpxSchreibfehler fehler) : std::runtime_error(beschreibung(fehler)), fehler_(fehler) {}

    [[nodiscard]] GpxSchreibfehler fehler() const { return fehler_; }

  private:
    GpxSchreibfehler fehler_;
};

/// Writes the one thing into GPX files that this program ever changes in them: the sport type.
class GpxSchreiber {
  public:
    GpxSchreiber() = delete;

    /// What was done.
    struct Ergebnis {
        std::size_t elemente = 0;       ///< tracks and routes that have the sport now
        std::uint64_t andereNamen = 0;  ///< further names (hard links) of the file, which still lead to the old content
        GpxUmkehr umkehr;               ///< takes the writing back
    };

    /// Puts the sport's raw value into the <type> of every track and route that is a child of the root element. All
    /// other bytes of the file stay as they are. The file is replaced as a whole or not at all, behind symbolic links;
    /// it keeps owner, permissions, access list and attributes as far as the system can, loses set-user-ID and
    /// set-group-ID, and gets a new date, at least a second after the old one. When another program changes it
    /// meanwhile or has it open for writing, the work begins again on the new bytes, three times at most.
    /// Throws GpxSchreibausnahme (keineSpur, nichtLesbar), std::system_error when the file cannot be written, and
    /// another std::runtime_error, whose what() is for the user, when that other program does not rest; the file is
    /// then untouched. Any thread, one call per file at a time. `vorher` is called between reading and writing.
    static Ergebnis setzeSportart(GpxSportart art, const std::string& pfad, const std::function<void()>& vorher = {});

    /// Puts back the bytes that a writing has replaced, in the same way, and returns what takes that back in turn. The
    /// file gets a new date: those who keep copies of it shall see that it has changed. Nothing, and the file is
    /// untouched, when it is no longer the one that was written. Throws as setzeSportart(). Any thread, one call per
    /// file at a time. `vorher` is called between reading and writing.
    [[nodiscard]] static std::optional<GpxUmkehr> kehreUm(const GpxUmkehr& umkehr, const std::string& pfad,
                                                          const std::function<void()>& vorher = {});
};

}  // namespace spurkiste
