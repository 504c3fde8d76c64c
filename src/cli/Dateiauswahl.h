#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

/// The files that a command is to look at. Main thread.
namespace spurkiste::dateiauswahl {

/// The GPX files directly in the folder, those that the library would show, by path, which begins with the folder as
/// typed. Throws std::system_error when it cannot be listed.
[[nodiscard]] std::vector<std::string> imOrdner(const std::string& ordner);

/// The files behind the words of a command line, each word a folder or a file: for a folder imOrdner(), for a file
/// itself, whatever it is called. Throws std::system_error when a folder cannot be listed; a file that is not there is
/// for the command to find out.
[[nodiscard]] std::vector<std::string> sammle(const std::vector<std::string>& worte);

/// Calls `tue` with 0 to anzahl - 1, each number once, on several threads at a time, and returns when all are done.
/// `tue` must not throw.
void fuerAlle(std::size_t anzahl, const std::function<void(std::size_t)>& tue);

}  // namespace spurkiste::dateiauswahl
