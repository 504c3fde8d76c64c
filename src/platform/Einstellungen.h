#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace spurkiste {

/// The user's settings: texts by key, kept between runs. Bound to the main thread.
class Einstellungen {
  public:
    Einstellungen() = default;
    Einstellungen(const Einstellungen&) = delete;
    Einstellungen& operator=(const Einstellungen&) = delete;
    virtual ~Einstellungen() = default;

    /// The text stored under the key; nothing when there is none or the store cannot be read.
    [[nodiscard]] virtual std::optional<std::string> lies(std::string_view schluessel) const = 0;

    /// Stores the text under the key. A store that cannot be written keeps the text for this run only.
    virtual void schreibe(std::string_view schluessel, std::string_view wert) = 0;
};

/// Keys of the settings that the core knows.
namespace einstellung {
inline constexpr std::string_view kBibliothekOrdner = "bibliothekOrdner";  ///< absolute path of the library folder
inline constexpr std::string_view kAppLanguage = "appLanguage";            ///< a language code, or "system"
}  // namespace einstellung

}  // namespace spurkiste
