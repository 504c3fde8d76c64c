#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "i18n/Sprachtabelle.h"
#include "platform/Einstellungen.h"
#include "platform/Systemumgebung.h"

namespace spurkiste {

/// The texts of the interface in the current language. Static; the language file is read once, at the first use,
/// safely from any thread. Everything else: main thread.
class AppSprache {
  public:
    AppSprache() = delete;

    /// Says whose setting and whose system languages decide; both must outlive the last use. Null for both (the state
    /// at start) means no setting and no preferred language.
    static void richteEin(const Einstellungen* einstellungen, const Systemumgebung* umgebung);

    /// The text of the key in the current language, or the key itself when there is none.
    [[nodiscard]] static std::string text(std::string_view key);

    /// The code of the current language, asked anew each time.
    [[nodiscard]] static std::string code();

    /// The languages to offer, in menu order; empty without a language file.
    [[nodiscard]] static std::vector<Sprachtabelle::Sprache> sprachen();
};

}  // namespace spurkiste
