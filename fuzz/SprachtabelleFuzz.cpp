// Any bytes as a language file; what is accepted must answer every question without breaking the rules of the lookup.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Verlange.h"
#include "base/Text.h"
#include "i18n/Sprachtabelle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    using spurkiste::Sprachtabelle;
    using spurkiste::verlange;
    const std::string_view json(reinterpret_cast<const char*>(daten), groesse);
    const std::vector<std::string> marken{std::string(json.substr(0, 12))};
    verlange(!Sprachtabelle::code(nullptr, "system", marken).empty());
    const auto tabelle = Sprachtabelle::ausJson(json);
    if (!tabelle) {
        return 0;
    }
    // Without English, and in a language that the file does not have, a key stands for itself.
    const std::string_view unbekannt = "no language";
    const bool schweigt = !tabelle->languages.contains("en") && !tabelle->languages.contains(unbekannt);
    for (const std::string& key : tabelle->keys) {
        verlange(spurkiste::text::istUtf8(key));
        verlange(!schweigt || tabelle->text(unbekannt, key) == key);
        for (const auto& [code, sprache] : tabelle->languages) {
            const std::string text = tabelle->text(code, key);
            const auto& values = sprache.values;
            verlange(text == key || std::find(values.begin(), values.end(), text) != values.end());
        }
    }
    for (const auto& [id, name] : tabelle->sprachen()) {
        verlange(tabelle->languages.at(id).name == name);
    }
    for (const auto& [code, sprache] : tabelle->languages) {
        const std::string gefunden = Sprachtabelle::code(&*tabelle, "system", std::vector<std::string>{code});
        verlange(gefunden == "en" || gefunden.starts_with("zh-") || tabelle->languages.contains(gefunden));
    }
    return 0;
}
