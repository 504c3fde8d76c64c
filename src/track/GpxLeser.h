#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "base/Zeitpunkt.h"
#include "geo/Koordinate.h"
#include "track/GpxBefund.h"
#include "track/GpxMetadaten.h"
#include "track/XmlLauf.h"

namespace spurkiste {

/// Turns one GPX file into one record. Static; any number of threads at once, each of which keeps a buffer for its
/// next file. Element starts count by their local name, ends only when the full name, as written, is the plain one: a
/// file that puts a prefix before its own elements has no points, while a prefixed weather sample is found.
class GpxLeser {
  public:
    GpxLeser() = delete;

    /// Names, sport texts and weather texts of more bytes are no such thing and count as absent: no file may fill the
    /// memory and the cache with one text.
    static constexpr std::size_t kLaengsterText = std::size_t{1} << 20U;

    /// Reads the regular file at the absolute path. Never fails on content: a file that is broken, foreign or cannot
    /// be opened gives a record of what could be read, down to zero figures. Nothing only when the file's size or
    /// date cannot be had: it vanished, or it is no regular file. Size and date are those before the first byte, and
    /// no byte beyond that size is read, however fast the file grows.
    [[nodiscard]] static std::optional<GpxMetadaten> lese(const std::string& pfad);

    /// Asked before each piece whether reading is still wanted; may be empty.
    using Abgebrochen = std::function<bool()>;

    /// The same. `fehler` becomes why the file's bytes, or the memory for them, could not be had, and else none: such a
    /// record says less than the file, and another time reading may do better. A file that has vanished is no error.
    /// Nothing also, with std::errc::operation_canceled, when reading is no longer wanted.
    [[nodiscard]] static std::optional<GpxMetadaten> lese(const std::string& pfad, std::error_code& fehler,
                                                          const Abgebrochen& abgebrochen = {});

    /// The record that a file of these bytes gives, with everything left out that does not come from the content:
    /// `pfad`, `dateiName`, `dateiDatum`, `dateiGroesse`. The result depends neither on `amStueck`, the size from
    /// which on the bytes are parsed in pieces, nor on the way.
    [[nodiscard]] static GpxMetadaten ausInhalt(std::string_view inhalt, std::size_t amStueck = XmlLauf::kAmStueck,
                                                XmlWeg weg = XmlWeg::eiligVoran);

    /// The coordinates of all points that the record of this file would count, in order. Empty when there are none or
    /// when `fehler` says why the file could not be read.
    [[nodiscard]] static std::vector<Koordinate> orte(const std::string& pfad, std::error_code& fehler);

    /// What reading this file would pass over in silence, each kind at most once; empty when nothing. Absent when
    /// `fehler` says why the file could not be read.
    [[nodiscard]] static std::optional<std::vector<GpxBefund>> befunde(const std::string& pfad,
                                                                       std::error_code& fehler);

    /// A point's time: an ISO 8601 timestamp as Zeitpunkt::ausIso8601() reads it, with white space around it allowed
    /// and taken as UTC when it has no zone. Nothing for any other text.
    [[nodiscard]] static std::optional<Zeitpunkt> datumAus(std::string_view text);
};

}  // namespace spurkiste
