#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "sicht/Pfadmenge.h"
#include "sicht/Spalten.h"
#include "track/GpxMetadaten.h"
#include "track/GpxSportart.h"

namespace spurkiste {

/// A record as a row of the table: everything that its cells show, made once, so that painting only looks it up.
/// Texts are in UTF-16, as the painter takes them; they stand on one line and have at most kLaengster units.
/// Immutable; any thread.
class Zeile {
  public:
    /// No cell is wide enough for more.
    static constexpr std::size_t kLaengster = 1000;

    /// `kennung` is a number that rows of the same file share over time and rows of other files never have.
    /// `geschrieben` is the sport that the file names.
    Zeile(Eintrag eintrag, std::uint32_t kennung, std::optional<GpxSportart> geschrieben, std::string_view sportText);

    [[nodiscard]] const Eintrag& eintrag() const { return eintrag_; }
    [[nodiscard]] std::uint32_t kennung() const { return kennung_; }
    /// The record's path, for sets of paths. Holds the record, but does not look into it.
    [[nodiscard]] Pfadmenge::Glied pfad() const { return {{eintrag_, &eintrag_->pfad}, pfadHash_}; }

    /// The text of a cell; without the icons of name and sport. Lives as long as the row.
    [[nodiscard]] std::u16string_view text(Spalte spalte) const;
    /// Its colour; that of the sport where the file names one, and quieter where it is a suggestion or none.
    [[nodiscard]] Schriftfarbe farbe(Spalte spalte) const { return angaben(spalte).farbe(*eintrag_); }
    /// The tooltip of a cell; empty where there is none.
    [[nodiscard]] std::u16string tooltip(Spalte spalte) const { return angaben(spalte).tooltip(*eintrag_); }
    /// What a screen reader says for a cell.
    [[nodiscard]] std::u16string vorleseText(Spalte spalte) const;

    /// The icon before the name: of the sport that the file names, else of a route.
    [[nodiscard]] std::string_view symbol() const;
    /// The sport that colours name and sport: the file's own, else the suggestion.
    [[nodiscard]] const std::optional<GpxSportart>& sport() const { return sport_; }
    /// Whether the file names a sport, known or not; if not, the sport cell carries the sign of a suggestion.
    [[nodiscard]] bool sportAusDatei() const { return eintrag_->nenntSport(); }

  private:
    Eintrag eintrag_;
    std::size_t pfadHash_;
    std::uint32_t kennung_;
    std::optional<GpxSportart> geschrieben_;
    std::optional<GpxSportart> sport_;
    std::u16string texte_;  // of all columns, one after the other: one allocation a row
    std::array<std::uint16_t, kSpalten.size()> enden_{};
};

}  // namespace spurkiste
