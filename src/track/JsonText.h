#pragma once

#include <string>
#include <string_view>

namespace spurkiste {

/// Texts as JSON writes them (RFC 8259). Any thread.
class JsonText {
  public:
    JsonText() = delete;

    /// Appends the text as a JSON string: in quotation marks, with escapes only where they are required. Bytes that
    /// are not UTF-8 are appended as they are.
    static void haengeAn(std::string& ziel, std::string_view text);

    /// The text with U+FFFD for what is not UTF-8 in it, as text::utf16() replaces it.
    [[nodiscard]] static std::string inUtf8(std::string_view roh);
};

}  // namespace spurkiste
