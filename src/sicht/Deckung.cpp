#include "sicht/Deckung.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <utility>

namespace spurkiste {

namespace {

using Punkt = SkizzenGeometrie::Punkt;

constexpr int kTeile = 8;  // of a pixel, on each axis, that the pen's middle is placed in
constexpr double kGenau = 1.0 / kTeile;
constexpr int kZugleich = 16;  // pixels that are covered at the same time

std::size_t gross(int wert) {
    return static_cast<std::size_t>(wert);
}

/// How far the pen may go in one step, so that the edge of its line is straight to a fortieth of a pixel.
double schrittweite(double radius) {
    constexpr double kUneben = 1.0 / 40;
    return std::sqrt(8 * radius * kUneben);
}

/// The part of the line from `a` to `b` where one coordinate is between `von` and `bis`, as a stretch of 0 to 1.
void beschneide(double a, double b, double von, double bis, std::pair<double, double>& stueck) {
    if (a == b) {
        if (a < von || a > bis) {
            stueck = {1.0, 0.0};
        }
        return;
    }
    const double erstes = (von - a) / (b - a);
    const double zweites = (bis - a) / (b - a);
    stueck.first = std::max(stueck.first, std::min(erstes, zweites));
    stueck.second = std::min(stueck.second, std::max(erstes, zweites));
}

/// Each pixel gets the stronger of two coverages. The copies let the compiler do it in one step.
void verstaerke(std::uint8_t* ziel, const std::uint8_t* maske) {
    std::array<std::uint8_t, kZugleich> hier;
    std::array<std::uint8_t, kZugleich> dazu;
    std::memcpy(hier.data(), ziel, kZugleich);
    std::memcpy(dazu.data(), maske, kZugleich);
    for (std::size_t i = 0; i < hier.size(); ++i) {
        hier[i] = std::max(hier[i], dazu[i]);
    }
    std::memcpy(ziel, hier.data(), kZugleich);
}

}  // namespace

Deckung::Deckung(int breite, int hoehe, double radius)
    : radius_(radius),
      breite_(breite),
      hoehe_(hoehe),
      schrittweite_(schrittweite(radius)),
      halb_(static_cast<int>(std::ceil(radius))),
      stempelbreite_((2 * halb_ + kZugleich) / kZugleich * kZugleich),
      schritt_(breite + 3 * halb_ + stempelbreite_),
      bild_(gross(schritt_) * gross(hoehe + 4 * halb_ + 1)) {
    schneideStempel();
}

/// One stamp for each part of a pixel that the pen's middle may be in; that pixel is `halb_` on both axes.
void Deckung::schneideStempel() {
    stempel_.reserve(gross(kTeile * kTeile * (2 * halb_ + 1) * stempelbreite_));
    for (int teil = 0; teil < kTeile * kTeile; ++teil) {
        const int spalte = teil % kTeile;
        const int zeile = teil / kTeile;
        const double mitteX = halb_ + (spalte + 0.5) * kGenau;
        const double mitteY = halb_ + (zeile + 0.5) * kGenau;
        for (int y = 0; y <= 2 * halb_; ++y) {
            for (int x = 0; x < stempelbreite_; ++x) {
                const double dx = x + 0.5 - mitteX;
                const double dy = y + 0.5 - mitteY;
                const double weg = std::sqrt(dx * dx + dy * dy);
                stempel_.push_back(
                    static_cast<std::uint8_t>(std::lround(255.0 * std::clamp(radius_ + 0.5 - weg, 0.0, 1.0))));
            }
        }
    }
}

std::span<const std::uint8_t> Deckung::zeile(int y) const {
    return std::span(bild_).subspan(gross(y + 2 * halb_) * gross(schritt_) + gross(2 * halb_), gross(breite_));
}

void Deckung::setzeAn(const Punkt& ort) {
    stift_ = ort;
    stemple(ort);
}

void Deckung::fuehre(const Punkt& ort) {
    if (std::abs(ort.x - stift_.x) >= kGenau || std::abs(ort.y - stift_.y) >= kGenau) {
        verbinde(stift_, ort);
        stift_ = ort;
    }
}

bool Deckung::erreicht(const Punkt& ort) const {
    return ort.x >= -halb_ && ort.y >= -halb_ && ort.x < breite_ + halb_ && ort.y < hoehe_ + halb_;
}

void Deckung::verbinde(const Punkt& a, const Punkt& b) {
    std::pair<double, double> stueck{0.0, 1.0};
    if (!erreicht(a) || !erreicht(b)) {
        beschneide(a.x, b.x, -halb_, breite_ + halb_, stueck);
        beschneide(a.y, b.y, -halb_, hoehe_ + halb_, stueck);
    }
    const auto [von, bis] = stueck;
    if (von > bis) {
        return;
    }
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const int schritte =
        std::max(1, static_cast<int>(std::ceil((bis - von) * std::sqrt(dx * dx + dy * dy) / schrittweite_)));
    const double weite = (bis - von) / schritte;
    for (int i = von > 0 ? 0 : 1; i <= schritte; ++i) {  // the beginning has been stamped
        const double stelle = von + i * weite;
        stemple({a.x + stelle * dx, a.y + stelle * dy});
    }
}

void Deckung::stemple(const Punkt& ort) {
    if (!erreicht(ort)) {
        return;
    }
    // In parts of a pixel; nothing is negative, so that cutting off is rounding down.
    const int x = static_cast<int>((ort.x + halb_) * kTeile);
    const int y = static_cast<int>((ort.y + halb_) * kTeile);
    if (x == gestempeltX_ && y == gestempeltY_) {
        return;
    }
    gestempeltX_ = x;
    gestempeltY_ = y;
    const int hoehe = 2 * halb_ + 1;
    const int breite = stempelbreite_;
    const int schritt = schritt_;
    const std::uint8_t* maske = stempel_.data() + gross(((y % kTeile) * kTeile + x % kTeile) * hoehe) * gross(breite);
    // Where the pen's middle is `halb_` outside of the picture, the stamp's corner is the storage's.
    std::uint8_t* ziel = bild_.data() + gross(y / kTeile) * gross(schritt) + gross(x / kTeile);
    for (int zeile = 0; zeile < hoehe; ++zeile, ziel += schritt, maske += breite) {
        for (int stelle = 0; stelle < breite; stelle += kZugleich) {
            verstaerke(ziel + stelle, maske + stelle);
        }
    }
}

}  // namespace spurkiste
