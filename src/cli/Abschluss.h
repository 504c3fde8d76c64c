#pragma once

namespace spurkiste {

/// Hands on what was written to standard output and returns the exit status: `ende`, or 1 after a line on standard
/// error when not everything could be written. The last thing a command does. Main thread.
[[nodiscard]] int schliesseAusgabeAb(int ende);

}  // namespace spurkiste
