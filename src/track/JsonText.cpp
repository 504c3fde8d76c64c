#include "track/JsonText.h"

#include <algorithm>
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
    // Broken texts are rare and short, so that finding the next character by trying is good enough.
    constexpr std::size_t laengstes = 4;
    std::string ergebnis;
    while (!roh.empty()) {
        const std::size_t grenze = std::min(laengstes, roh.size());
        std::size_t laenge = 1;
        while (laenge <= grenze && !text::istUtf8(roh.substr(0, laenge))) {
            ++laenge;
        }
        const bool gefunden = laenge <= grenze;
        ergebnis.append(gefunden ? roh.substr(0, laenge) : "\xEF\xBF\xBD");
        roh.remove_prefix(gefunden ? laenge : 1);
    }
    return ergebnis;
}

}  // namespace spurkiste
