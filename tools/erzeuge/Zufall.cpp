#include "erzeuge/Zufall.h"

#include <bit>
#include <cmath>

namespace spurkiste::erzeuge {

namespace {

constexpr double kPi = 3.141592653589793;

std::uint64_t splitmix(std::uint64_t& zustand) {
    zustand += 0x9e3779b97f4a7c15U;
    std::uint64_t z = zustand;
    z = (z ^ (z >> 30)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31);
}

}  // namespace

Zufall::Zufall(std::uint64_t saat) {
    for (std::uint64_t& teil : zustand_) {
        teil = splitmix(saat);
    }
}

std::uint64_t Zufall::teilsaat(std::uint64_t saat, std::uint64_t nummer) {
    std::uint64_t zustand = saat;
    zustand = splitmix(zustand) ^ nummer;
    return splitmix(zustand);
}

std::uint64_t Zufall::roh() {
    const std::uint64_t ergebnis = std::rotl(zustand_[1] * 5, 7) * 9;
    const std::uint64_t t = zustand_[1] << 17;
    zustand_[2] ^= zustand_[0];
    zustand_[3] ^= zustand_[1];
    zustand_[1] ^= zustand_[2];
    zustand_[0] ^= zustand_[3];
    zustand_[2] ^= t;
    zustand_[3] = std::rotl(zustand_[3], 45);
    return ergebnis;
}

double Zufall::einheit() {
    return static_cast<double>(roh() >> 11) * 0x1p-53;
}

double Zufall::zwischen(double von, double bis) {
    return von + (bis - von) * einheit();
}

std::int64_t Zufall::ganz(std::int64_t von, std::int64_t bis) {
    const auto weite = static_cast<std::uint64_t>(bis - von) + 1;
    return von + static_cast<std::int64_t>(roh() % weite);
}

bool Zufall::mit(double anteil) {
    return einheit() < anteil;
}

double Zufall::glocke() {
    // The sum of four even numbers of 16 bits, brought to mean 0 and deviation 1: close enough to the normal curve.
    const std::uint64_t bits = roh();
    const std::uint64_t summe = (bits & 0xffffU) + ((bits >> 16) & 0xffffU) + ((bits >> 32) & 0xffffU) + (bits >> 48);
    return (static_cast<double>(summe) / 65535.0 - 2.0) * 1.7320508075688772;
}

std::size_t Zufall::gewichtet(std::span<const double> gewichte) {
    double summe = 0.0;
    for (const double gewicht : gewichte) {
        summe += gewicht;
    }
    double rest = einheit() * summe;
    for (std::size_t i = 0; i + 1 < gewichte.size(); ++i) {
        rest -= gewichte[i];
        if (rest < 0.0) {
            return i;
        }
    }
    return gewichte.size() - 1;
}

double kosinus(double winkel) {
    // Folded into [-pi/2, pi/2], then the Taylor series to x^14.
    double x = winkel - 2.0 * kPi * std::floor(winkel / (2.0 * kPi) + 0.5);
    double vorzeichen = 1.0;
    if (x > kPi / 2.0) {
        x = kPi - x;
        vorzeichen = -1.0;
    } else if (x < -kPi / 2.0) {
        x = -kPi - x;
        vorzeichen = -1.0;
    }
    const double q = x * x;
    double summe = 1.0;
    for (int n = 14; n >= 2; n -= 2) {
        summe = 1.0 - summe * q / static_cast<double>(n * (n - 1));
    }
    return vorzeichen * summe;
}

double sinus(double winkel) {
    return kosinus(winkel - kPi / 2.0);
}

}  // namespace spurkiste::erzeuge
