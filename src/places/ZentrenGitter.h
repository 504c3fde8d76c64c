#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace spurkiste {

/// A point in space; the unit sphere stands for the earth.
using Raumpunkt = std::array<double, 3>;

/// Finds, among numbered points on the unit sphere that keep moving, the lowest number near a given point. In space the
/// poles and the 180th degree are places like any other.
///
/// Space is divided into cubes; those that were ever used stand in a hash table. A cube that fills up is divided into
/// eight, again and again, so that thousands of points in one spot (the means of longitudes on both sides of the 180th
/// degree all lie near 0) cost a search hardly more than one does. Not for several threads at once.
class ZentrenGitter {
  public:
    static constexpr std::uint32_t kKeine = std::numeric_limits<std::uint32_t>::max();

    /// `reichweite` is how far a search sees, with the sphere's radius as the unit: 0.00002 to 1, good to a
    /// ten-millionth. Room is reserved for `erwartet` numbers; as much of it as numbers come is used.
    ZentrenGitter(double reichweite, std::size_t erwartet);

    /// Enters the point with that number, or moves it.
    void setze(std::uint32_t nummer, const Raumpunkt& ort);

    /// The lowest number for which pruefe(number) is true among the points within reach of `ort`, or kKeine. Which
    /// numbers are asked about, and how often, is left open; `pruefe` must not call setze().
    template <typename Pruefung>
    [[nodiscard]] std::uint32_t kleinste(const Raumpunkt& ort, Pruefung pruefe) const {
        Wuerfelnummer von{};
        Wuerfelnummer bis{};
        for (std::size_t achse = 0; achse < 3; ++achse) {
            von[achse] = wuerfelAuf(ort[achse] - reichweite_);
            bis[achse] = wuerfelAuf(ort[achse] + reichweite_);
        }
        std::uint32_t beste = kKeine;
        for (std::int64_t x = von[0]; x <= bis[0]; ++x) {
            for (std::int64_t y = von[1]; y <= bis[1]; ++y) {
                for (std::int64_t z = von[2]; z <= bis[2]; ++z) {
                    const std::uint32_t knoten = faecher_[fachVon(schluessel({x, y, z}))];
                    if (knoten != kKeine) {
                        sucheIn(knoten, {ecke({x, y, z}), kante_}, ort, pruefe, beste);
                    }
                }
            }
        }
        return beste;
    }

  private:
    using Wuerfelnummer = std::array<std::int64_t, 3>;  ///< of a cube: its number on each axis, from 0

    struct Wuerfel {
        Raumpunkt ecke;  ///< the lowest corner
        double kante;
    };
    struct Punkt {
        std::array<float, 3> ort{};
        std::uint32_t knoten = kKeine;  ///< where it hangs; kKeine: never entered
        std::uint32_t davor = kKeine;   ///< neighbours in the ring of its node
        std::uint32_t danach = kKeine;
    };
    /// A cube, whole or divided.
    struct Knoten {
        std::uint64_t schluessel = 0;     ///< of the undivided cubes
        std::uint32_t erster = kKeine;    ///< of the ring of its points, the longest there first
        std::uint32_t anzahl = 0;         ///< of the ring
        std::uint32_t kleinste = kKeine;  ///< no point in it or below has a lower number
        std::uint32_t kinder = kKeine;    ///< the first of eight nodes once it is divided
    };

    template <typename Pruefung>
    void sucheIn(std::uint32_t nummer, const Wuerfel& wuerfel, const Raumpunkt& ort, Pruefung& pruefe,
                 std::uint32_t& beste) const {
        const Knoten& knoten = knoten_[nummer];
        if (knoten.kleinste >= beste || abstandQuadrat(wuerfel, ort) > reichweite_ * reichweite_) {
            return;
        }
        if (knoten.kinder != kKeine) {
            for (std::uint32_t kind = 0; kind < 8; ++kind) {
                sucheIn(knoten.kinder + kind, teil(wuerfel, kind), ort, pruefe, beste);
            }
            return;
        }
        std::uint32_t i = knoten.erster;
        for (std::uint32_t rest = knoten.anzahl; rest > 0; --rest, i = punkte_[i].danach) {
            if (i < beste && abstandQuadrat({raumpunkt(punkte_[i]), 0.0}, ort) <= reichweite_ * reichweite_ &&
                pruefe(i)) {
                beste = i;
            }
        }
    }

    /// The square of the distance between a point and a cube, 0 inside it.
    static double abstandQuadrat(const Wuerfel& wuerfel, const Raumpunkt& ort) {
        double summe = 0.0;
        for (std::size_t achse = 0; achse < 3; ++achse) {
            const double unten = wuerfel.ecke[achse] - ort[achse];
            const double abstand = std::max(std::max(unten, -unten - wuerfel.kante), 0.0);
            summe += abstand * abstand;
        }
        return summe;
    }

    static Raumpunkt raumpunkt(const Punkt& punkt) {
        return {double{punkt.ort[0]}, double{punkt.ort[1]}, double{punkt.ort[2]}};
    }
    [[nodiscard]] std::int64_t wuerfelAuf(double wert) const {
        return static_cast<std::int64_t>((wert + kVersatz) * jeEinheit_);
    }
    [[nodiscard]] Raumpunkt ecke(const Wuerfelnummer& wuerfel) const;
    static Wuerfel teil(const Wuerfel& wuerfel, std::uint32_t kind);
    static std::uint32_t kindVon(const Wuerfel& wuerfel, const Raumpunkt& ort);
    static std::uint64_t schluessel(const Wuerfelnummer& wuerfel) {
        return static_cast<std::uint64_t>(wuerfel[0] << 32 | wuerfel[1] << 16 | wuerfel[2]);
    }

    /// The compartment of the hash table that holds the key, or the free one where it belongs.
    [[nodiscard]] std::size_t fachVon(std::uint64_t schluessel) const {
        std::size_t fach = (schluessel * 0x9E3779B97F4A7C15U) >> verschiebung_;
        while (faecher_[fach] != kKeine && knoten_[faecher_[fach]].schluessel != schluessel) {
            fach = (fach + 1) & (faecher_.size() - 1);
        }
        return fach;
    }
    std::uint32_t belege(std::uint64_t schluessel);
    void haengeEin(std::uint32_t knoten, Wuerfel wuerfel, std::uint32_t nummer, int tiefe);
    void haengeAus(std::uint32_t nummer);
    void fuegeInRing(std::uint32_t knoten, std::uint32_t nummer);

    static constexpr double kVersatz = 3.0;  ///< makes every coordinate that occurs positive

    double reichweite_;
    double kante_;
    double jeEinheit_;  ///< cubes
    unsigned verschiebung_;
    std::size_t belegt_ = 0;
    std::vector<std::uint32_t> faecher_;  ///< nodes by key, open addressing; kKeine: free; as many as a power of two
    std::vector<Knoten> knoten_;
    std::vector<Punkt> punkte_;
};

}  // namespace spurkiste
