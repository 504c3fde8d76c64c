#pragma once

#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "cli/Abschluss.h"

namespace spurkiste {

/// Files whose tracks are the same, and those of which nobody knows.
struct Doppelgaenger {
    std::vector<std::vector<std::string>> gruppen;
    std::map<std::string, std::error_code> unlesbar;  ///< by path
};

/// Files whose tracks are the same: the same coordinates in the same order, whatever else their bytes say. Files
/// without points are the same as nothing. Groups in the order of their first file, the files of a group in the order
/// given. Files are only read, on several threads.
[[nodiscard]] Doppelgaenger findeDoppelte(const std::vector<std::string>& pfade);

/// The command `doppelte ORDNER`: one line per file, an empty line between groups. Returns the exit status: 0, also
/// when there are none, and 1 after a notice on stderr, also for each file that could not be read. Main thread.
[[nodiscard]] int doppelte(const std::string& ordner, Textform form);

}  // namespace spurkiste
