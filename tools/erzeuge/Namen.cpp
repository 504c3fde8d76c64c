#include "erzeuge/Namen.h"

#include <algorithm>
#include <array>
#include <utility>

#include "erzeuge/Zeittext.h"

namespace spurkiste::erzeuge {

namespace {

// Devices name files by the local clock.
constexpr std::int64_t kSommerzeit = 7200;

std::string nachZeit(const Vorhaben& vorhaben, std::string_view muster) {
    std::string name;
    haengeZeit(name, vorhaben.beginn + kSommerzeit, muster);
    return name;
}

std::string_view tageszeit(const Vorhaben& vorhaben) {
    const std::int64_t stunde = (vorhaben.beginn + kSommerzeit) / 3600 % 24;
    return stunde < 10 ? "Morgen" : stunde < 14 ? "Mittags" : stunde < 17 ? "Nachmittags" : "Abend";
}

constexpr std::string_view kZusaetze[] = {" bei Föhn", " (Regen)", " mit Hund", " 2.0",    " – abgekürzt",
                                          " & Café",   " ☀️",  " 🥨",     " kürzer", ", zweiter Versuch"};

}  // namespace

std::string erfindeTitel(const Vorhaben& vorhaben, Zufall& zufall) {
    const std::string anlass(zufall.aus(vorhaben.profil->worte.anlaesse));
    const std::string ort(vorhaben.ort->name);
    std::string titel;
    if (vorhaben.ziel && vorhaben.ziel->ort != vorhaben.ort && zufall.mit(0.7)) {
        titel = ort + " – " + std::string(vorhaben.ziel->ort->name);
    } else {
        static constexpr std::array<double, 6> kGewichte = {35, 20, 15, 10, 12, 8};
        switch (zufall.gewichtet(kGewichte)) {
            case 0:
                titel = ort + " " + anlass;
                break;
            case 1:
                titel = anlass + " " + ort;
                break;
            case 2:
                titel = anlass;
                break;
            case 3:
                titel = std::string(tageszeit(vorhaben)) + "runde " + ort;
                break;
            case 4:
                titel = std::string(vorhaben.ort->merkpunkt) + " " + anlass;
                break;
            default:
                titel = std::string(vorhaben.profil->worte.zeichen) + " " + anlass + " " + ort;
        }
    }
    if (zufall.mit(0.1)) {
        titel += zufall.aus(std::span<const std::string_view>(kZusaetze));
    }
    return titel;
}

std::string erfindeDateinamen(const std::string& titel, const Vorhaben& vorhaben, Zufall& zufall) {
    static constexpr std::array<double, 7> kGewichte = {42, 10, 12, 12, 10, 8, 6};
    switch (zufall.gewichtet(kGewichte)) {
        case 0:
            return titel;
        case 1:
            return zerlegt(titel);
        case 2:
            return nachZeit(vorhaben, "Track_Y-m-d HMS");
        case 3: {
            std::string name = "activity_";
            haengeGanz(name, zufall.ganz(1'000'000'000, 19'999'999'999));
            return name;
        }
        case 4:
            return nachZeit(vorhaben, "Y-m-d_H-M-S");
        case 5:
            return nachZeit(vorhaben, "Y-m-d ") + titel;
        default:
            return nachZeit(vorhaben, "YmdTHMS");
    }
}

std::string zerlegt(std::string_view text) {
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 8> kZerlegungen = {{
        {"ä", "a\u0308"},
        {"ö", "o\u0308"},
        {"ü", "u\u0308"},
        {"Ä", "A\u0308"},
        {"Ö", "O\u0308"},
        {"Ü", "U\u0308"},
        {"é", "e\u0301"},
        {"è", "e\u0300"},
    }};
    std::string ergebnis;
    for (std::size_t i = 0; i < text.size();) {
        const auto* treffer = std::find_if(kZerlegungen.begin(), kZerlegungen.end(),
                                           [&](const auto& paar) { return text.substr(i).starts_with(paar.first); });
        if (treffer == kZerlegungen.end()) {
            ergebnis += text[i++];
        } else {
            ergebnis += treffer->second;
            i += treffer->first.size();
        }
    }
    return ergebnis;
}

}  // namespace spurkiste::erzeuge
