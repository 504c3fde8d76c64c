#pragma once

#include <cstdio>
#include <string>
#include <string_view>

/// What every command does with the standard streams. Main thread.
namespace spurkiste {

/// Writes to a standard stream. What it did not take is found out at the end, by schliesseAusgabeAb().
void schreibe(std::FILE* strom, std::string_view text);

/// What becomes of names and texts that come from files and their paths.
enum class Textform {
    sicher,  ///< safe to show: on one line, without controls; in CSV no formula either
    roh,     ///< byte for byte
};

/// A name or text in this form; formulas are for CSV alone.
[[nodiscard]] std::string gezeigt(std::string_view text, Textform form);

/// Writes one line to a standard stream, whatever names are in it: the way for all lines that are not wholly our own.
void schreibeZeile(std::FILE* strom, std::string_view zeile, Textform form = Textform::sicher);

/// Hands on what was written to standard output and returns the exit status: `ende`, or 1 after a line on standard
/// error when not everything could be written. The last thing a command does.
[[nodiscard]] int schliesseAusgabeAb(int ende);

}  // namespace spurkiste
