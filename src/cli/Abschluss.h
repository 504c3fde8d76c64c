#pragma once

#include <cstdio>
#include <string_view>

/// What every command does with the standard streams. Main thread.
namespace spurkiste {

/// Writes to a standard stream. What it did not take is found out at the end, by schliesseAusgabeAb().
void schreibe(std::FILE* strom, std::string_view text);

/// Hands on what was written to standard output and returns the exit status: `ende`, or 1 after a line on standard
/// error when not everything could be written. The last thing a command does.
[[nodiscard]] int schliesseAusgabeAb(int ende);

}  // namespace spurkiste
