#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "cli/Abschluss.h"
#include "library/Bibliothek.h"
#include "sicht/Ansichtstexte.h"

/// The forms in which records are written out. Each hands its text to the sink in pieces. Main thread.
namespace spurkiste::ausgabe {

using Senke = std::function<void(std::string_view)>;

/// One JSON array with the object of each record, an object a line, in the order given. Names that are not UTF-8 are
/// written with U+FFFD in the place of their odd bytes.
void alsJson(const Bibliothek::Eintraege& eintraege, const Senke& senke);

/// CSV by RFC 4180 with a header line: the fields of a record, coordinates and weather in columns of their own,
/// instants in ISO 8601 (UTC), absent values empty. Texts that are safe are on one line each, and one that a
/// spreadsheet would take for a formula has an apostrophe in front; numbers are none.
void alsCsv(const Bibliothek::Eintraege& eintraege, Textform form, const Senke& senke);

/// A table for people, as wide as `breite` columns allow (absent: as its content is), with the columns of the window
/// and, below them, what the window's status line says.
void alsTabelle(const Bibliothek::Eintraege& eintraege, const Ansichtstexte& texte, std::optional<std::size_t> breite,
                bool farben, const Senke& senke);

}  // namespace spurkiste::ausgabe
