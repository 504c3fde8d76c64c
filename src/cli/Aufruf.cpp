#include "cli/Aufruf.h"

#include <algorithm>
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

/// The fifteen values of `sport`, separated by blanks.
std::string sportwerte() {
    std::string werte;
    for (const GpxSportart art : GpxSportart::allCases()) {
        werte.append(werte.empty() ? "" : " ").append(art.rawValue());
    }
    return werte;
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
        const std::string befehl = std::move(woerter_.front());
        woerter_.erase(woerter_.begin());
        if (befehl == "liste") {
            nimmOrdner(Aufruf::Befehl::liste, befehl);
        } else if (befehl == "doppelte") {
            nimmOrdner(Aufruf::Befehl::doppelte, befehl);
        } else if (befehl == "sport") {
            nimmSport();
        } else if (befehl == "pruefe") {
            nimmDateien(Aufruf::Befehl::pruefe, "pruefe braucht Dateien oder Ordner: spurkiste-cli pruefe DATEI...");
        } else {
            fehler_ = "Unbekannter Befehl „" + befehl + "“ (mehr mit --help)";
        }
        pruefeOptionen();
        if (fehler_) {
            return Aufruf::Fehler{std::move(*fehler_)};
        }
        return std::move(aufruf_);
    }

  private:
    void nimmOrdner(Aufruf::Befehl befehl, const std::string& name) {
        aufruf_.befehl = befehl;
        if (woerter_.size() != 1 || woerter_.front().empty()) {
            fehler_ = name + " braucht genau einen Ordner: spurkiste-cli " + name + " ORDNER (mehr mit --help)";
        } else {
            aufruf_.ordner = std::move(woerter_.front());
        }
    }

    void nimmDateien(Aufruf::Befehl befehl, const std::string& sonst) {
        aufruf_.befehl = befehl;
        if (woerter_.empty() || std::find(woerter_.begin(), woerter_.end(), "") != woerter_.end()) {
            fehler_ = sonst + " (mehr mit --help)";
        }
        aufruf_.dateien = std::move(woerter_);
    }

    void nimmSport() {
        const std::string wert = woerter_.empty() ? std::string() : woerter_.front();
        aufruf_.sport = GpxSportart::ausRawValue(wert);
        if (!aufruf_.sport) {
            fehler_ = (wert.empty() ? "Sportart fehlt" : "Unbekannte Sportart „" + wert + "“") + ": " + sportwerte();
            return;
        }
        woerter_.erase(woerter_.begin());
        nimmDateien(Aufruf::Befehl::sport, "sport braucht Dateien: spurkiste-cli sport WERT DATEI...");
    }

    /// Options that belong to another command are a mistake, too.
    void pruefeOptionen() {
        const auto verlange = [this](bool gegeben, Aufruf::Befehl befehl, std::string_view option) {
            if (gegeben && aufruf_.befehl != befehl && !fehler_) {
                fehler_ = "Option „" + std::string(option) + "“ gehört nicht zu diesem Befehl (mehr mit --help)";
            }
        };
        verlange(formatGenannt_, Aufruf::Befehl::liste, "--format");
        verlange(aufruf_.ohneCache, Aufruf::Befehl::liste, "--ohne-cache");
        verlange(aufruf_.json, Aufruf::Befehl::pruefe, "--json");
        const bool zeilen =
            aufruf_.befehl == Aufruf::Befehl::liste ? aufruf_.format == Aufruf::Format::csv : !aufruf_.json;
        if (aufruf_.roh && !zeilen && !fehler_) {
            fehler_ = "Option „--roh“ gehört nicht zu dieser Ausgabe (mehr mit --help)";
        }
    }

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
        } else if (argument == "--json") {
            aufruf_.json = true;
        } else if (argument == "--roh") {
            aufruf_.roh = true;
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
            formatGenannt_ = true;
        } else {
            fehler_ = "Unbekanntes Format „" + std::string(*wert) + "“: tabelle, json oder csv (mehr mit --help)";
        }
    }

    std::span<const std::string_view> rest_;
    bool nurNoch_ = false;
    bool formatGenannt_ = false;
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
      --roh              nur mit csv: Texte Byte für Byte, siehe unten
      --ohne-cache       die Datei .spurkiste-cache.json weder lesen noch schreiben
      --ressourcen DIR   Ortsliste und Sprachtabelle zuerst in DIR suchen

      Was nicht gelesen werden konnte, steht auf der Fehlerausgabe und wird das nächste Mal neu gelesen.

  spurkiste-cli sport WERT DATEI... [--roh]
      Schreibt die Sportart in jeden Track und jede Route der Dateien und liest sie zur Probe wieder ein; alles Übrige
      bleibt Byte für Byte. Weitere Namen einer Datei (harte Links) behalten den alten Inhalt. Eine Zeile je Datei:
      wie viele Elemente die Sportart bekamen, oder auf der Fehlerausgabe, warum es nicht ging. WERT ist einer von:
      )" + sportwerte() +
           R"(

  spurkiste-cli pruefe ORDNER|DATEI... [--json | --roh]
      Sagt, was an den Dateien nicht gelesen werden konnte: ein abgebrochenes Ende, verworfene Punkte, unlesbare Zeiten
      und Höhen, mit Anzahl und erster Zeile. Ändert nichts.

  spurkiste-cli doppelte ORDNER [--roh]
      Nennt Dateien mit derselben Spur, in Gruppen mit einer Leerzeile dazwischen. Ändert nichts.

Namen und Texte aus Dateien werden ungefährlich für Terminal und Tabellenkalkulation gezeigt: Steuerzeichen als
Leerzeichen, Bytes, die kein UTF-8 sind, als Ersatzzeichen, und in CSV mit einem Apostroph davor, was wie eine Formel
beginnt (= + - @). --roh gibt sie Byte für Byte aus, für Programme.

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
