#include "track/XmlZeichen.h"

#include <cstddef>

namespace spurkiste::xmlzeichen {

namespace {

/// How many bytes the character has with which the text begins; 0 when it is not UTF-8 or XML does not allow it.
std::size_t zeichenbytes(std::string_view text) {
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const auto istFolge = [byte](std::size_t i, unsigned von = 0x80, unsigned bis = 0xBF) {
        return byte(i) >= von && byte(i) <= bis;
    };
    const unsigned erstes = byte(0);
    if (erstes < 0x80) {
        return erstes >= 0x20 || erstes == '\t' || erstes == '\n' || erstes == '\r' ? 1 : 0;
    }
    if (erstes < 0xE0) {
        return erstes >= 0xC2 && istFolge(1) ? 2 : 0;
    }
    if (erstes < 0xF0) {
        const bool gut = istFolge(1, erstes == 0xE0 ? 0xA0 : 0x80, erstes == 0xED ? 0x9F : 0xBF) && istFolge(2);
        const bool keinZeichen = erstes == 0xEF && byte(1) == 0xBF && byte(2) > 0xBD;  // U+FFFE and U+FFFF
        return gut && !keinZeichen ? 3 : 0;
    }
    const bool gut = erstes < 0xF5 && istFolge(1, erstes == 0xF0 ? 0x90 : 0x80, erstes == 0xF4 ? 0x8F : 0xBF);
    return gut && istFolge(2) && istFolge(3) ? 4 : 0;
}

/// Goes on character by character from `stelle` to `bis` or, inside a character, behind it. False at the first one
/// that is not allowed.
bool gehe(std::string_view bytes, std::size_t& stelle, std::size_t bis) {
    while (stelle < bis) {
        const std::size_t anzahl = zeichenbytes(bytes.substr(stelle));
        if (anzahl == 0) {
            return false;
        }
        stelle += anzahl;
    }
    return true;
}

}  // namespace

namespace einzeln {

bool alleErlaubt(std::string_view bytes) {
    std::size_t stelle = 0;
    return gehe(bytes, stelle, bytes.size());
}

const char* textende(const char* stelle) {
    while (*stelle != '<' && *stelle != '&' && *stelle != ']' && *stelle != '\r' && *stelle != '\0') {
        ++stelle;
    }
    return stelle;
}

const char* wertende(const char* stelle, char anfuehrung) {
    while (*stelle != anfuehrung && *stelle != '<' && *stelle != '&' && static_cast<unsigned char>(*stelle) >= 0x20) {
        ++stelle;
    }
    return stelle;
}

}  // namespace einzeln

#if defined(__SSE2__)

namespace sse2 {

bool alleErlaubt(std::string_view bytes) {
    using detail::gleich;
    using detail::oder;
    constexpr std::size_t breite = sizeof(__m128i);
    std::size_t stelle = 0;
    while (bytes.size() - stelle >= breite) {
        const __m128i block = detail::lade(bytes.data() + stelle);
        // Signed, so that bytes from 0x80 on are smaller, too.
        const __m128i besonders = _mm_cmplt_epi8(block, _mm_set1_epi8(' '));
        const __m128i leerraum = oder(oder(gleich(block, '\n'), gleich(block, '\t')), gleich(block, '\r'));
        if (_mm_movemask_epi8(_mm_andnot_si128(leerraum, besonders)) == 0) {
            stelle += breite;
        } else if (!gehe(bytes, stelle, stelle + breite)) {
            return false;
        }
    }
    return gehe(bytes, stelle, bytes.size());
}

}  // namespace sse2

#endif

}  // namespace spurkiste::xmlzeichen
