#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace spurkiste {

/// What the window program's command line asks for. A plain value; needs no display.
struct Startaufruf {
    enum class Befehl { fenster, hilfe, version };

    Befehl befehl = Befehl::fenster;
    std::optional<std::string> ordner;  ///< library folder for this run, as typed
    std::vector<std::string> dateien;   ///< files to show or to import, as typed

    /// Why a call cannot be carried out: one line for the user.
    struct Fehler {
        std::string text;
    };

    /// Reads the arguments after the program's name, those of the toolkit already taken out. Options may stand anywhere
    /// before "--". Any thread.
    [[nodiscard]] static std::variant<Startaufruf, Fehler> lies(std::span<const std::string_view> argumente);

    /// The text of --help, with line breaks.
    [[nodiscard]] static std::string hilfe();
    /// The text of --version, with a line break.
    [[nodiscard]] static std::string version();
};

}  // namespace spurkiste
