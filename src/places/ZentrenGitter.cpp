#include "places/ZentrenGitter.h"

#include <cassert>
#include <tuple>
#include <utility>

namespace spurkiste {

namespace {

constexpr double kKanteInReichweiten = 8.0;  ///< so that a search touches two cubes on average
constexpr std::uint32_t kVoll = 32;          ///< points in a cube before it is divided
constexpr int kTiefste = 20;                 ///< divisions; beyond a millimetre nothing is gained

}  // namespace

ZentrenGitter::ZentrenGitter(double reichweite, std::size_t erwartet)
    : reichweite_(reichweite),
      kante_(reichweite * kKanteInReichweiten),
      jeEinheit_(1.0 / kante_),
      verschiebung_(64 - 10),
      faecher_(1U << 10U, kKeine) {
    assert((kVersatz + 2.0) / kante_ < 65536.0 && reichweite_ <= 1.0);
    punkte_.reserve(erwartet);
    knoten_.reserve(erwartet);
}

void ZentrenGitter::setze(std::uint32_t nummer, const Raumpunkt& ort) {
    if (nummer >= punkte_.size()) {
        punkte_.resize(nummer + 1);
    }
    if (punkte_[nummer].knoten != kKeine) {
        haengeAus(nummer);
    }
    for (std::size_t achse = 0; achse < 3; ++achse) {
        punkte_[nummer].ort[achse] = static_cast<float>(ort[achse]);
    }
    const Wuerfelnummer wuerfel{wuerfelAuf(ort[0]), wuerfelAuf(ort[1]), wuerfelAuf(ort[2])};
    haengeEin(belege(schluessel(wuerfel)), {ecke(wuerfel), kante_}, nummer, 0);
}

Raumpunkt ZentrenGitter::ecke(const Wuerfelnummer& wuerfel) const {
    Raumpunkt ecke{};
    for (std::size_t achse = 0; achse < 3; ++achse) {
        ecke[achse] = static_cast<double>(wuerfel[achse]) * kante_ - kVersatz;
    }
    return ecke;
}

/// One of the eight parts of a cube; a bit of its number for each axis says whether it is the upper half.
ZentrenGitter::Wuerfel ZentrenGitter::teil(const Wuerfel& wuerfel, std::uint32_t kind) {
    Wuerfel teil{wuerfel.ecke, wuerfel.kante / 2.0};
    for (std::size_t achse = 0; achse < 3; ++achse) {
        if ((kind >> achse & 1U) != 0) {
            teil.ecke[achse] += teil.kante;
        }
    }
    return teil;
}

std::uint32_t ZentrenGitter::kindVon(const Wuerfel& wuerfel, const Raumpunkt& ort) {
    std::uint32_t kind = 0;
    for (std::size_t achse = 0; achse < 3; ++achse) {
        if (ort[achse] >= wuerfel.ecke[achse] + wuerfel.kante / 2.0) {
            kind |= 1U << achse;
        }
    }
    return kind;
}

/// The node of the cube with that key, made if there is none.
std::uint32_t ZentrenGitter::belege(std::uint64_t schluessel) {
    std::size_t fach = fachVon(schluessel);
    if (faecher_[fach] != kKeine) {
        return faecher_[fach];
    }
    if (++belegt_ * 2 > faecher_.size()) {
        const std::vector<std::uint32_t> alte = std::exchange(faecher_, {});
        faecher_.assign(alte.size() * 2, kKeine);
        --verschiebung_;
        for (const std::uint32_t knoten : alte) {
            if (knoten != kKeine) {
                faecher_[fachVon(knoten_[knoten].schluessel)] = knoten;
            }
        }
        fach = fachVon(schluessel);
    }
    faecher_[fach] = static_cast<std::uint32_t>(knoten_.size());
    knoten_.emplace_back().schluessel = schluessel;
    return faecher_[fach];
}

void ZentrenGitter::haengeEin(std::uint32_t knoten, Wuerfel wuerfel, std::uint32_t nummer, int tiefe) {
    const auto steigeAb = [&](std::uint32_t welcher) {
        const std::uint32_t kind = kindVon(wuerfel, raumpunkt(punkte_[welcher]));
        return std::pair(knoten_[knoten].kinder + kind, teil(wuerfel, kind));
    };
    for (; knoten_[knoten].kinder != kKeine; ++tiefe) {
        knoten_[knoten].kleinste = std::min(knoten_[knoten].kleinste, nummer);
        std::tie(knoten, wuerfel) = steigeAb(nummer);
    }
    fuegeInRing(knoten, nummer);
    if (knoten_[knoten].anzahl <= kVoll || tiefe == kTiefste) {
        return;
    }
    const auto kinder = static_cast<std::uint32_t>(knoten_.size());
    knoten_.resize(knoten_.size() + 8);
    const Knoten voll =
        std::exchange(knoten_[knoten], {knoten_[knoten].schluessel, kKeine, 0, knoten_[knoten].kleinste, kinder});
    std::uint32_t i = voll.erster;
    for (std::uint32_t rest = voll.anzahl; rest > 0; --rest) {
        const std::uint32_t naechster = punkte_[i].danach;
        const auto [kind, teilwuerfel] = steigeAb(i);
        haengeEin(kind, teilwuerfel, i, tiefe + 1);
        i = naechster;
    }
}

void ZentrenGitter::fuegeInRing(std::uint32_t knoten, std::uint32_t nummer) {
    Knoten& ziel = knoten_[knoten];
    Punkt& punkt = punkte_[nummer];
    punkt.knoten = knoten;
    if (ziel.anzahl == 0) {
        ziel.erster = nummer;
        punkt.davor = nummer;
    } else {
        punkt.davor = punkte_[ziel.erster].davor;
    }
    punkt.danach = ziel.erster;
    punkte_[punkt.davor].danach = nummer;
    punkte_[ziel.erster].davor = nummer;
    ++ziel.anzahl;
    ziel.kleinste = std::min(ziel.kleinste, nummer);
}

void ZentrenGitter::haengeAus(std::uint32_t nummer) {
    const Punkt& punkt = punkte_[nummer];
    Knoten& knoten = knoten_[punkt.knoten];
    punkte_[punkt.davor].danach = punkt.danach;
    punkte_[punkt.danach].davor = punkt.davor;
    if (knoten.erster == nummer) {
        knoten.erster = punkt.danach;
    }
    --knoten.anzahl;
}

}  // namespace spurkiste
