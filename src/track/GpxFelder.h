#pragma once

#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// A stored field of a record: what JSON and CSV call it, and where it is.
template <auto zeiger>
struct GpxFeld {
    std::string_view name;
    static constexpr auto kZeiger = zeiger;
};

/// The fields of a record, in the order in which they are written. What is added here stands in the cache, in JSON and
/// in CSV.
inline constexpr std::tuple kGpxFelder{
    GpxFeld<&GpxMetadaten::pfad>{"pfad"},
    GpxFeld<&GpxMetadaten::dateiName>{"dateiName"},
    GpxFeld<&GpxMetadaten::spurName>{"spurName"},
    GpxFeld<&GpxMetadaten::datum>{"datum"},
    GpxFeld<&GpxMetadaten::dateiDatum>{"dateiDatum"},
    GpxFeld<&GpxMetadaten::dateiGroesse>{"dateiGroesse"},
    GpxFeld<&GpxMetadaten::streckeMeter>{"streckeMeter"},
    GpxFeld<&GpxMetadaten::dauerSekunden>{"dauerSekunden"},
    GpxFeld<&GpxMetadaten::anstiegMeter>{"anstiegMeter"},
    GpxFeld<&GpxMetadaten::punkte>{"punkte"},
    GpxFeld<&GpxMetadaten::start>{"start"},
    GpxFeld<&GpxMetadaten::ende>{"ende"},
    GpxFeld<&GpxMetadaten::rundkurs>{"rundkurs"},
    GpxFeld<&GpxMetadaten::hatZeitstempel>{"hatZeitstempel"},
    GpxFeld<&GpxMetadaten::sportRoh>{"sportRoh"},
    GpxFeld<&GpxMetadaten::startOrt>{"startOrt"},
    GpxFeld<&GpxMetadaten::zielOrt>{"zielOrt"},
    GpxFeld<&GpxMetadaten::skizze>{"skizze"},
    GpxFeld<&GpxMetadaten::wetter>{"wetter"},
};

inline constexpr std::tuple kWetterFelder{
    GpxFeld<&GpxWetter::temperaturCelsius>{"temperaturCelsius"},
    GpxFeld<&GpxWetter::luftfeuchteProzent>{"luftfeuchteProzent"},
    GpxFeld<&GpxWetter::windKmh>{"windKmh"},
    GpxFeld<&GpxWetter::windrichtung>{"windrichtung"},
    GpxFeld<&GpxWetter::lage>{"lage"},
    GpxFeld<&GpxWetter::messpunkte>{"messpunkte"},
};

inline constexpr std::tuple kKoordinatenFelder{
    GpxFeld<&Koordinate::breite>{"breite"},
    GpxFeld<&Koordinate::laenge>{"laenge"},
};

/// The list for one of the three types.
template <class Typ>
constexpr const auto& gpxFelder() {
    if constexpr (std::is_same_v<Typ, Koordinate>) {
        return kKoordinatenFelder;
    } else if constexpr (std::is_same_v<Typ, GpxWetter>) {
        return kWetterFelder;
    } else {
        static_assert(std::is_same_v<Typ, GpxMetadaten>);
        return kGpxFelder;
    }
}

/// Whether a field of this type may be absent.
template <class Wert>
inline constexpr bool kOptional = false;
template <class Wert>
inline constexpr bool kOptional<std::optional<Wert>> = true;
template <class Wert>
inline constexpr bool kOptional<Selten<Wert>> = true;

/// Whether a record has a field of this name.
constexpr bool istGpxFeld(std::string_view name) {
    return std::apply([&](const auto&... feld) { return ((feld.name == name) || ...); }, kGpxFelder);
}

}  // namespace spurkiste
