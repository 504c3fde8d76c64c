#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Text in UTF-8, by the rules of Unicode. All functions accept any bytes; what a function makes of bytes that are
/// not UTF-8 is said at each. Any thread.
namespace spurkiste::text {

/// Whether the bytes are well-formed UTF-8.
[[nodiscard]] bool istUtf8(std::string_view text);

/// The text without white space and line breaks at both ends (Unicode property White_Space). A part of the argument.
/// Bytes that are not UTF-8 are no white space.
[[nodiscard]] std::string_view trimme(std::string_view text);

/// Full lower-case mapping without a language ("ÄPFEL" gives "äpfel"). Bytes that are not UTF-8 stay as they are.
[[nodiscard]] std::string klein(std::string_view text);

/// Canonical composition (Unicode normalisation form C). Text that is not UTF-8 is returned unchanged.
[[nodiscard]] std::string nfc(std::string_view text);

/// The number of columns that a terminal gives the text: 2 for wide East Asian characters and emoji, 0 for combining
/// marks, Hangul vowels and finals, control and format characters, else 1.
[[nodiscard]] std::size_t spalten(std::string_view text);

/// The longest start of the text, cut between user-perceived characters, that fits into `breite` columns.
[[nodiscard]] std::string_view anfangBis(std::string_view text, std::size_t breite);

/// The text on one line and safe to show: control characters, line separators and bidirectional controls become a
/// blank, bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string einzeilig(std::string_view text);

/// JSON text that is safe to show and has the same value: what einzeilig() would blank in its strings is a \u escape.
[[nodiscard]] std::string jsonGezeigt(std::string_view json);

/// For an encoding of one byte per character, by any of its registered names ("windows-1252"), the character of each
/// byte, or -1 where a byte has none. Nothing for unknown names and for encodings of several bytes.
[[nodiscard]] std::optional<std::array<std::int32_t, 256>> einByteZeichensatz(const std::string& name);

/// The text in UTF-16. Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::u16string utf16(std::string_view text);

/// The text in UTF-8. Halves of surrogate pairs that stand alone become U+FFFD.
[[nodiscard]] std::string utf8(std::u16string_view text);

/// Full upper-case mapping by the rules of a language (BCP 47; unknown ones as none): "straße" gives "STRASSE", and in
/// Turkish "i" gives "İ". Bytes that are not UTF-8 stay as they are.
[[nodiscard]] std::string gross(std::string_view text, std::string_view sprache);

/// The text with its first character in title case by the rules of a language (BCP 47; unknown ones as none): "ßa"
/// gives "Ssa". Bytes that are not UTF-8 stay as they are.
[[nodiscard]] std::string grossAmAnfang(std::string_view text, std::string_view sprache);

/// A number of bytes in words of a language (BCP 47; unknown ones as none): "1 Byte", "2 bytes".
[[nodiscard]] std::string bytes(std::int64_t anzahl, std::string_view sprache);

/// The text as a search compares it: full case folding by the rules of a language (BCP 47; Turkish and Azerbaijani
/// keep dotted and dotless i apart), in canonical composition, so that it does not matter how an umlaut was typed.
/// Diacritics stay. Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string falte(std::string_view text, std::string_view sprache);

/// Whether `gesucht` occurs in `text`, both as falte() makes them; an empty text occurs in every one. It does not occur
/// where a combining mark follows: a letter with a mark is another letter, whether or not Unicode has it composed.
[[nodiscard]] bool enthaelt(std::string_view text, std::string_view gesucht);

}  // namespace spurkiste::text
