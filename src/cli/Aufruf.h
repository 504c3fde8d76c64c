#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "track/GpxSportart.h"

namespace spurkiste {

/// What the command line asks for. A plain value.
struct Aufruf {
    enum class Befehl { hilfe, version, liste, sport, pruefe, doppelte };
    enum class Format { tabelle, json, csv };

    Befehl befehl = Befehl::hilfe;
    std::string ordner;                     ///< of `liste` and `doppelte`, as typed
    Format format = Format::tabelle;        ///< of `liste`
    std::optional<std::string> ressourcen;  ///< folder to look for resources in first
    bool ohneCache = false;                 ///< the cache file is neither read nor written
    std::vector<std::string> dateien = {};  ///< of `sport` files, of `pruefe` files and folders, as typed
    std::optional<GpxSportart> sport = {};  ///< of `sport`, always present there
    bool json = false;                      ///< of `pruefe`: for machines
    bool roh = false;                       ///< names and texts byte for byte; not for tables and JSON

    /// Why a call cannot be carried out: one line for the user.
    struct Fehler {
        std::string text;
    };

    /// Reads the arguments after the program's name. Options may stand anywhere before "--", their values in the
    /// next argument or behind "=". Any thread.
    [[nodiscard]] static std::variant<Aufruf, Fehler> lies(std::span<const std::string_view> argumente);

    /// The text of --help, with line breaks.
    [[nodiscard]] static std::string hilfe();

    /// The text of --version, with a line break.
    [[nodiscard]] static std::string version();
};

}  // namespace spurkiste
