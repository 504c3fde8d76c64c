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
    std::vector<std::optional<std::string>> namen;
    namen.reserve(gruppierung.gruppen.size());
    for (const Gruppe& gruppe : gruppierung.gruppen) {
        namen.push_back(nameVon(gruppe, buch));
    }
    std::vector<std::optional<std::string>> etiketten;
    etiketten.reserve(punkte.size());
    for (const std::uint32_t nummer : gruppierung.gruppeZuPunkt) {
        etiketten.push_back(nummer == Gruppierung::kKeine ? std::nullopt : namen[nummer]);
    }
    return etiketten;
}

}  // namespace spurkiste
