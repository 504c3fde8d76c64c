#include "track/GpxSportart.h"

#include <algorithm>
#include <cstddef>

#include "base/Text.h"
#include "i18n/AppSprache.h"

namespace spurkiste {

namespace {

struct Kennung {
    std::string_view rawValue;
    std::string_view symbol;
};

// In the order of the enumerators. Gravel and trail running share the icon of their mother sport.
constexpr std::array<Kennung, 15> kKennungen = {{
    {"cycling", "bicycle"},
    {"running", "figure.run"},
    {"motorcycling", "motorcycle"},
    {"driving", "car.fill"},
    {"hiking", "figure.hiking"},
    {"walking", "figure.walk"},
    {"mountain_biking", "mountain.2"},
    {"gravel_cycling", "bicycle"},
    {"e_bike", "bolt.circle"},
    {"trail_running", "figure.run"},
    {"swimming", "figure.pool.swim"},
    {"skiing", "figure.skiing.downhill"},
    {"inline_skating", "figure.skating"},
    {"rowing", "figure.rower"},
    {"kayaking", "figure.outdoor.cycle"},
}};

struct Deckname {
    std::string_view text;
    GpxSportart::Wert sport;
};

// What recorders and web services write besides the identifiers above.
constexpr std::array kDecknamen = {
    Deckname{"ride", GpxSportart::rad},
    Deckname{"biking", GpxSportart::rad},
    Deckname{"bike", GpxSportart::rad},
    Deckname{"road_biking", GpxSportart::rad},
    Deckname{"radfahren", GpxSportart::rad},
    Deckname{"rad", GpxSportart::rad},
    Deckname{"mountainbiking", GpxSportart::mountainbike},
    Deckname{"mtb", GpxSportart::mountainbike},
    Deckname{"gravel", GpxSportart::gravel},
    Deckname{"ebike", GpxSportart::eBike},
    Deckname{"e-bike", GpxSportart::eBike},
    Deckname{"electric_bike", GpxSportart::eBike},
    Deckname{"e_bike_fitness", GpxSportart::eBike},
    Deckname{"run", GpxSportart::laufen},
    Deckname{"lauf", GpxSportart::laufen},
    Deckname{"laufen", GpxSportart::laufen},
    Deckname{"trailrunning", GpxSportart::trailrunning},
    Deckname{"hike", GpxSportart::wandern},
    Deckname{"wandern", GpxSportart::wandern},
    Deckname{"walk", GpxSportart::gehen},
    Deckname{"casual_walking", GpxSportart::gehen},
    Deckname{"gehen", GpxSportart::gehen},
    Deckname{"open_water_swimming", GpxSportart::schwimmen},
    Deckname{"schwimmen", GpxSportart::schwimmen},
    Deckname{"motorcycle", GpxSportart::motorrad},
    Deckname{"moto", GpxSportart::motorrad},
    Deckname{"motorrad", GpxSportart::motorrad},
    Deckname{"car", GpxSportart::auto_},
    Deckname{"auto", GpxSportart::auto_},
    Deckname{"alpine_skiing", GpxSportart::ski},
    Deckname{"resort_skiing", GpxSportart::ski},
    Deckname{"ski", GpxSportart::ski},
    Deckname{"skating", GpxSportart::inline_},
    Deckname{"rudern", GpxSportart::rudern},
    Deckname{"canoeing", GpxSportart::kajak},
    Deckname{"kajak", GpxSportart::kajak},
};

}  // namespace

const std::array<GpxSportart, 15>& GpxSportart::allCases() {
    static constexpr std::array<GpxSportart, 15> alle = {rad,       laufen,       motorrad, auto_,  wandern,
                                                         gehen,     mountainbike, gravel,   eBike,  trailrunning,
                                                         schwimmen, ski,          inline_,  rudern, kajak};
    return alle;
}

std::optional<GpxSportart> GpxSportart::ausRawValue(std::string_view rawValue) {
    for (const GpxSportart sport : allCases()) {
        if (sport.rawValue() == rawValue) {
            return sport;
        }
    }
    return std::nullopt;
}

std::optional<GpxSportart> GpxSportart::aus(const std::optional<std::string>& text) {
    if (!text) {
        return std::nullopt;
    }
    const std::string klein = text::klein(*text);
    const auto gesucht = text::trimme(klein);
    if (const auto sport = ausRawValue(gesucht)) {
        return sport;
    }
    const auto* const treffer = std::find_if(kDecknamen.begin(), kDecknamen.end(),
                                             [&](const Deckname& deckname) { return deckname.text == gesucht; });
    return treffer == kDecknamen.end() ? std::nullopt : std::optional<GpxSportart>(treffer->sport);
}

std::string_view GpxSportart::rawValue() const {
    return kKennungen[static_cast<std::size_t>(wert_)].rawValue;
}

std::string GpxSportart::deutsch() const {
    return AppSprache::text(rawValue());
}

std::string_view GpxSportart::symbol() const {
    return kKennungen[static_cast<std::size_t>(wert_)].symbol;
}

std::optional<GpxSportart> GpxSport::schaetzung(double kmh) {
    struct Stufe {
        double unter;
        GpxSportart::Wert sport;
    };
    constexpr std::array stufen = {Stufe{6.5, GpxSportart::wandern}, Stufe{14.0, GpxSportart::laufen},
                                   Stufe{45.0, GpxSportart::rad}, Stufe{160.0, GpxSportart::auto_}};
    for (const Stufe& stufe : stufen) {
        if (kmh < stufe.unter) {
            return stufe.sport;
        }
    }
    return std::nullopt;
}

}  // namespace spurkiste
