#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// The JSON form of a record: an object (RFC 8259) whose members are called and ordered like the fields. Instants are
/// numbers of seconds as in Zeitpunkt, the sketch is an array of arrays of coordinates, absent values have no member.
class GpxMetadatenJson {
  public:
    GpxMetadatenJson() = delete;

    /// What became of a record that was to be written.
    enum class Ergebnis {
        geschrieben,
        keinUtf8,      ///< a text is not UTF-8 and has no place in JSON
        nichtEndlich,  ///< a number is infinite or NaN and has no place in JSON
    };

    /// What to do with texts that are not UTF-8, which are those of files with such names.
    enum class Fremdbytes {
        lehneAb,  ///< refuse the record, so that what is written reads back equal
        ersetze,  ///< write U+FFFD for what is out of place, so that every record can be shown
    };

    /// Appends the record, without white space. When it cannot be written, `ziel` is unchanged; a record that fails
    /// in both ways is keinUtf8. Any thread.
    [[nodiscard]] static Ergebnis haengeAn(std::string& ziel, const GpxMetadaten& eintrag,
                                           Fremdbytes fremdbytes = Fremdbytes::lehneAb);

    /// Reads JSON values one after the other and keeps the memory for that. One thread at a time.
    ///
    /// Every function takes one whole value and checks it strictly, ignored parts included: syntax, UTF-8, no halves
    /// of surrogate pairs, at most 1024 levels of nesting, all numbers in a double's range. The value must be followed
    /// by kPolster readable bytes of any content; they save a copy.
    class Leser {
      public:
        static constexpr std::size_t kPolster = 64;

        Leser();
        Leser(const Leser&) = delete;
        Leser& operator=(const Leser&) = delete;
        ~Leser();

        /// The record that the value stands for; null when it is none: a required member is missing, or one has the
        /// wrong type. Members may come in any order, unknown ones are ignored, of equal names the last one counts,
        /// and null stands for an absent optional value. An integer may stand for a number, but not 3.0 for 3.
        [[nodiscard]] Eintrag eintrag(std::string_view json);

        /// The text that the value stands for, when it is a string.
        [[nodiscard]] std::optional<std::string> text(std::string_view json);

        /// The number that the value stands for, when it is an integer of 64 bits.
        [[nodiscard]] std::optional<std::int64_t> ganzzahl(std::string_view json);

        /// Whether the value is valid.
        [[nodiscard]] bool istGueltig(std::string_view json);

      private:
        struct Zerteiler;
        std::unique_ptr<Zerteiler> zerteiler_;
    };
};

}  // namespace spurkiste
