#pragma once

#include <string>
#include <vector>

#include "cli/Abschluss.h"
#include "track/GpxSportart.h"

namespace spurkiste {

/// The command `sport WERT DATEI...`: writes the sport into each file, in the order given, and reads it back. One line
/// per file: "DATEI: N elements" on stdout, "DATEI: " and why not on stderr. Where a file has further names (hard
/// links), stderr says that they lead to the old content still. Returns the exit status: 0 when all were
/// written, else 1. Main thread.
[[nodiscard]] int sport(GpxSportart art, const std::vector<std::string>& dateien, Textform form);

}  // namespace spurkiste
