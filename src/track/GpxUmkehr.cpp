#include "track/GpxUmkehr.h"

#include <numeric>
#include <string>

namespace spurkiste {

std::vector<GpxSpleisse::Spleiss> GpxUmkehr::gegen(const std::vector<GpxSpleisse::Spleiss>& spleisse,
                                                   std::string_view inhalt) {
    std::vector<GpxSpleisse::Spleiss> ergebnis;
    ergebnis.reserve(spleisse.size());
    std::size_t dazu = 0;  // by the splices before
    std::size_t weg = 0;
    for (const auto& spleiss : spleisse) {
        const std::size_t laenge = spleiss.stelle.bis - spleiss.stelle.von;
        const std::size_t von = spleiss.stelle.von + dazu - weg;
        ergebnis.push_back({{von, von + spleiss.text.size()}, std::string(inhalt.substr(spleiss.stelle.von, laenge))});
        dazu += spleiss.text.size();
        weg += laenge;
    }
    return ergebnis;
}

std::size_t GpxUmkehr::gewicht() const {
    return std::accumulate(
        spleisse.begin(), spleisse.end(), sizeof(GpxUmkehr),
        [](std::size_t bisher, const auto& spleiss) { return bisher + sizeof spleiss + spleiss.text.capacity(); });
}

}  // namespace spurkiste
