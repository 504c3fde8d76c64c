#include "track/XmlZeichen.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace spurkiste::xmlzeichen {

namespace {

/// The bytes that characters beyond ASCII begin with, and what may follow (The Unicode Standard, table 3-7).
struct Form {
    unsigned char von;  // the first byte
    unsigned char bis;
    unsigned char zweitesVon;
    unsigned char zweitesBis;
    std::size_t bytes;
};
constexpr std::array<Form, 8> kFormen = {{
    {0xC2, 0xDF, 0x80, 0xBF, 2},
    {0xE0, 0xE0, 0xA0, 0xBF, 3},
    {0xE1, 0xEC, 0x80, 0xBF, 3},
    {0xED, 0xED, 0x80, 0x9F, 3},
    {0xEE, 0xEF, 0x80, 0xBF, 3},
    {0xF0, 0xF0, 0x90, 0xBF, 4},
    {0xF1, 0xF3, 0x80, 0xBF, 4},
    {0xF4, 0xF4, 0x80, 0x8F, 4},
}};

bool liegtIn(unsigned char byte, unsigned char von, unsigned char bis) {
    return byte >= von && byte <= bis;
}

/// How many bytes the character has with which the text begins; 0 when it is not UTF-8 or XML does not allow it.
std::size_t zeichenbytes(std::string_view text) {
    const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (byte(0) < 0x80) {
        return byte(0) >= 0x20 || byte(0) == '\t' || byte(0) == '\n' || byte(0) == '\r' ? 1 : 0;
    }
    const auto* const form = std::find_if(kFormen.begin(), kFormen.end(),
                                          [&](const Form& eine) { return liegtIn(byte(0), eine.von, eine.bis); });
    if (form == kFormen.end() || text.size() < form->bytes || !liegtIn(byte(1), form->zweitesVon, form->zweitesBis)) {
        return 0;
    }
    for (std::size_t i = 2; i < form->bytes; ++i) {
        if (!liegtIn(byte(i), 0x80, 0xBF)) {
            return 0;
        }
    }
    constexpr std::string_view vorletztes = "\xEF\xBF\xBE";  // U+FFFE and U+FFFF are no characters
    return form->bytes == 3 && text.substr(0, 3) >= vorletztes ? 0 : form->bytes;
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
