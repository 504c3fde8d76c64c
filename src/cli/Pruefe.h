#pragma once

#include <optional>
#include <string>
#include <vector>

#include "track/GpxBefund.h"

namespace spurkiste {

/// What was found out about one file.
struct Pruefergebnis {
    std::string datei;                              ///< its path as typed
    std::optional<std::vector<GpxBefund>> befunde;  ///< absent when it could not be read
};

/// The results as lines for people, nothing for files without findings, and a line that counts at the end.
[[nodiscard]] std::string alsText(const std::vector<Pruefergebnis>& ergebnisse);

/// The results as one JSON array with an object per file: "datei", "lesbar", "befunde" (objects with "art", "anzahl",
/// "zeile" and, for a broken end, "grund").
[[nodiscard]] std::string alsJson(const std::vector<Pruefergebnis>& ergebnisse);

/// The command `pruefe ORDNER|DATEI... [--json]`. Returns the exit status: 0 when every file could be read, whatever
/// was found in it, else 1. Main thread.
[[nodiscard]] int pruefe(const std::vector<std::string>& worte, bool json);

}  // namespace spurkiste
