#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace spurkiste::erzeuge {

/// A stream of made-up numbers that is the same on every machine for the same seed: everything that differs between
/// standard libraries (distributions, sine) is kept out. For the same reason two draws never stand in one expression
/// except in braces: compilers may order them as they like. Not for secrets. One thread at a time. Generator:
/// xoshiro256** 1.0, filled by splitmix64 (D. Blackman and S. Vigna, "Scrambled Linear Pseudorandom Number Generators",
/// ACM Transactions on Mathematical Software 47, 2021).
class Zufall {
  public:
    explicit Zufall(std::uint64_t saat);

    /// A seed for one part of a bigger whole, so that file 17 is the same whatever was made of file 16.
    [[nodiscard]] static std::uint64_t teilsaat(std::uint64_t saat, std::uint64_t nummer);

    [[nodiscard]] std::uint64_t roh();                                    ///< 64 even bits
    [[nodiscard]] double einheit();                                       ///< 0 to below 1, in steps of 2^-53
    [[nodiscard]] double zwischen(double von, double bis);                ///< evenly in [von, bis)
    [[nodiscard]] std::int64_t ganz(std::int64_t von, std::int64_t bis);  ///< evenly, both ends included
    [[nodiscard]] bool mit(double anteil);                                ///< true in this share of the calls
    [[nodiscard]] double glocke();  ///< bell-shaped: mean 0, standard deviation 1, never beyond 3.5
    [[nodiscard]] std::size_t gewichtet(std::span<const double> gewichte);  ///< a position, as likely as its weight

    /// One of the elements, which must outlive the result.
    template <class T>
    [[nodiscard]] const T& aus(std::span<const T> auswahl) {
        return auswahl[static_cast<std::size_t>(ganz(0, static_cast<std::int64_t>(auswahl.size()) - 1))];
    }

  private:
    std::uint64_t zustand_[4];
};

/// Cosine and sine of an angle in radians (at most a few thousand) to nine digits, from additions and
/// multiplications alone: the C library's own differ between machines in the last bit.
[[nodiscard]] double kosinus(double winkel);
[[nodiscard]] double sinus(double winkel);

}  // namespace spurkiste::erzeuge
