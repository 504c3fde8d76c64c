#include "i18n/Sprachtabelle.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

#include <simdjson.h>

#include "base/Text.h"

namespace spurkiste {

namespace {

namespace dom = simdjson::dom;

/// The languages that may be offered, in menu order.
constexpr std::array<std::string_view, 19> kMenue{"de", "en", "fr", "es", "it", "nl", "pt", "pl",      "cs",     "da",
                                                  "sv", "nb", "fi", "tr", "uk", "ja", "ko", "zh-Hans", "zh-Hant"};

constexpr std::string_view kBom = "\xEF\xBB\xBF";

using Mitglieder = std::map<std::string_view, dom::element>;

/// The members of a JSON object, of those with the same name the last; nothing when it is no object.
std::optional<Mitglieder> mitglieder(const dom::element& wert) {
    dom::object objekt;
    if (wert.get(objekt) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    Mitglieder ergebnis;
    for (const auto& [name, inhalt] : objekt) {
        ergebnis.insert_or_assign(name, inhalt);
    }
    return ergebnis;
}

std::optional<std::string> zeichenkette(const Mitglieder& objekt, std::string_view name) {
    std::string_view inhalt;
    const auto stelle = objekt.find(name);
    if (stelle == objekt.end() || stelle->second.get(inhalt) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    return std::string(inhalt);
}

std::optional<std::vector<std::string>> zeichenketten(const Mitglieder& objekt, std::string_view name) {
    dom::array liste;
    const auto stelle = objekt.find(name);
    if (stelle == objekt.end() || stelle->second.get(liste) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    std::vector<std::string> ergebnis;
    for (const dom::element element : liste) {
        std::string_view inhalt;
        if (element.get(inhalt) != simdjson::SUCCESS) {
            return std::nullopt;
        }
        ergebnis.emplace_back(inhalt);
    }
    return ergebnis;
}

std::optional<Sprachtabelle::Eintrag> eintrag(const dom::element& wert) {
    const auto objekt = mitglieder(wert);
    if (!objekt) {
        return std::nullopt;
    }
    auto name = zeichenkette(*objekt, "name");
    auto values = zeichenketten(*objekt, "values");
    if (!name || !values) {
        return std::nullopt;
    }
    return Sprachtabelle::Eintrag{std::move(*name), std::move(*values)};
}

/// The first characters of a well-formed text in UTF-8, at most `anzahl`.
std::string_view ersteZeichen(std::string_view text, std::size_t anzahl) {
    std::size_t zeichen = 0;
    for (std::size_t stelle = 0; stelle < text.size(); ++stelle) {
        const bool beginnt = (static_cast<unsigned char>(text[stelle]) & 0xC0U) != 0x80U;
        if (beginnt && ++zeichen > anzahl) {
            return text.substr(0, stelle);
        }
    }
    return text;
}

}  // namespace

std::optional<Sprachtabelle> Sprachtabelle::ausJson(std::string_view json) {
    if (json.starts_with(kBom)) {
        json.remove_prefix(kBom.size());
    }
    // The tree, not the on-demand reader: only the tree checks the parts of the file that nobody asks for.
    dom::parser leser;
    dom::element wurzel;
    if (leser.parse(json.data(), json.size()).get(wurzel) != simdjson::SUCCESS) {
        return std::nullopt;
    }
    const auto objekt = mitglieder(wurzel);
    if (!objekt) {
        return std::nullopt;
    }
    auto keys = zeichenketten(*objekt, "keys");
    const auto stelle = objekt->find("languages");
    if (!keys || stelle == objekt->end()) {
        return std::nullopt;
    }
    const auto sprachenObjekt = mitglieder(stelle->second);
    if (!sprachenObjekt) {
        return std::nullopt;
    }
    Sprachtabelle tabelle{std::move(*keys), {}};
    for (const auto& [code, wert] : *sprachenObjekt) {
        auto sprache = eintrag(wert);
        if (!sprache) {
            return std::nullopt;
        }
        tabelle.languages.emplace(code, std::move(*sprache));
    }
    return tabelle;
}

std::string Sprachtabelle::code(const Sprachtabelle* tabelle, std::string_view gewaehlt,
                                std::span<const std::string> bevorzugt) {
    if (gewaehlt != kWieDasSystem) {
        return std::string(gewaehlt);
    }
    const std::string marke = bevorzugt.empty() ? "de" : text::klein(bevorzugt.front());
    if (marke.starts_with("zh-hant") || marke.starts_with("zh-tw")) {
        return "zh-Hant";
    }
    if (marke.starts_with("zh")) {
        return "zh-Hans";
    }
    const std::string_view sprache = ersteZeichen(marke, 2);
    return tabelle != nullptr && tabelle->languages.contains(sprache) ? std::string(sprache) : "en";
}

std::string Sprachtabelle::text(std::string_view code, std::string_view key) const {
    const auto schluessel = std::find(keys.begin(), keys.end(), key);
    auto sprache = languages.find(code);
    if (sprache == languages.end()) {
        sprache = languages.find("en");
    }
    if (schluessel == keys.end() || sprache == languages.end()) {
        return std::string(key);
    }
    const auto& values = sprache->second.values;
    const auto stelle = static_cast<std::size_t>(schluessel - keys.begin());
    return stelle < values.size() ? values[stelle] : std::string(key);
}

std::vector<Sprachtabelle::Sprache> Sprachtabelle::sprachen() const {
    std::vector<Sprache> ergebnis;
    for (const std::string_view code : kMenue) {
        if (const auto stelle = languages.find(code); stelle != languages.end()) {
            ergebnis.push_back({stelle->first, stelle->second.name});
        }
    }
    return ergebnis;
}

}  // namespace spurkiste
