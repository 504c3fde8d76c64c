#include "base/Text.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace spurkiste::text {

namespace {

constexpr UChar32 kErsatz = 0xFFFD;

/// ICU counts in 32 bits; a longer text (no file name or element is) is cut for the operations that need ICU.
std::int32_t laenge(std::string_view text) {
    return static_cast<std::int32_t>(std::min<std::size_t>(text.size(), 0x7fffffff));
}

// ICU's macro narrows on purpose.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
/// The character at `stelle`, which moves behind it; negative for bytes that are not UTF-8.
UChar32 naechstes(std::string_view text, std::int32_t& stelle) {
    UChar32 zeichen = 0;
    U8_NEXT(text.data(), stelle, laenge(text), zeichen);
    return zeichen;
}
#pragma GCC diagnostic pop

std::size_t breiteVon(UChar32 zeichen) {
    if (zeichen < 0) {
        return 1;  // shown as U+FFFD
    }
    switch (u_charType(zeichen)) {
        case U_CONTROL_CHAR:
        case U_FORMAT_CHAR:
        case U_NON_SPACING_MARK:
        case U_ENCLOSING_MARK:
            return 0;
        default:
            break;
    }
    const auto breite = u_getIntPropertyValue(zeichen, UCHAR_EAST_ASIAN_WIDTH);
    return breite == U_EA_WIDE || breite == U_EA_FULLWIDTH ? 2 : 1;
}

bool stoertDieZeile(UChar32 zeichen) {
    const auto art = u_charType(zeichen);
    return art == U_CONTROL_CHAR || art == U_LINE_SEPARATOR || art == U_PARAGRAPH_SEPARATOR ||
           u_hasBinaryProperty(zeichen, UCHAR_BIDI_CONTROL) != 0;
}

}  // namespace

bool istUtf8(std::string_view text) {
    while (!text.empty()) {
        const std::int32_t ende = laenge(text);
        std::int32_t stelle = 0;
        while (stelle < ende) {
            if (static_cast<signed char>(text[static_cast<std::size_t>(stelle)]) >= 0) {
                ++stelle;
            } else if (naechstes(text, stelle) < 0) {
                return false;
            }
        }
        text.remove_prefix(static_cast<std::size_t>(ende));
    }
    return true;
}

std::string_view trimme(std::string_view text) {
    std::int32_t anfang = 0;
    const std::int32_t ende = laenge(text);
    while (anfang < ende) {
        std::int32_t danach = anfang;
        const UChar32 zeichen = naechstes(text, danach);
        if (zeichen < 0 || u_isUWhiteSpace(zeichen) == 0) {
            break;
        }
        anfang = danach;
    }
    std::int32_t schluss = ende;
    while (schluss > anfang) {
        std::int32_t davor = schluss;
        UChar32 zeichen = 0;
        U8_PREV(text.data(), anfang, davor, zeichen);
        if (zeichen < 0 || u_isUWhiteSpace(zeichen) == 0) {
            break;
        }
        schluss = davor;
    }
    return text.substr(static_cast<std::size_t>(anfang), static_cast<std::size_t>(schluss - anfang));
}

std::string klein(std::string_view text) {
    std::string ergebnis;
    icu::StringByteSink<std::string> senke(&ergebnis, laenge(text));
    UErrorCode fehler = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, icu::StringPiece(text.data(), laenge(text)), senke, nullptr, fehler);
    return ergebnis;
}

std::string nfc(std::string_view text) {
    const auto istAscii = [](char zeichen) { return static_cast<signed char>(zeichen) >= 0; };
    if (std::all_of(text.begin(), text.end(), istAscii) || !istUtf8(text)) {
        return std::string(text);
    }
    UErrorCode fehler = U_ZERO_ERROR;
    const icu::Normalizer2* form = icu::Normalizer2::getNFCInstance(fehler);
    if (U_FAILURE(fehler)) {
        return std::string(text);
    }
    std::string ergebnis;
    icu::StringByteSink<std::string> senke(&ergebnis, laenge(text));
    form->normalizeUTF8(0, icu::StringPiece(text.data(), laenge(text)), senke, nullptr, fehler);
    return U_SUCCESS(fehler) ? ergebnis : std::string(text);
}

std::size_t spalten(std::string_view text) {
    std::size_t summe = 0;
    for (std::int32_t stelle = 0; stelle < laenge(text);) {
        summe += breiteVon(naechstes(text, stelle));
    }
    return summe;
}

std::string_view anfangBis(std::string_view text, std::size_t breite) {
    UErrorCode fehler = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> grenzen(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), fehler));
    UText* sicht = utext_openUTF8(nullptr, text.data(), laenge(text), &fehler);
    if (U_FAILURE(fehler)) {
        return {};
    }
    grenzen->setText(sicht, fehler);
    std::size_t passt = 0;
    for (std::int32_t ende = grenzen->next(); ende != icu::BreakIterator::DONE; ende = grenzen->next()) {
        const auto bis = static_cast<std::size_t>(ende);
        if (spalten(text.substr(0, bis)) > breite) {
            break;
        }
        passt = bis;
    }
    utext_close(sicht);
    return text.substr(0, passt);
}

std::string einzeilig(std::string_view text) {
    std::string ergebnis;
    ergebnis.reserve(text.size());
    icu::StringByteSink<std::string> senke(&ergebnis);
    for (std::int32_t stelle = 0; stelle < laenge(text);) {
        UChar32 zeichen = naechstes(text, stelle);
        if (zeichen < 0) {
            zeichen = kErsatz;
        } else if (stoertDieZeile(zeichen)) {
            zeichen = ' ';
        }
        std::array<char, U8_MAX_LENGTH> bytes{};
        std::int32_t anzahl = 0;
        U8_APPEND_UNSAFE(bytes.data(), anzahl, zeichen);
        ergebnis.append(bytes.data(), static_cast<std::size_t>(anzahl));
    }
    return ergebnis;
}

std::optional<std::array<std::int32_t, 256>> einByteZeichensatz(const std::string& name) {
    UErrorCode fehler = U_ZERO_ERROR;
    const std::unique_ptr<UConverter, decltype(&ucnv_close)> wandler(ucnv_open(name.c_str(), &fehler), &ucnv_close);
    if (U_FAILURE(fehler) || ucnv_getMaxCharSize(wandler.get()) != 1 || ucnv_getMinCharSize(wandler.get()) != 1) {
        return std::nullopt;
    }
    std::array<std::int32_t, 256> tabelle{};
    for (std::size_t byte = 0; byte < tabelle.size(); ++byte) {
        const char quelle = static_cast<char>(byte);
        const char* von = &quelle;
        UErrorCode einzelfehler = U_ZERO_ERROR;
        ucnv_reset(wandler.get());
        const UChar32 zeichen = ucnv_getNextUChar(wandler.get(), &von, von + 1, &einzelfehler);
        tabelle[byte] = U_SUCCESS(einzelfehler) && zeichen != kErsatz ? zeichen : -1;
    }
    return tabelle;
}

}  // namespace spurkiste::text
