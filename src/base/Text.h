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

/// Full lower-case mapping without a language ("ÄPFEL" gives "äpfel"). Bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string klein(std::string_view text);

/// Canonical composition (Unicode normalisation form C). Text that is not UTF-8 is returned unchanged.
[[nodiscard]] std::string nfc(std::string_view text);

/// The number of columns that a terminal gives the text: 2 for wide East Asian characters and emoji, 0 for combining
/// marks and control characters, else 1.
[[nodiscard]] std::size_t spalten(std::string_view text);

/// The longest start of the text, cut between user-perceived characters, that fits into `breite` columns.
[[nodiscard]] std::string_view anfangBis(std::string_view text, std::size_t breite);

/// The text on one line and safe to show: control characters, line separators and bidirectional controls become a
/// blank, bytes that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string einzeilig(std::string_view text);

/// For an encoding of one byte per character, by any of its registered names ("windows-1252"), the character of each
/// byte, or -1 where a byte has none. Nothing for unknown names and for encodings of several bytes.
[[nodiscard]] std::optional<std::array<std::int32_t, 256>> einByteZeichensatz(const std::string& name);

}  // namespace spurkiste::text
