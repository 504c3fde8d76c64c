#include "track/JsonText.h"

#include <cstddef>

#include "base/Text.h"

namespace spurkiste {

void JsonText::haengeAn(std::string& ziel, std::string_view text) {
    constexpr std::string_view ziffern = "0123456789abcdef";
    ziel += '"';
    std::size_t ab = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto zeichen = static_cast<unsigned char>(text[i]);
        if (zeichen >= 0x20 && zeichen != '"' && zeichen != '\\') {
            continue;
        }
        ziel.append(text.substr(ab, i - ab));
        ab = i + 1;
        if (zeichen < 0x20) {
            ziel.append("\\u00").append(1, ziffern[zeichen >> 4]).append(1, ziffern[zeichen & 15]);
        } else {
            ziel.append(1, '\\').append(1, text[i]);
        }
    }
    ziel.append(text.substr(ab)).append(1, '"');
}

std::string JsonText::inUtf8(std::string_view roh) {
    return text::utf8(text::utf16(roh));
}

}  // namespace spurkiste
