#include "cli/Aufruf.h"

#include <utility>
#include <vector>

namespace spurkiste {

namespace {

std::optional<Aufruf::Format> format(std::string_view name) {
    if (name == "tabelle") {
        return Aufruf::Format::tabelle;
    }
    if (name == "json") {
        return Aufruf::Format::json;
    }
    if (name == "csv") {
        return Aufruf::Format::csv;
    }
    return std::nullopt;
}

/// The arguments in reading order, options told apart from the rest.
class Leser {
  public:
    explicit Leser(std::span<const std::string_view> argumente) : rest_(argumente) {}

    /// Reads one argument; false at the end or at the first mistake.
    bool lies() {
        if (rest_.empty() || fehler_) {
            return false;
        }
        const std::string_view argument = rest_.front();
        rest_ = rest_.subspan(1);
        if (nurNoch_ || argument == "-" || !argument.starts_with('-')) {
            woerter_.emplace_back(argument);
        } else if (argument == "--") {
            nurNoch_ = true;
        } else {
            option(argument);
        }
        return true;
    }

    std::variant<Aufruf, Aufruf::Fehler> ergebnis() && {
        if (fehler_) {
            return Aufruf::Fehler{std::move(*fehler_)};
        }
        if (sofort_) {
            aufruf_.befehl = *sofort_;
            return std::move(aufruf_);
        }
        if (woerter_.empty()) {
            return Aufruf::Fehler{"Befehl fehlt: spurkiste-cli liste ORDNER (mehr mit --help)"};
        }
        if (woerter_.front() != "liste") {
            return Aufruf::Fehler{"Unbekannter Befehl „" + woerter_.front() + "“ (mehr mit --help)"};
        }
        if (woerter_.size() != 2 || woerter_.back().empty()) {
            return Aufruf::Fehler{"liste braucht genau einen Ordner: spurkiste-cli liste ORDNER (mehr mit --help)"};
        }
        aufruf_.befehl = Aufruf::Befehl::liste;
        aufruf_.ordner = std::move(woerter_.back());
        return std::move(aufruf_);
    }

  private:
    void option(std::string_view argument) {
        const auto gleich = argument.find('=');
        const std::string_view name = argument.substr(0, gleich);
        std::optional<std::string_view> wert;
        if (gleich != std::string_view::npos) {
            wert = argument.substr(gleich + 1);
        }
        if (name == "--format" || name == "--ressourcen") {
            if (!wert && !rest_.empty()) {
                wert = rest_.front();
                rest_ = rest_.subspan(1);
            }
            setze(name, wert);
        } else if (argument == "--ohne-cache") {
            aufruf_.ohneCache = true;
        } else if (argument == "--help" || argument == "-h") {
            sofort_ = Aufruf::Befehl::hilfe;
        } else if (argument == "--version") {
            sofort_ = Aufruf::Befehl::version;
        } else {
            fehler_ = "Unbekannte Option „" + std::string(argument) + "“ (mehr mit --help)";
        }
    }

    void setze(std::string_view name, std::optional<std::string_view> wert) {
        if (!wert || wert->empty()) {
            fehler_ = "Option „" + std::string(name) + "“ braucht einen Wert (mehr mit --help)";
        } else if (name == "--ressourcen") {
            aufruf_.ressourcen = *wert;
        } else if (const auto gewaehlt = format(*wert)) {
            aufruf_.format = *gewaehlt;
        } else {
            fehler_ = "Unbekanntes Format „" + std::string(*wert) + "“: tabelle, json oder csv (mehr mit --help)";
        }
    }

    std::span<const std::string_view> rest_;
    bool nurNoch_ = false;
    std::vector<std::string> woerter_;
    std::optional<Aufruf::Befehl> sofort_;
    std::optional<std::string> fehler_;
    Aufruf aufruf_;
};

}  // namespace

std::variant<Aufruf, Aufruf::Fehler> Aufruf::lies(std::span<const std::string_view> argumente) {
    Leser leser(argumente);
    while (leser.lies()) {
    }
    return std::move(leser).ergebnis();
}

std::string Aufruf::hilfe() {
    return R"(spurkiste-cli: ein Ordner voller GPX-Dateien als Bibliothek, ohne Fenster

  spurkiste-cli liste ORDNER [Optionen]
      Liest den Ordner ein und zeigt seine Spuren. Legt den Ordner an, wenn es ihn nicht gibt, und merkt sich das
      Gelesene darin in der Datei .spurkiste-cache.json; unveränderte Dateien werden das nächste Mal nicht geöffnet.

      --format tabelle   eine Tabelle für Menschen (Vorgabe)
      --format json      ein JSON-Feld mit einem Objekt je Datei, nach Pfad geordnet
      --format csv       CSV nach RFC 4180 mit Kopfzeile
      --ohne-cache       die Datei .spurkiste-cache.json weder lesen noch schreiben
      --ressourcen DIR   Ortsliste und Sprachtabelle zuerst in DIR suchen

  spurkiste-cli --help       diese Hilfe
  spurkiste-cli --version    die Version

Umgebung: SPURKISTE_RESSOURCEN nennt einen Ordner mit Ortsliste und Sprachtabelle, NO_COLOR schaltet Farben ab.
Ende: 0, wenn alles gelang, 1 nach einem Hinweis auf der Fehlerausgabe, 2 nach einem falschen Aufruf.
)";
}

std::string Aufruf::version() {
    return "spurkiste-cli " SPURKISTE_VERSION "\n";
}

}  // namespace spurkiste
