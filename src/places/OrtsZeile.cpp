#include "places/OrtsZeile.h"

#include <algorithm>
#include <array>
#include <limits>

#include "base/Zahl.h"

namespace spurkiste {

namespace {

/// Reads a figure in the form that place files use, as "-8.54171", faster than numbers of every form can be read.
/// Nothing when it has another form or does not fit, which does not mean that it is no number.
std::optional<std::int32_t> liesZehnmillionstel(std::string_view text) {
    const bool negativ = text.starts_with('-');
    text.remove_prefix(negativ ? 1 : 0);
    if (text.empty() || text.size() > 11 || text.front() == '.') {
        return std::nullopt;
    }
    std::int64_t wert = 0;
    std::size_t punkt = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto ziffer = static_cast<unsigned>(text[i]) - unsigned{'0'};
        if (ziffer <= 9) {
            wert = wert * 10 + ziffer;
        } else if (text[i] == '.' && punkt == text.size()) {
            punkt = i;
        } else {
            return std::nullopt;
        }
    }
    constexpr std::array<std::int64_t, 8> zehnerpotenz{10000000, 1000000, 100000, 10000, 1000, 100, 10, 1};
    const std::size_t stellen = punkt == text.size() ? 0 : text.size() - punkt - 1;
    if (stellen >= zehnerpotenz.size()) {
        return std::nullopt;
    }
    wert *= zehnerpotenz[stellen];
    if (wert > std::numeric_limits<std::int32_t>::max()) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(negativ ? -wert : wert);
}

}  // namespace

std::optional<OrtsZeile> OrtsZeile::lies(std::string_view zeile) {
    std::array<std::string_view, 3> felder;
    std::size_t anzahl = 0;
    for (std::size_t anfang = 0; anfang < zeile.size();) {
        const std::size_t ende = std::min(zeile.find('\t', anfang), zeile.size());
        if (ende > anfang) {
            if (anzahl == felder.size()) {
                return std::nullopt;
            }
            felder[anzahl++] = zeile.substr(anfang, ende - anfang);
        }
        anfang = ende + 1;
    }
    if (anzahl != felder.size()) {
        return std::nullopt;
    }
    const auto breite = liesZehnmillionstel(felder[1]);
    const auto laenge = breite ? liesZehnmillionstel(felder[2]) : std::nullopt;
    if (laenge) {
        return OrtsZeile{felder[0], {*breite / kJeGrad, *laenge / kJeGrad}, Rund{*breite, *laenge}};
    }
    const auto breiteGrad = zahl::lies(felder[1]);
    const auto laengeGrad = zahl::lies(felder[2]);
    if (!breiteGrad || !laengeGrad) {
        return std::nullopt;
    }
    return OrtsZeile{felder[0], {*breiteGrad, *laengeGrad}, std::nullopt};
}

}  // namespace spurkiste
