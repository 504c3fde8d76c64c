#pragma once

#include <utility>
#include <vector>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// A sketch of these lines.
inline Skizze skizzeAus(const std::vector<std::vector<Koordinate>>& linien) {
    Skizze::Bau bau;
    for (const auto& linie : linien) {
        bau.beginneLinie();
        for (const Koordinate& ort : linie) {
            bau.haengeAn(ort);
        }
    }
    return std::move(bau).fertig();
}

}  // namespace spurkiste
