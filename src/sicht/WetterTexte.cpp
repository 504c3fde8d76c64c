#include "sicht/WetterTexte.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/Text.h"
#include "base/Zahl.h"

namespace spurkiste::wettertexte {

namespace {

struct Lage {
    std::string_view name;  ///< lower-cased
    std::string_view text;
    std::string_view symbol;
};

constexpr std::array kLagen{
    Lage{"klar", "Sonnig", "sun.max"},
    Lage{"sonnig", "Sonnig", "sun.max"},
    Lage{"leicht_bewoelkt", "Leicht bewölkt", "cloud.sun"},
    Lage{"bewoelkt", "Bewölkt", "cloud"},
    Lage{"bedeckt", "Bewölkt", "cloud"},
    Lage{"regen", "Regen", "cloud.rain"},
    Lage{"regnerisch", "Regen", "cloud.rain"},
    Lage{"gewitter", "Gewitter", "cloud.bolt.rain"},
    Lage{"schnee", "Schnee", "cloud.snow"},
    Lage{"nebel", "Nebel", "cloud.fog"},
    Lage{"", "Wetter", "cloud"},
};

const Lage* bekannteLage(std::string_view name) {
    const auto* gefunden =
        std::find_if(kLagen.begin(), kLagen.end(), [name](const Lage& lage) { return lage.name == name; });
    return gefunden == kLagen.end() ? nullptr : gefunden;
}

/// To the nearest whole number, halves away from zero.
std::string gerundet(double wert) {
    return std::to_string(zahl::ganz(std::round(wert)));
}

/// Each word with a capital at its beginning.
std::string mitGrossenAnfaengen(const std::string& klein) {
    std::string ergebnis;
    for (std::size_t anfang = 0; anfang <= klein.size();) {
        const std::size_t ende = std::min(klein.find(' ', anfang), klein.size());
        ergebnis += (anfang > 0 ? " " : "") + text::grossAmAnfang(klein.substr(anfang, ende - anfang), "de");
        anfang = ende + 1;
    }
    return ergebnis;
}

}  // namespace

std::string_view wetterSymbol(const std::optional<std::string>& lage) {
    const Lage* bekannt = bekannteLage(text::klein(lage.value_or("")));
    return bekannt == nullptr ? "cloud" : bekannt->symbol;
}

std::string wetterLage(const std::optional<std::string>& lage) {
    std::string klein = text::klein(lage.value_or(""));
    if (const Lage* bekannt = bekannteLage(klein)) {
        return std::string(bekannt->text);
    }
    std::replace(klein.begin(), klein.end(), '_', ' ');
    return mitGrossenAnfaengen(klein);
}

std::string wetterWert(const GpxWetter& wetter) {
    return wetter.temperaturCelsius ? gerundet(*wetter.temperaturCelsius) + " °C" : wetterLage(wetter.lage);
}

std::string wetterDetails(const GpxWetter& wetter) {
    std::string details;
    const auto nimm = [&details](const std::string& teil) { details += (details.empty() ? "" : " · ") + teil; };
    if (wetter.lage) {
        nimm(wetterLage(wetter.lage));
    }
    if (wetter.luftfeuchteProzent) {
        nimm(gerundet(*wetter.luftfeuchteProzent) + " %");
    }
    if (wetter.windKmh) {
        nimm(gerundet(*wetter.windKmh) + " km/h" + (wetter.windrichtung ? " " + *wetter.windrichtung : ""));
    }
    return details;
}

}  // namespace spurkiste::wettertexte
