#include "erzeuge/Vorhaben.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace spurkiste::erzeuge {

namespace {

using namespace std::chrono;

constexpr sys_days kErsterTag{year{2016} / January / 1};
constexpr sys_days kLetzterTag{year{2025} / September / 30};

Koordinate nahe(Zufall& zufall, const Koordinate& punkt, double meter) {
    const double ost = meter * zufall.glocke();
    return versetzt(punkt, ost, meter * zufall.glocke());
}

Startplatz beiOrt(Zufall& zufall, const Ort& ort, double meter) {
    return {&ort, nahe(zufall, ort.lage, meter)};
}

const Ort& ausOrten(Zufall& zufall, Ortsart art) {
    return zufall.aus(orte(art));
}

double luftlinie(const Koordinate& von, const Koordinate& nach) {
    const double nord = (nach.breite - von.breite) * kMeterProGrad;
    const double ost = (nach.laenge - von.laenge) * kMeterProGrad * kosinus(bogenmass(von.breite));
    return std::sqrt(nord * nord + ost * ost);
}

// The nearest to `daheim` of some that come to mind: people go out near home, and now and then far away.
const Ort& inDerGegend(Zufall& zufall, const Koordinate& daheim, Ortsart art) {
    const Ort* naechster = &ausOrten(zufall, art);
    for (std::int64_t i = zufall.ganz(1, 6); i > 0; --i) {
        const Ort* anderer = &ausOrten(zufall, art);
        if (luftlinie(daheim, anderer->lage) < luftlinie(daheim, naechster->lage)) {
            naechster = anderer;
        }
    }
    return *naechster;
}

// A day in the sport's season, rather a weekend than not, rather of late than long ago.
sys_days waehleTag(Zufall& zufall, std::string_view monate) {
    const auto tage = static_cast<double>((kLetzterTag - kErsterTag).count());
    for (;;) {
        const double anteil = std::max(zufall.einheit(), zufall.einheit());
        const sys_days tag = kErsterTag + days{static_cast<int>(anteil * tage)};
        const auto monat = static_cast<unsigned>(year_month_day{tag}.month());
        const double saison = (monate[monat - 1] - '0') / 9.0;
        const bool wochenende = weekday{tag}.iso_encoding() >= 6;
        if (zufall.mit(saison * (wochenende ? 1.0 : 0.5))) {
            return tag;
        }
    }
}

// Seconds after midnight UTC; in winter and summer alike an hour or two behind the local clock.
std::int64_t waehleUhrzeit(Zufall& zufall, sys_days tag) {
    static constexpr std::array<int, 12> kWerktag = {5, 5, 6, 10, 10, 15, 15, 16, 16, 16, 17, 17};
    static constexpr std::array<int, 12> kWochenende = {6, 6, 7, 7, 7, 8, 8, 9, 11, 12, 13, 15};
    const bool wochenende = weekday{tag}.iso_encoding() >= 6;
    const int stunde = zufall.aus(std::span<const int>(wochenende ? kWochenende : kWerktag));
    return stunde * 3600 + zufall.ganz(0, 3599);
}

}  // namespace

Koordinate versetzt(const Koordinate& punkt, double ost, double nord) {
    return {punkt.breite + nord / kMeterProGrad,
            punkt.laenge + ost / (kMeterProGrad * kosinus(bogenmass(punkt.breite)))};
}

Mensch::Mensch(std::uint64_t saat, std::size_t anzahl) {
    Zufall zufall(saat);
    // Home, work in the same town, and somebody dear elsewhere.
    const Ort& wohnort = ausOrten(zufall, Ortsart::stadt);
    tueren_.push_back(beiOrt(zufall, wohnort, 900.0));
    tueren_.push_back(beiOrt(zufall, wohnort, 3000.0));
    tueren_.push_back(beiOrt(zufall, inDerGegend(zufall, wohnort.lage, Ortsart::stadt), 900.0));
    const std::size_t plaetze = 6 + anzahl / 40;
    for (std::size_t i = 0; i < plaetze; ++i) {
        const Ortsart art = zufall.mit(0.7) ? Ortsart::berg : Ortsart::stadt;
        parkplaetze_.push_back(beiOrt(zufall, inDerGegend(zufall, wohnort.lage, art), 3500.0));
    }
    for (int i = 0; i < 3; ++i) {
        seen_.push_back(&inDerGegend(zufall, wohnort.lage, Ortsart::see));
        pisten_.push_back(&inDerGegend(zufall, wohnort.lage, Ortsart::piste));
    }
}

Vorhaben Mensch::plane(Zufall& zufall, std::optional<GpxSportart> sport) const {
    std::array<double, 15> gewichte{};
    for (std::size_t i = 0; i < gewichte.size(); ++i) {
        gewichte[i] = sportprofile()[i].gewicht;
    }
    const std::size_t nummer = sport ? static_cast<std::size_t>(GpxSportart::Wert(*sport)) : zufall.gewichtet(gewichte);

    Vorhaben vorhaben;
    vorhaben.profil = &sportprofile()[nummer];
    const Sportprofil& profil = *vorhaben.profil;
    const double u = zufall.einheit();
    vorhaben.meter = 1000.0 * (profil.kurzKm + (profil.langKm - profil.kurzKm) * u * u);
    vorhaben.kmh = profil.kmh * (1.0 + 0.12 * zufall.glocke());
    vorhaben.form = static_cast<Form>(zufall.gewichtet(profil.formen));
    const Startplatz start = waehleStart(zufall, profil);
    vorhaben.ort = start.ort;
    // Nobody starts a recording twice on the same spot.
    vorhaben.start = nahe(zufall, start.lage, 12.0);
    if (vorhaben.form == Form::strecke && profil.ort != Ortsart::see) {
        vorhaben.ziel = waehleZiel(zufall, start, vorhaben.meter);
    }
    const sys_days tag = waehleTag(zufall, profil.monate);
    vorhaben.beginn = duration_cast<seconds>(tag.time_since_epoch()).count() + waehleUhrzeit(zufall, tag);
    return vorhaben;
}

Startplatz Mensch::waehleStart(Zufall& zufall, const Sportprofil& profil) const {
    if (zufall.mit(profil.daheim)) {
        static constexpr std::array<double, 3> kHaeufigkeit = {7, 2, 1};
        return tueren_[zufall.gewichtet(kHaeufigkeit)];
    }
    if (profil.ort == Ortsart::see || profil.ort == Ortsart::piste) {
        const auto& bekannte = profil.ort == Ortsart::see ? seen_ : pisten_;
        return beiOrt(zufall, *zufall.aus(std::span<const Ort* const>(bekannte)), 150.0);
    }
    if (zufall.mit(0.7)) {
        return zufall.aus(std::span<const Startplatz>(parkplaetze_));
    }
    return beiOrt(zufall, ausOrten(zufall, profil.ort), 3000.0);
}

std::optional<Startplatz> Mensch::waehleZiel(Zufall& zufall, const Startplatz& start, double meter) const {
    for (int versuch = 0; versuch < 6; ++versuch) {
        const auto& plaetze = zufall.mit(0.4) ? tueren_ : parkplaetze_;
        const Startplatz& ziel = zufall.aus(std::span<const Startplatz>(plaetze));
        const double weite = luftlinie(start.lage, ziel.lage);
        if (weite > 0.4 * meter && weite < 0.85 * meter) {
            return ziel;
        }
    }
    return std::nullopt;
}

}  // namespace spurkiste::erzeuge
