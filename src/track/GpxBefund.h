#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "track/XmlLauf.h"

namespace spurkiste {

/// Something in a GPX file that a record says nothing of, because reading passes over it in silence. A value.
struct GpxBefund {
    /// In the order in which befunde() lists them.
    enum class Art {
        keinPunkt,        ///< nothing to draw and to measure
        abgebrochen,      ///< from `zeile` on the file is no XML; what came before counts
        punktVerworfen,   ///< points without a latitude and a longitude that are numbers
        punktMitPraefix,  ///< points whose element has a prefix, which are not read
        zeitUnlesbar,     ///< times of points that are none
        hoeheUnlesbar,    ///< elevations of points that are no numbers
    };

    Art art = Art::keinPunkt;
    std::size_t anzahl = 1;
    std::size_t zeile = 1;                 ///< from 1: of the first one; of the file's end for keinPunkt
    XmlFehler fehler = XmlFehler::keiner;  ///< of `abgebrochen`

    friend bool operator==(const GpxBefund&, const GpxBefund&) = default;
};

}  // namespace spurkiste
