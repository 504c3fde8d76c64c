#pragma once

#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Looks at the characters of XML documents in UTF-8, sixteen bytes at a time where the processor can, else one by one.
/// Pure functions; any thread.
namespace spurkiste::xmlzeichen {

/// One byte after the other, on every machine.
namespace einzeln {

/// Whether the bytes are UTF-8 (RFC 3629) and every character is one that XML 1.0 allows (production 2, "Char").
[[nodiscard]] bool alleErlaubt(std::string_view bytes);

/// The first byte from `stelle` on at which text is no longer only itself: one of '<', '&', ']', a carriage return, or
/// the null that must stand behind the document.
[[nodiscard]] const char* textende(const char* stelle);

/// The first byte from `stelle` on at which an attribute's value is no longer only itself: the quotation mark, '<',
/// '&', a control character, or the null that must stand behind the document.
[[nodiscard]] const char* wertende(const char* stelle, char anfuehrung);

}  // namespace einzeln

#if defined(__SSE2__)

/// The same for processors with SSE2, which every 64-bit PC has. textende() and wertende() may look at up to fifteen
/// bytes behind the one that they return.
namespace sse2 {

[[nodiscard]] bool alleErlaubt(std::string_view bytes);

namespace detail {

[[nodiscard]] inline __m128i lade(const char* stelle) {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the instruction's own way to name its operand
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(stelle));
}

[[nodiscard]] inline __m128i gleich(__m128i block, char zeichen) {
    return _mm_cmpeq_epi8(block, _mm_set1_epi8(zeichen));
}

[[nodiscard]] inline __m128i oder(__m128i a, __m128i b) {
    return _mm_or_si128(a, b);
}

/// The first position that `treffer` marks in a block, looking at block after block.
template <typename Treffer>
[[nodiscard]] const char* suche(const char* stelle, Treffer treffer) {
    for (;; stelle += sizeof(__m128i)) {
        if (const int maske = _mm_movemask_epi8(treffer(lade(stelle))); maske != 0) {
            return stelle + __builtin_ctz(static_cast<unsigned>(maske));
        }
    }
}

}  // namespace detail

[[nodiscard]] inline const char* textende(const char* stelle) {
    return detail::suche(stelle, [](__m128i block) {
        using detail::gleich;
        using detail::oder;
        const __m128i markierung = oder(gleich(block, '<'), gleich(block, '&'));
        return oder(oder(markierung, gleich(block, ']')), oder(gleich(block, '\r'), gleich(block, '\0')));
    });
}

[[nodiscard]] inline const char* wertende(const char* stelle, char anfuehrung) {
    return detail::suche(stelle, [anfuehrung](__m128i block) {
        using detail::gleich;
        using detail::oder;
        // Signed, so that bytes from 0x80 on are below zero.
        const __m128i ascii = _mm_cmpgt_epi8(block, _mm_set1_epi8(-1));
        const __m128i steuerzeichen = _mm_and_si128(ascii, _mm_cmplt_epi8(block, _mm_set1_epi8(' ')));
        return oder(oder(gleich(block, anfuehrung), steuerzeichen), oder(gleich(block, '<'), gleich(block, '&')));
    });
}

}  // namespace sse2

namespace hier = sse2;

#else

namespace hier = einzeln;

#endif

// What this machine does best.
using hier::alleErlaubt;
using hier::textende;
using hier::wertende;

}  // namespace spurkiste::xmlzeichen
