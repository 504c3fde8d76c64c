#include "app/Startaufruf.h"

namespace spurkiste {

std::variant<Startaufruf, Startaufruf::Fehler> Startaufruf::lies(std::span<const std::string_view> argumente) {
    constexpr std::string_view ordner = "--ordner";
    Startaufruf aufruf;
    bool nurNochDateien = false;
    for (std::size_t i = 0; i < argumente.size(); ++i) {
        const std::string_view argument = argumente[i];
        if (!argument.empty() && (nurNochDateien || !argument.starts_with('-'))) {
            aufruf.dateien.emplace_back(argument);
        } else if (argument == "--") {
            nurNochDateien = true;
        } else if (argument == "--help" || argument == "-h") {
            aufruf.befehl = Befehl::hilfe;
        } else if (argument == "--version") {
            aufruf.befehl = Befehl::version;
        } else if (argument == ordner && i + 1 < argumente.size() && !argumente[i + 1].empty()) {
            aufruf.ordner = argumente[++i];
        } else if (argument.starts_with("--ordner=") && argument.size() > ordner.size() + 1) {
            aufruf.ordner = argument.substr(ordner.size() + 1);
        } else if (argument == ordner || argument == "--ordner=") {
            return Fehler{"Option „--ordner“ braucht einen Ordner (mehr mit --help)"};
        } else {
            return Fehler{"Unbekanntes Argument „" + std::string(argument) + "“ (mehr mit --help)"};
        }
    }
    return aufruf;
}

std::string Startaufruf::hilfe() {
    return R"(spurkiste: ein Ordner voller GPX-Dateien als Bibliothek

  spurkiste                  öffnet die Bibliothek, die zuletzt gewählt war
  spurkiste --ordner DIR     öffnet DIR, nur für dieses Mal
  spurkiste DATEI.gpx ...    zeigt Dateien der Bibliothek und importiert andere, die sie noch nicht enthält; ist die
                             Bibliothek schon offen, dann in ihrem Fenster
  spurkiste --help           diese Hilfe
  spurkiste --version        die Version

Ende: 0; 1, wenn nichts zu öffnen war; oder 2 nach einem falschen Aufruf. Ohne Fenster: spurkiste-cli --help
)";
}

std::string Startaufruf::version() {
    return "spurkiste " SPURKISTE_VERSION "\n";
}

}  // namespace spurkiste
