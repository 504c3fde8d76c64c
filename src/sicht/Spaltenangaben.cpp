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

Zellentext oderStrich(bool vorhanden, std::string (*text)(double), double zahl) {
    return vorhanden ? Zellentext(text(zahl)) : Zellentext(std::u16string_view(u"–"));
}

}  // namespace

Zellentext strecke(double meter) {
    return oderStrich(std::isfinite(meter), Formate::strecke, meter);
}

Zellentext dauer(double sekunden) {
    return oderStrich(sekunden > 0.0 && std::isfinite(sekunden), Formate::dauer, sekunden);
}

Zellentext anstieg(double meter) {
    const auto text = [](double zahl) { return std::to_string(zahl::ganz(zahl)) + " m"; };
    return oderStrich(meter > 0.0, text, meter);
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
