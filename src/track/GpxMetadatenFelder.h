#pragma once

#include <optional>
#include <string_view>
#include <tuple>

#include "track/GpxMetadaten.h"

namespace spurkiste::json {

/// How a field of a record is called in JSON, and which one it is.
template <auto zeiger_>
struct Feld {
    static constexpr auto zeiger = zeiger_;
    std::string_view name;
};

/// The fields of a type, in the order in which they are written.
template <class Typ>
struct Felder;

template <>
struct Felder<Koordinate> {
    static constexpr std::tuple liste{
        Feld<&Koordinate::breite>{"breite"},
        Feld<&Koordinate::laenge>{"laenge"},
    };
};

template <>
struct Felder<GpxWetter> {
    static constexpr std::tuple liste{
        Feld<&GpxWetter::temperaturCelsius>{"temperaturCelsius"},
        Feld<&GpxWetter::luftfeuchteProzent>{"luftfeuchteProzent"},
        Feld<&GpxWetter::windKmh>{"windKmh"},
        Feld<&GpxWetter::windrichtung>{"windrichtung"},
        Feld<&GpxWetter::lage>{"lage"},
        Feld<&GpxWetter::messpunkte>{"messpunkte"},
    };
};

template <>
struct Felder<GpxMetadaten> {
    static constexpr std::tuple liste{
        Feld<&GpxMetadaten::pfad>{"pfad"},
        Feld<&GpxMetadaten::dateiName>{"dateiName"},
        Feld<&GpxMetadaten::spurName>{"spurName"},
        Feld<&GpxMetadaten::datum>{"datum"},
        Feld<&GpxMetadaten::dateiDatum>{"dateiDatum"},
        Feld<&GpxMetadaten::dateiGroesse>{"dateiGroesse"},
        Feld<&GpxMetadaten::streckeMeter>{"streckeMeter"},
        Feld<&GpxMetadaten::dauerSekunden>{"dauerSekunden"},
        Feld<&GpxMetadaten::anstiegMeter>{"anstiegMeter"},
        Feld<&GpxMetadaten::punkte>{"punkte"},
        Feld<&GpxMetadaten::start>{"start"},
        Feld<&GpxMetadaten::ende>{"ende"},
        Feld<&GpxMetadaten::rundkurs>{"rundkurs"},
        Feld<&GpxMetadaten::hatZeitstempel>{"hatZeitstempel"},
        Feld<&GpxMetadaten::sportRoh>{"sportRoh"},
        Feld<&GpxMetadaten::startOrt>{"startOrt"},
        Feld<&GpxMetadaten::zielOrt>{"zielOrt"},
        Feld<&GpxMetadaten::skizze>{"skizze"},
        Feld<&GpxMetadaten::wetter>{"wetter"},
    };
};

/// Whether a field of this type may be absent.
template <class Wert>
inline constexpr bool kOptional = false;
template <class Wert>
inline constexpr bool kOptional<std::optional<Wert>> = true;

}  // namespace spurkiste::json
