#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "hilfe/Ansichtsbau.h"
#include "sicht/Zeile.h"

namespace spurkiste {

using Zeilen = std::vector<std::shared_ptr<const Zeile>>;

/// A row: its number, its file's name, and what `aendere` makes of the record. The file is "/bibliothek/NAME.gpx".
template <typename Aenderung>
std::shared_ptr<const Zeile> zeileMit(std::uint32_t kennung, const std::string& name, Aenderung aendere) {
    const Eintrag eintrag = eintragMit(name, aendere);
    const auto art = GpxSportart::aus(eintrag->sportRoh);
    return std::make_shared<const Zeile>(eintrag, kennung, art, texteIn("de").sportAnzeige(*eintrag, art));
}

inline std::shared_ptr<const Zeile> zeileMit(std::uint32_t kennung, const std::string& name) {
    return zeileMit(kennung, name, [](GpxMetadaten&) {});
}

/// Rows whose files are called like their numbers.
inline Zeilen zeilen(const std::vector<std::uint32_t>& kennungen) {
    Zeilen ergebnis;
    for (const std::uint32_t kennung : kennungen) {
        ergebnis.push_back(zeileMit(kennung, std::to_string(kennung)));
    }
    return ergebnis;
}

/// The numbers from `von` up to, but without, `bis`.
inline std::vector<std::uint32_t> zahlen(std::uint32_t von, std::uint32_t bis) {
    std::vector<std::uint32_t> ergebnis;
    for (std::uint32_t zahl = von; zahl < bis; ++zahl) {
        ergebnis.push_back(zahl);
    }
    return ergebnis;
}

inline std::string pfad(std::uint32_t kennung) {
    return "/bibliothek/" + std::to_string(kennung) + ".gpx";
}

}  // namespace spurkiste
