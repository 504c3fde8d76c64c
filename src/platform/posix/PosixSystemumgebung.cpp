#include "platform/posix/PosixSystemumgebung.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"

namespace spurkiste {

namespace {

std::string umgebung(const char* name) {
    const char* wert = std::getenv(name);
    return wert == nullptr ? std::string() : std::string(wert);
}

/// "de_CH.UTF-8@euro" gives "de-CH"; the C and POSIX locales give nothing.
std::string alsSprache(std::string_view gebiet) {
    std::string sprache(gebiet.substr(0, gebiet.find_first_of(".@")));
    if (sprache == "C" || sprache == "POSIX") {
        return {};
    }
    std::replace(sprache.begin(), sprache.end(), '_', '-');
    return sprache;
}

/// The folder that a line XDG_DOCUMENTS_DIR="..." of user-dirs.dirs names: absolute, or below $HOME; a backslash
/// stands before characters that the shell would take for its own. Nothing for every other line.
std::optional<std::string> dokumenteAusZeile(std::string_view zeile, const std::string& heim) {
    constexpr std::string_view anfang = "XDG_DOCUMENTS_DIR=\"";
    constexpr std::string_view heimVariable = "$HOME";
    if (!zeile.starts_with(anfang) || !zeile.ends_with('"') || zeile.size() == anfang.size()) {
        return std::nullopt;
    }
    zeile.remove_prefix(anfang.size());
    zeile.remove_suffix(1);
    std::string ordner;
    if (zeile.starts_with(heimVariable)) {
        ordner = heim;
        zeile.remove_prefix(heimVariable.size());
    }
    if (!zeile.empty() && zeile.front() != '/') {
        return std::nullopt;
    }
    for (std::size_t i = 0; i < zeile.size(); ++i) {
        i += zeile[i] == '\\' && i + 1 < zeile.size() ? 1 : 0;
        ordner += zeile[i];
    }
    return ordner.empty() ? std::nullopt : std::optional(ordner);
}

}  // namespace

std::vector<std::string> PosixSystemumgebung::bevorzugteSprachen() const {
    std::string gebiet;
    for (const char* name : std::array{"LC_ALL", "LC_MESSAGES", "LANG"}) {
        gebiet = umgebung(name);
        if (!gebiet.empty()) {
            break;
        }
    }
    const std::string eine = alsSprache(gebiet);
    if (eine.empty()) {
        return {};
    }
    std::vector<std::string> sprachen;
    const std::string viele = umgebung("LANGUAGE");
    std::string_view rest = viele;
    while (!rest.empty()) {
        const auto teil = rest.substr(0, rest.find(':'));
        if (auto sprache = alsSprache(teil); !sprache.empty()) {
            sprachen.push_back(std::move(sprache));
        }
        rest.remove_prefix(std::min(rest.size(), teil.size() + 1));
    }
    sprachen.push_back(eine);
    return sprachen;
}

std::optional<std::string> PosixSystemumgebung::dokumenteOrdner() const {
    const std::string heim = umgebung("HOME");
    if (!heim.starts_with('/')) {
        return std::nullopt;
    }
    std::string ablage = umgebung("XDG_CONFIG_HOME");
    if (!ablage.starts_with('/')) {
        ablage = heim + "/.config";
    }
    std::string ordner = heim + "/Documents";
    const auto inhalt = dateien::liesGanz(ablage + "/user-dirs.dirs").value_or("");
    std::string_view rest = inhalt;
    while (!rest.empty()) {
        const auto zeile = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), zeile.size() + 1));
        if (auto genannt = dokumenteAusZeile(text::trimme(zeile), heim)) {
            ordner = std::move(*genannt);  // a shell would let the last line win
        }
    }
    return dateien::absolut(ordner);
}

}  // namespace spurkiste
