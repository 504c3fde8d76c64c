#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/Pflicht.h"
#include "sicht/Beschriftung.h"
#include "sicht/Ordnung.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// The columns of the table; they are listed with their rows.
enum class Spalte : std::uint8_t;

/// Where a column's texts stand, and its title with them.
enum class Seite : std::uint8_t { links, mitte, rechts };

/// The colour of a cell's text.
enum class Schriftfarbe : std::uint8_t { tinte, tinteLeise, gruen };

/// What a cell says: a text of its own, one of the record, or one that many cells share.
using Zellentext = std::variant<std::string, std::string_view, std::u16string_view>;

/// What a cell keeps free on both sides, in logical pixels.
struct Spaltenrand {
    Pflicht<int> links;
    Pflicht<int> rechts;
};

/// How wide a column is in the window, in logical pixels.
struct Spaltenbreite {
    Pflicht<int> mindestens;  ///< no narrower, neither by the user nor for want of room
    Pflicht<int> anfangs;
    Pflicht<int> ideal;    ///< when there is room
    Pflicht<int> dehnung;  ///< its share of what is left beyond that; what stretches also shrinks first
};

/// How a column stands in a terminal.
struct Terminalspalte {
    /// Characters to which it may shrink, shortened with an ellipsis; absent when it is as wide as its texts.
    Pflicht<std::optional<std::size_t>> mindestens;
    /// When even that does not fit, columns leave in ascending order of rank; rank 0 stays.
    Pflicht<int> rang;
};

/// All that there is to say of one column.
struct Spaltenangaben {
    Pflicht<Spalte> spalte;
    Pflicht<Beschriftung> titel;
    /// The field of the record that it shows, as JSON and CSV call it: what the window shows can be exported.
    Pflicht<std::string_view> feld;
    Pflicht<Ordnung> ordnung;

    /// What a cell says, without icons; `sport` is the text to show for the sport.
    Pflicht<Zellentext (*)(const GpxMetadaten& eintrag, std::string_view sport)> text;
    Pflicht<Schriftfarbe (*)(const GpxMetadaten& eintrag)> farbe;
    /// Empty where there is none.
    Pflicht<std::u16string (*)(const GpxMetadaten& eintrag)> tooltip;
    /// What a screen reader says, given the text and the tooltip.
    Pflicht<std::u16string (*)(std::u16string_view text, std::u16string_view tooltip)> vorleseText;

    Pflicht<Seite> seite;
    Pflicht<Spaltenrand> rand;
    Pflicht<Spaltenbreite> breite;
    Pflicht<Terminalspalte> terminal;
};

/// Pieces that rows of columns are made of.
namespace zelle {

inline constexpr auto kTinte = [](const GpxMetadaten& /*eintrag*/) { return Schriftfarbe::tinte; };
inline constexpr auto kOhneHilfe = [](const GpxMetadaten& /*eintrag*/) { return std::u16string(); };
inline constexpr auto kLiesText = [](std::u16string_view text, std::u16string_view /*tooltip*/) {
    return std::u16string(text);
};

constexpr Schriftfarbe tinteWenn(bool kraeftig) {
    return kraeftig ? Schriftfarbe::tinte : Schriftfarbe::tinteLeise;
}

/// Texts of figures; a dash where there is nothing to say of them: not finite, or, but for a length, not above zero.
[[nodiscard]] Zellentext strecke(double meter);
[[nodiscard]] Zellentext dauer(double sekunden);
[[nodiscard]] Zellentext anstieg(double meter);
/// The name of a place, else its coordinate, else a dash.
[[nodiscard]] Zellentext ort(const std::optional<std::string>& name, const std::optional<Koordinate>& ort);
/// Its coordinate, else a dash.
[[nodiscard]] std::u16string ortshilfe(const std::optional<Koordinate>& ort);

}  // namespace zelle

}  // namespace spurkiste
