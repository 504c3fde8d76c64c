#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Which records the timestamps let through.
enum class GhostFilter : std::uint8_t { alle, tauglich, ohne };

/// Which records the course type lets through.
enum class ArtFilter : std::uint8_t { alle, rundkurs, strecke };

/// Which records the length lets through; both bounds belong to `mittel`.
enum class LaengenFilter : std::uint8_t { alle, kurz, mittel, lang };

/// One case of such a filter: its label, the same in every language, and its test.
template <typename Filter>
struct Filterfall {
    Filter wert{};
    std::string_view name;
    bool (*passt)(const GpxMetadaten& eintrag) = nullptr;
};

/// Of each filter all cases, in the order in which they are offered. The first lets everything through.
inline constexpr std::array<Filterfall<GhostFilter>, 3> kGhostFaelle{{
    {GhostFilter::alle, "Ghost: alle", [](const GpxMetadaten&) { return true; }},
    {GhostFilter::tauglich, "Ghost-tauglich", [](const GpxMetadaten& eintrag) { return eintrag.hatZeitstempel; }},
    {GhostFilter::ohne, "ohne Zeitstempel", [](const GpxMetadaten& eintrag) { return !eintrag.hatZeitstempel; }},
}};
inline constexpr std::array<Filterfall<ArtFilter>, 3> kArtFaelle{{
    {ArtFilter::alle, "Art: alle", [](const GpxMetadaten&) { return true; }},
    {ArtFilter::rundkurs, "Rundkurs", [](const GpxMetadaten& eintrag) { return eintrag.rundkurs; }},
    {ArtFilter::strecke, "Strecke", [](const GpxMetadaten& eintrag) { return !eintrag.rundkurs; }},
}};
inline constexpr std::array<Filterfall<LaengenFilter>, 4> kLaengenFaelle{{
    {LaengenFilter::alle, "Länge: alle", [](const GpxMetadaten&) { return true; }},
    {LaengenFilter::kurz, "unter 5 km", [](const GpxMetadaten& eintrag) { return eintrag.streckeMeter < 5000.0; }},
    {LaengenFilter::mittel, "5–20 km",
     [](const GpxMetadaten& eintrag) { return eintrag.streckeMeter >= 5000.0 && eintrag.streckeMeter <= 20000.0; }},
    {LaengenFilter::lang, "über 20 km", [](const GpxMetadaten& eintrag) { return eintrag.streckeMeter > 20000.0; }},
}};

/// The labels of the choice that lets everything through, where the options are places; that of the sports is among
/// the texts of the language.
inline constexpr std::string_view kStartAlle = "Start: alle";
inline constexpr std::string_view kZielAlle = "Ziel: alle";

/// The cases of the filter that a value belongs to.
constexpr const auto& faelleVon(GhostFilter /*filter*/) {
    return kGhostFaelle;
}
constexpr const auto& faelleVon(ArtFilter /*filter*/) {
    return kArtFaelle;
}
constexpr const auto& faelleVon(LaengenFilter /*filter*/) {
    return kLaengenFaelle;
}

/// The label of a case.
template <typename Filter>
constexpr std::string_view rawValue(Filter filter) {
    return faelleVon(filter)[static_cast<std::size_t>(filter)].name;
}

/// A set of cases of one filter, one bit each.
using Fallmenge = std::uint8_t;

template <typename Filter>
constexpr Fallmenge fallmenge(Filter filter) {
    return static_cast<Fallmenge>(1U << static_cast<unsigned>(filter));
}

/// The cases of a filter that let the record through.
template <typename Filter>
Fallmenge passendeFaelle(const GpxMetadaten& eintrag) {
    Fallmenge menge = 0;
    for (const auto& fall : faelleVon(Filter{})) {
        menge |= fall.passt(eintrag) ? fallmenge(fall.wert) : Fallmenge{0};
    }
    return menge;
}

/// The filters, in the order of the filter bar.
enum class FilterFeld : std::uint8_t { start, ziel, sport, ghost, art, laenge };

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
