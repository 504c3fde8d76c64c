#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/Pflicht.h"
#include "sicht/Beschriftung.h"
#include "sicht/Formate.h"
#include "track/GpxMetadaten.h"

namespace spurkiste {

/// The filters, in the order of the filter bar.
enum class FilterFeld : std::uint8_t { start, ziel, sport, ghost, art, laenge };

/// All that there is to say of one filter. It gives each record a text or none, and lets through those that have the
/// chosen one.
struct Filterangaben {
    Pflicht<FilterFeld> feld;
    Pflicht<std::string_view> name;    ///< for a screen reader
    Pflicht<std::string_view> symbol;  ///< its icon
    Pflicht<Beschriftung> alle;        ///< the choice that lets everything through
    /// The text of a record; `sport` is the one to show for its sport.
    Pflicht<std::optional<std::string_view> (*)(const GpxMetadaten& eintrag, std::string_view sport)> wert;
    /// The texts that there are, in the order in which they are offered; empty where the records decide.
    Pflicht<std::span<const std::string_view>> faelle;
    Pflicht<std::string_view> nieAngeboten;  ///< a text that is no choice; empty: none
};

/// The fixed choices; they read the same in every language.
namespace filterfall {
inline constexpr std::array<std::string_view, 2> kGhost{"Ghost-tauglich", "ohne Zeitstempel"};
inline constexpr std::array<std::string_view, 2> kArt{"Rundkurs", "Strecke"};
inline constexpr std::array<std::string_view, 3> kLaenge{"unter 5 km", "5–20 km", "über 20 km"};
}  // namespace filterfall

/// One row for each filter; another filter is another row here. State, options and filter bar follow.
inline constexpr std::array kFilter{
    Filterangaben{
        .feld = FilterFeld::start,
        .name = "Start",
        .symbol = "location.circle",
        .alle = woertlich("Start: alle"),
        .wert = [](const GpxMetadaten& e, std::string_view) { return std::optional<std::string_view>(e.startOrt); },
        .faelle = std::span<const std::string_view>(),
        .nieAngeboten = "",
    },
    Filterangaben{
        .feld = FilterFeld::ziel,
        .name = "Ziel",
        .symbol = "flag.checkered",
        .alle = woertlich("Ziel: alle"),
        .wert = [](const GpxMetadaten& e, std::string_view) { return std::optional<std::string_view>(e.zielOrt); },
        .faelle = std::span<const std::string_view>(),
        .nieAngeboten = "",
    },
    Filterangaben{
        .feld = FilterFeld::sport,
        .name = "Sport",
        .symbol = "figure.run",
        .alle = schluessel("sportAll"),
        .wert = [](const GpxMetadaten&, std::string_view sport) { return std::optional(sport); },
        .faelle = std::span<const std::string_view>(),
        .nieAngeboten = kStrich,
    },
    Filterangaben{
        .feld = FilterFeld::ghost,
        .name = "Ghost",
        .symbol = "clock.arrow.circlepath",
        .alle = woertlich("Ghost: alle"),
        .wert = [](const GpxMetadaten& e,
                   std::string_view) { return std::optional(filterfall::kGhost[e.hatZeitstempel ? 0 : 1]); },
        .faelle = filterfall::kGhost,
        .nieAngeboten = "",
    },
    Filterangaben{
        .feld = FilterFeld::art,
        .name = "Art",
        .symbol = "point.topleft.down.curvedto.point.bottomright.up",
        .alle = woertlich("Art: alle"),
        .wert = [](const GpxMetadaten& e,
                   std::string_view) { return std::optional(filterfall::kArt[e.rundkurs ? 0 : 1]); },
        .faelle = filterfall::kArt,
        .nieAngeboten = "",
    },
    Filterangaben{
        .feld = FilterFeld::laenge,
        .name = "Länge",
        .symbol = "ruler",
        .alle = woertlich("Länge: alle"),
        .wert = [](const GpxMetadaten& e, std::string_view) -> std::optional<std::string_view> {
            if (e.streckeMeter < 5000.0) {
                return filterfall::kLaenge[0];
            }
            if (e.streckeMeter > 20000.0) {
                return filterfall::kLaenge[2];
            }
            // Both bounds belong to the middle; what is no number has no length to filter by.
            return e.streckeMeter >= 5000.0 ? std::optional(filterfall::kLaenge[1]) : std::nullopt;
        },
        .faelle = filterfall::kLaenge,
        .nieAngeboten = "",
    },
};

static_assert(
    [] {
        std::size_t stelle = 0;
        for (const Filterangaben& filter : kFilter) {
            if (static_cast<std::size_t>(*filter.feld) != stelle++) {
                return false;
            }
        }
        return true;
    }(),
    "rows stand in the order of the filters");

/// Something for each filter.
template <typename Wert>
class JeFilter {
  public:
    [[nodiscard]] constexpr Wert& operator[](FilterFeld feld) { return werte_[static_cast<std::size_t>(feld)]; }
    [[nodiscard]] constexpr const Wert& operator[](FilterFeld feld) const {
        return werte_[static_cast<std::size_t>(feld)];
    }
    [[nodiscard]] constexpr auto begin() { return werte_.begin(); }
    [[nodiscard]] constexpr auto end() { return werte_.end(); }
    [[nodiscard]] constexpr auto begin() const { return werte_.begin(); }
    [[nodiscard]] constexpr auto end() const { return werte_.end(); }

    friend bool operator==(const JeFilter&, const JeFilter&) = default;

  private:
    std::array<Wert, kFilter.size()> werte_{};
};

/// The choice of each filter; absent: all.
using Filterwahl = JeFilter<std::optional<std::string>>;

/// The filters that a record fails, one bit each.
class Fehlmenge {
  public:
    /// Adds the filter when `fehlt`.
    constexpr void nimm(FilterFeld feld, bool fehlt) { bits_ |= fehlt ? bit(feld) : 0U; }

    /// Whether the record stands in the table, if the search finds it.
    [[nodiscard]] constexpr bool leer() const { return bits_ == 0; }
    /// Whether it then counts for the options of a filter: it fails nothing, or that filter alone.
    [[nodiscard]] constexpr bool leerBisAuf(FilterFeld feld) const { return (bits_ & ~bit(feld)) == 0; }
    /// Whether it counts for nothing.
    [[nodiscard]] constexpr bool mehrAlsEiner() const { return (bits_ & (bits_ - 1U)) != 0; }

  private:
    static constexpr unsigned bit(FilterFeld feld) { return 1U << static_cast<unsigned>(feld); }

    unsigned bits_ = 0;
};

}  // namespace spurkiste
