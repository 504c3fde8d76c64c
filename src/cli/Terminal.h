#pragma once

#include <cstddef>
#include <optional>

/// What the standard streams lead to. Any thread.
namespace spurkiste::terminal {

/// The streams of a process by their POSIX numbers.
enum class Strom { ausgabe = 1, fehler = 2 };

/// Whether the stream is a terminal.
[[nodiscard]] bool istTerminal(Strom strom);

/// The width of the terminal behind the stream, in columns; nothing when it is none or does not say.
[[nodiscard]] std::optional<std::size_t> breite(Strom strom);

/// Whether colours are welcome on the stream: it is a terminal, TERM is not "dumb", and NO_COLOR is not set to
/// anything (no-color.org).
[[nodiscard]] bool mitFarben(Strom strom);

}  // namespace spurkiste::terminal
