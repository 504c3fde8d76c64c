#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/Zeitpunkt.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Turns one GPX file into one record. Static, without state of its own; any number of threads at once.
class GpxLeser {
  public:
    /// Reads the regular file at the absolute path. Never fails on content: a file that is broken, foreign or cannot
    /// be opened gives a record of what could be read, down to zero figures. Nothing only when the file's size or
    /// date cannot be had: it vanished, or it is no regular file.
    [[nodiscard]] static std::optional<GpxMetadaten> lese(const std::string& pfad);

    /// A point's time: an ISO 8601 timestamp as Zeitpunkt::ausIso8601() reads it, with white space around it allowed
    /// and taken as UTC when it has no zone. Nothing for any other text.
    [[nodiscard]] static std::optional<Zeitpunkt> datumAus(std::string_view text);
};

}  // namespace spurkiste
