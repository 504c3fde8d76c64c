#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace spurkiste {

/// The texts of all languages as a value, as the language file holds them. Immutable; any thread.
struct Sprachtabelle {
    /// The choice of a language that leaves it to the operating system.
    static constexpr std::string_view kWieDasSystem = "system";

    /// One language of the file.
    struct Eintrag {
        std::string name;                 ///< as shown in the language menu
        std::vector<std::string> values;  ///< parallel to `keys`; may be shorter

        friend bool operator==(const Eintrag&, const Eintrag&) = default;
    };

    /// A language offered to the user.
    struct Sprache {
        std::string id;    ///< language code
        std::string name;  ///< the language's own name

        friend bool operator==(const Sprache&, const Sprache&) = default;
    };

    std::vector<std::string> keys;                          ///< of duplicates the first counts
    std::map<std::string, Eintrag, std::less<>> languages;  ///< by language code

    /// Reads the JSON form: an object with "keys" (strings) and "languages" (code to {"name", "values"}); further
    /// members are ignored, of members with the same name the last counts, a byte order mark is skipped. Nothing when
    /// the text is no JSON anywhere, lacks one of these members or has one of another type.
    [[nodiscard]] static std::optional<Sprachtabelle> ausJson(std::string_view json);

    /// The code of the language to use: the chosen one as it stands unless it is "system"; else from the first of the
    /// preferred languages (BCP 47 tags), "de" without any: zh-Hant* and zh-TW* give "zh-Hant", other zh* "zh-Hans",
    /// whether the table has them or not; every other tag its first two characters in lower case when the table has
    /// exactly that language, else "en". `tabelle` may be null.
    [[nodiscard]] static std::string code(const Sprachtabelle* tabelle, std::string_view gewaehlt,
                                          std::span<const std::string> bevorzugt);

    /// The text of a key in the language `code`. A language that exists but has no text for the key gives the key; a
    /// language that does not exist gives the English text, else the key. Never fails.
    [[nodiscard]] std::string text(std::string_view code, std::string_view key) const;

    /// The languages of the fixed menu list that the table has, in menu order. Others are never offered.
    [[nodiscard]] std::vector<Sprache> sprachen() const;
};

}  // namespace spurkiste
