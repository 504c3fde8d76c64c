#pragma once

#include <optional>
#include <string>
#include <system_error>
#include <vector>

#include "cli/Abschluss.h"
#include "track/GpxBefund.h"

namespace spurkiste {

/// What was found out about one file.
struct Pruefergebnis {
    std::string datei;                              ///< its path as typed
    std::optional<std::vector<GpxBefund>> befunde;  ///< absent when it could not be read
    std::error_code fehler;                         ///< why
    bool leer = false;                              ///< it has no bytes
};

/// Reads the files behind the words, each a folder or a file, in that order and in folders by path. Files are only
/// read, on several threads. Main thread.
[[nodiscard]] std::vector<Pruefergebnis> pruefeDateien(const std::vector<std::string>& worte);

/// The results as lines for people: one for each finding, nothing for files without any, and one that counts at the
/// end. Files that could not be read are only counted.
[[nodiscard]] std::string alsText(const std::vector<Pruefergebnis>& ergebnisse, Textform form);

/// For each file that could not be read a line that says why.
[[nodiscard]] std::string nichtLesbare(const std::vector<Pruefergebnis>& ergebnisse, Textform form);

/// The results as one JSON array with an object per file: "datei", "lesbar", "befunde" (objects with "art", "anzahl",
/// "zeile" and, for a broken end, "grund").
[[nodiscard]] std::string alsJson(const std::vector<Pruefergebnis>& ergebnisse);

/// The command `pruefe ORDNER|DATEI... [--json]`. Returns the exit status: 0 when every file could be read, whatever
/// was found in it, else 1 after a notice on stderr for each that could not. Main thread.
[[nodiscard]] int pruefe(const std::vector<std::string>& worte, bool json, Textform form);

}  // namespace spurkiste
