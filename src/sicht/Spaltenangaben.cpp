#include "sicht/Spaltenangaben.h"

#include <cmath>

#include "base/Text.h"
#include "base/Zahl.h"
#include "sicht/Formate.h"

namespace spurkiste::zelle {

namespace {

std::string koordinate(const std::optional<Koordinate>& ort) {
    const bool endlich = ort && std::isfinite(ort->breite) && std::isfinite(ort->laenge);
    return endlich ? Formate::koordinate(*ort) : std::string(kStrich);
}

}  // namespace

std::string strecke(double meter) {
    return std::isfinite(meter) ? Formate::strecke(meter) : std::string(kStrich);
}

std::string dauer(double sekunden) {
    return sekunden > 0.0 && std::isfinite(sekunden) ? Formate::dauer(sekunden) : std::string(kStrich);
}

std::string anstieg(double meter) {
    return meter > 0.0 ? std::to_string(zahl::ganz(meter)) + " m" : std::string(kStrich);
}

Zellentext ort(const std::optional<std::string>& name, const std::optional<Koordinate>& ort) {
    if (name) {
        return std::string_view(*name);
    }
    return koordinate(ort);
}

std::u16string ortshilfe(const std::optional<Koordinate>& ort) {
    return text::utf16(koordinate(ort));
}

}  // namespace spurkiste::zelle
