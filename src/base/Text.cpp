#include "base/Text.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/measunit.h>
#include <unicode/normalizer2.h>
#include <unicode/numberformatter.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>
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
    const char* bytes = text.data();
    U8_NEXT(bytes, stelle, laenge(text), zeichen);
    return zeichen;
}
#pragma GCC diagnostic pop

bool istAscii(char zeichen) {
    return static_cast<signed char>(zeichen) >= 0;
}

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
    // The vowels and finals of a decomposed Hangul syllable are drawn into the cell of its first letter.
    const auto silbe = u_getIntPropertyValue(zeichen, UCHAR_HANGUL_SYLLABLE_TYPE);
    if (silbe == U_HST_VOWEL_JAMO || silbe == U_HST_TRAILING_JAMO) {
        return 0;
    }
    const auto breite = u_getIntPropertyValue(zeichen, UCHAR_EAST_ASIAN_WIDTH);
    return breite == U_EA_WIDE || breite == U_EA_FULLWIDTH ? 2 : 1;
}

bool stoertDieZeile(UChar32 zeichen) {
    if (zeichen < 0x300) {
        return zeichen < 0x20 || (zeichen >= 0x7f && zeichen < 0xa0);
    }
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
            if (istAscii(text[static_cast<std::size_t>(stelle)])) {
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
    const char* bytes = text.data();
    std::int32_t schluss = ende;
    while (schluss > anfang) {
        std::int32_t davor = schluss;
        UChar32 zeichen = 0;
        U8_PREV(bytes, anfang, davor, zeichen);
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
    // All characters below U+0300 stay as they are; their bytes are below 0xCC.
    const auto istEinfach = [](char zeichen) { return static_cast<unsigned char>(zeichen) < 0xCC; };
    if (std::all_of(text.begin(), text.end(), istEinfach) || !istUtf8(text)) {
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
    std::size_t frei = breite;
    for (std::int32_t ende = grenzen->next(); ende != icu::BreakIterator::DONE; ende = grenzen->next()) {
        const auto bis = static_cast<std::size_t>(ende);
        const std::size_t braucht = spalten(text.substr(passt, bis - passt));
        if (braucht > frei) {
            break;
        }
        frei -= braucht;
        passt = bis;
    }
    utext_close(sicht);
    return text.substr(0, passt);
}

std::string einzeilig(std::string_view text) {
    std::string ergebnis;
    ergebnis.reserve(text.size());
    for (std::int32_t stelle = 0; stelle < laenge(text);) {
        UChar32 zeichen = naechstes(text, stelle);
        if (zeichen < 0) {
            zeichen = kErsatz;
        } else if (stoertDieZeile(zeichen)) {
            zeichen = ' ';
        }
        std::array<char, U8_MAX_LENGTH> bytes{};
        std::size_t anzahl = 0;
        U8_APPEND_UNSAFE(bytes, anzahl, zeichen);
        ergebnis.append(bytes.data(), anzahl);
    }
    return ergebnis;
}

std::string jsonGezeigt(std::string_view json) {
    constexpr std::string_view ziffern = "0123456789abcdef";
    std::string ergebnis;
    std::size_t ab = 0;
    for (std::int32_t stelle = 0; stelle < laenge(json);) {
        const auto von = static_cast<std::size_t>(stelle);
        if (istAscii(json[von]) && json[von] != '\x7f') {
            ++stelle;  // below U+0020 only what stands between values
            continue;
        }
        const UChar32 zeichen = naechstes(json, stelle);
        if (zeichen < 0 || !stoertDieZeile(zeichen)) {
            continue;
        }
        ergebnis.append(json.substr(ab, von - ab)).append("\\u");  // none of them is beyond U+FFFF
        for (const unsigned schiebe : {12U, 8U, 4U, 0U}) {
            ergebnis += ziffern[(static_cast<std::uint32_t>(zeichen) >> schiebe) & 15U];
        }
        ab = static_cast<std::size_t>(stelle);
    }
    return ergebnis.append(json.substr(ab));
}

std::optional<std::array<std::int32_t, 256>> einByteZeichensatz(const std::string& name) {
    if (name.empty()) {
        return std::nullopt;  // ICU would open the encoding of the process
    }
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

std::u16string utf16(std::string_view text) {
    std::u16string ergebnis(static_cast<std::size_t>(laenge(text)), u'\0');
    std::size_t ascii = 0;
    for (; ascii < ergebnis.size() && istAscii(text[ascii]); ++ascii) {
        ergebnis[ascii] = static_cast<char16_t>(text[ascii]);
    }
    if (ascii < ergebnis.size()) {
        std::int32_t zeichen = 0;
        UErrorCode fehler = U_ZERO_ERROR;
        u_strFromUTF8WithSub(ergebnis.data(), laenge(text), &zeichen, text.data(), laenge(text), kErsatz, nullptr,
                             &fehler);
        ergebnis.resize(static_cast<std::size_t>(zeichen));
    }
    return ergebnis;
}

std::string utf8(std::u16string_view text) {
    std::string ergebnis;
    icu::UnicodeString(UBool{0}, text.data(), static_cast<std::int32_t>(text.size())).toUTF8String(ergebnis);
    return ergebnis;
}

std::string gross(std::string_view text, std::string_view sprache) {
    std::string ergebnis;
    icu::StringByteSink<std::string> senke(&ergebnis, laenge(text));
    UErrorCode fehler = U_ZERO_ERROR;
    icu::CaseMap::utf8ToUpper(std::string(sprache).c_str(), 0, icu::StringPiece(text.data(), laenge(text)), senke,
                              nullptr, fehler);
    return ergebnis;
}

std::string grossAmAnfang(std::string_view text, std::string_view sprache) {
    constexpr auto wie = U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_LOWERCASE | U_TITLECASE_NO_BREAK_ADJUSTMENT;
    std::string ergebnis;
    icu::StringByteSink<std::string> senke(&ergebnis, laenge(text));
    UErrorCode fehler = U_ZERO_ERROR;
    icu::CaseMap::utf8ToTitle(std::string(sprache).c_str(), wie, nullptr, icu::StringPiece(text.data(), laenge(text)),
                              senke, nullptr, fehler);
    return ergebnis;
}

std::string bytes(std::int64_t anzahl, std::string_view sprache) {
    UErrorCode fehler = U_ZERO_ERROR;
    std::string ergebnis;
    icu::number::NumberFormatter::withLocale(icu::Locale(std::string(sprache).c_str()))
        .unit(icu::MeasureUnit::getByte())
        .unitWidth(UNUM_UNIT_WIDTH_FULL_NAME)
        .formatInt(anzahl, fehler)
        .toString(fehler)
        .toUTF8String(ergebnis);
    return ergebnis;
}

std::string falte(std::string_view text, std::string_view sprache) {
    const auto kennung = sprache.substr(0, sprache.find('-'));
    const bool tuerkisch = kennung == "tr" || kennung == "az";
    if (!tuerkisch && std::all_of(text.begin(), text.end(), istAscii)) {
        std::string ergebnis(text);
        for (char& zeichen : ergebnis) {
            if (zeichen >= 'A' && zeichen <= 'Z') {
                zeichen = static_cast<char>(zeichen - 'A' + 'a');
            }
        }
        return ergebnis;
    }
    // Composed before, too, for Turkish folds the two forms of a dotted I differently.
    const std::string komponiert = istUtf8(text) ? nfc(text) : nfc(utf8(utf16(text)));
    std::string gefaltet;
    icu::StringByteSink<std::string> senke(&gefaltet, laenge(komponiert));
    UErrorCode fehler = U_ZERO_ERROR;
    icu::CaseMap::utf8Fold(tuerkisch ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT,
                           icu::StringPiece(komponiert.data(), laenge(komponiert)), senke, nullptr, fehler);
    return nfc(gefaltet);
}

bool enthaelt(std::string_view text, std::string_view gesucht) {
    for (auto fund = text.find(gesucht); fund != std::string_view::npos; fund = text.find(gesucht, fund + 1)) {
        const auto rest = text.substr(fund + gesucht.size());
        std::int32_t stelle = 0;
        if (gesucht.empty() || rest.empty() || istAscii(rest.front())) {
            return true;
        }
        const UChar32 folgend = naechstes(rest, stelle);
        if (folgend < 0 || u_getCombiningClass(folgend) == 0) {
            return true;
        }
    }
    return false;
}

}  // namespace spurkiste::text
