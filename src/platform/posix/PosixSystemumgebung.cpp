#include "platform/posix/PosixSystemumgebung.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

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
    const auto inhalt = dateien::liesGanz(ablage + "/user-dirs.dirs").value_or("");
    constexpr std::string_view anfang = "XDG_DOCUMENTS_DIR=\"";
    std::string_view rest = inhalt;
    while (!rest.empty()) {
        const auto zeile = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), zeile.size() + 1));
        auto wert = text::trimme(zeile);
        if (!wert.starts_with(anfang) || !wert.ends_with('"') || wert.size() == anfang.size()) {
            continue;
        }
        wert.remove_prefix(anfang.size());
        wert.remove_suffix(1);
        constexpr std::string_view heimVariable = "$HOME/";
        if (wert.starts_with(heimVariable) && wert.size() > heimVariable.size()) {
            return heim + "/" + std::string(wert.substr(heimVariable.size()));
        }
        if (wert.starts_with('/')) {
            return std::string(wert);
        }
    }
    return heim + "/Documents";
}

}  // namespace spurkiste
