#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "library/Verlauf.h"

/// What the user is told of steps that were taken back or done again: one line each, UTF-8. Any thread.
namespace spurkiste::verlaufstexte {

/// Why a deed could not be done.
struct Fehlschlag {
    std::string pfad;
    std::string grund;  ///< goes on after the file's name
};

/// What is said of a file that is no longer what it was when the deed was noted.
[[nodiscard]] std::string geaendert();
/// The same of one that is gone.
[[nodiscard]] std::string verschwunden();
/// The same of one that the system would not let be changed, in the system's words.
[[nodiscard]] std::string gescheitert(const std::string& warum);

/// What was done: deeds of one kind, `eine` being one of them.
[[nodiscard]] std::string getan(const Tat& eine, Richtung richtung, std::size_t anzahl);
/// That there was nothing to do.
[[nodiscard]] std::string nichts(Richtung richtung);
/// What was left alone, at least one.
[[nodiscard]] std::string nichtGetan(Richtung richtung, const std::vector<Fehlschlag>& fehlschlaege);

}  // namespace spurkiste::verlaufstexte
