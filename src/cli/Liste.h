#pragma once

#include "cli/Aufruf.h"

namespace spurkiste {

/// Carries out `liste`: loads the folder, shows how far it is on a terminal, writes the records to stdout in the
/// format asked for, and a notice, the files that could not be read, why there are no names of places, or a failed
/// write to stderr. Returns the program's exit status, 0 or 1. Main thread.
[[nodiscard]] int liste(const Aufruf& aufruf);

}  // namespace spurkiste
