#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <system_error>
#include <vector>

/// The files that a command is to look at. Main thread.
namespace spurkiste::dateiauswahl {

/// What directly in the folder is called .gpx, by path, which begins with the folder as typed: the files that the
/// library shows, and what it passes over because there is nothing to read. Throws std::system_error when the folder
/// cannot be listed.
[[nodiscard]] std::vector<std::string> imOrdner(const std::string& ordner);

/// A file that is to be looked at, or something that cannot be.
struct Fund {
    std::string pfad;
    std::error_code fehler = {};  ///< why nothing can be known of it or it cannot be listed
};

/// The files behind the words of a command line, each word a folder or a file: for a folder imOrdner(), for a file
/// itself, whatever it is called. What is not there, or is a folder that cannot be listed, stands there itself.
[[nodiscard]] std::vector<Fund> sammle(const std::vector<std::string>& worte);

/// Calls `tue` with 0 to anzahl - 1, each number once, on several threads at a time, and returns when all are done.
/// `tue` must not throw.
void fuerAlle(std::size_t anzahl, const std::function<void(std::size_t)>& tue);

}  // namespace spurkiste::dateiauswahl
