#include "i18n/AppSprache.h"

#include <optional>

#include "base/Dateien.h"
#include "platform/Ressourcen.h"

namespace spurkiste {

namespace {

/// Who decides about the language.
struct Quellen {
    const Einstellungen* einstellungen = nullptr;
    const Systemumgebung* umgebung = nullptr;
};

Quellen& quellen() {
    static Quellen eine;
    return eine;
}

std::optional<Sprachtabelle> lade() {
    const auto pfad = ressourcen::finde("translations", "json");
    const auto inhalt = pfad ? dateien::liesGanz(*pfad) : std::nullopt;
    return inhalt ? Sprachtabelle::ausJson(*inhalt) : std::nullopt;
}

/// The language file, read by whoever asks first and kept for the rest of the run; null without a usable one.
const Sprachtabelle* datei() {
    static const std::optional<Sprachtabelle> eine = lade();
    return eine ? &*eine : nullptr;
}

}  // namespace

void AppSprache::richteEin(const Einstellungen* einstellungen, const Systemumgebung* umgebung) {
    quellen() = {einstellungen, umgebung};
}

std::string AppSprache::text(std::string_view key) {
    const Sprachtabelle* tabelle = datei();
    return tabelle != nullptr ? tabelle->text(code(), key) : std::string(key);
}

std::string AppSprache::code() {
    const auto [einstellungen, umgebung] = quellen();
    auto gewaehlt = einstellungen != nullptr ? einstellungen->lies(einstellung::kAppLanguage) : std::nullopt;
    if (gewaehlt && gewaehlt->empty()) {
        gewaehlt.reset();  // as every empty setting
    }
    const auto bevorzugt = umgebung != nullptr ? umgebung->bevorzugteSprachen() : std::vector<std::string>{};
    return Sprachtabelle::code(datei(), gewaehlt.value_or(std::string(Sprachtabelle::kWieDasSystem)), bevorzugt);
}

std::vector<Sprachtabelle::Sprache> AppSprache::sprachen() {
    const Sprachtabelle* tabelle = datei();
    return tabelle != nullptr ? tabelle->sprachen() : std::vector<Sprachtabelle::Sprache>{};
}

}  // namespace spurkiste
