#pragma once

#include <string>
#include <string_view>

#include "i18n/AppSprache.h"

namespace spurkiste {

/// Words on a control: those of the current language for a key, or the same ones in every language.
struct Beschriftung {
    enum class Art { schluessel, woertlich };

    Art art;
    std::string_view text;

    /// The words in the current language. Main thread, as it asks AppSprache.
    [[nodiscard]] std::string aktuell() const {
        return art == Art::schluessel ? AppSprache::text(text) : std::string(text);
    }
};

constexpr Beschriftung schluessel(std::string_view text) {
    return {Beschriftung::Art::schluessel, text};
}
constexpr Beschriftung woertlich(std::string_view text) {
    return {Beschriftung::Art::woertlich, text};
}

}  // namespace spurkiste
