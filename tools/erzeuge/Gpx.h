#pragma once

#include <span>
#include <string>
#include <string_view>

#include "erzeuge/Fahrt.h"

namespace spurkiste::erzeuge {

/// How one exporter writes: the differences that occur between real programs.
struct Stil {
    std::string_view ersteller;          ///< the creator attribute
    double gewicht = 1.0;                ///< how common it is
    std::string_view einzug = "  ";      ///< of one level
    std::string_view zeilenende = "\n";  ///< empty: everything on one line
    int stellen = 6;                     ///< digits of a coordinate after the point
    int hoehenStellen = 1;
    bool gpx10 = false;          ///< GPX 1.0: names without <metadata>, no extensions
    bool marke = false;          ///< a byte order mark
    bool latin1 = false;         ///< ISO-8859-1, what is not in it as a character reference
    bool millisekunden = false;  ///< times with a fraction
    bool punktAufEinerZeile = false;
    bool einfacheStriche = false;  ///< attributes between apostrophes
    bool leerraumVorab = false;    ///< a line break before the XML declaration, against the rules, as some do
    bool ohneZone = false;         ///< times without a closing Z
};

/// All styles; the first one writes pretty-printed GPX 1.1 in UTF-8.
[[nodiscard]] std::span<const Stil> stile();

/// The whole file: GPX 1.1 (topografix.com/GPX/1/1) or 1.0, with heart rates in a Garmin TrackPointExtension v1 and
/// weather in <wetter> elements of a namespace of their own.
[[nodiscard]] std::string alsGpx(const Fahrt& fahrt, const Stil& stil);

}  // namespace spurkiste::erzeuge
