#include "places/OrtsEtiketten.h"

#include <cmath>

#include "base/Zahl.h"
#include "places/Gruppierung.h"

namespace spurkiste {

namespace {

constexpr double kNamenMeter = 15000.0;

std::optional<std::string> nameVon(const Gruppe& gruppe, const Ortsbuch& buch) {
    const Koordinate mitte = gruppe.mitte();
    if (!std::isfinite(mitte.breite) || !std::isfinite(mitte.laenge)) {
        return std::nullopt;
    }
    if (const auto ort = buch.naechster(mitte, kNamenMeter)) {
        return std::string(*ort);
    }
    return zahl::fest(mitte.breite, 5) + ", " + zahl::fest(mitte.laenge, 5);
}

}  // namespace

std::vector<std::optional<std::string>> OrtsEtiketten::berechne(std::span<const std::optional<Koordinate>> punkte,
                                                                const Ortsbuch& buch) {
    const Gruppierung gruppierung = Gruppierung::aus(punkte);
    std::vector<std::optional<std::string>> etiketten;
    etiketten.reserve(punkte.size());
    // The points that founded a group come in the order of the groups; the others copy from theirs.
    std::vector<std::size_t> gruender;
    gruender.reserve(gruppierung.gruppen.size());
    for (const std::uint32_t nummer : gruppierung.gruppeZuPunkt) {
        if (nummer == Gruppierung::kKeine) {
            etiketten.emplace_back();
        } else if (nummer < gruender.size()) {
            etiketten.push_back(etiketten[gruender[nummer]]);
        } else {
            gruender.push_back(etiketten.size());
            etiketten.push_back(nameVon(gruppierung.gruppen[nummer], buch));
        }
    }
    return etiketten;
}

}  // namespace spurkiste
