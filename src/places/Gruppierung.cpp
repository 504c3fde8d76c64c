#include "places/Gruppierung.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <utility>

#include "places/ZentrenGitter.h"

namespace spurkiste {

namespace {

/// A centre's place in the grid stays as it is until the centre may have moved by this much.
constexpr double kNachziehMeter = 10.0;
/// Covers the rounding of everything below, which for ordinary coordinates stays below a metre.
constexpr double kSpielMeter = 5.0;
constexpr double kErdradius = kErddurchmesser / 2.0;
/// Beyond so many degrees a double no longer tells places 300 m apart, and the grid cannot answer.
constexpr double kGewoehnlichGrad = 1e10;

/// Lists that grow by doubling touch twice the memory, and fresh memory costs more than anything done with it here.
constexpr std::size_t kUeblicheGruppen = 4096;

bool istGewoehnlich(const Koordinate& punkt) {
    return std::fabs(punkt.breite) <= kGewoehnlichGrad && std::fabs(punkt.laenge) <= kGewoehnlichGrad;
}

/// Whether any point can be within any distance of it: if not, distances from it are not a number.
bool istErreichbar(const Koordinate& punkt) {
    return std::isfinite(bogenmass(punkt.breite)) && std::isfinite(punkt.laenge);
}

Raumpunkt raumpunkt(const Koordinate& punkt) {
    const double breite = bogenmass(punkt.breite);
    const double laenge = bogenmass(punkt.laenge);
    const double kosinus = std::cos(breite);
    return {kosinus * std::cos(laenge), kosinus * std::sin(laenge), std::sin(breite)};
}

/// The groups while they grow.
///
/// Which group takes a point is always decided by entfernung() between the point and the present centre; the grid only
/// says which groups are worth asking, and never leaves out one that would be taken. For the haversine is a quarter of
/// the square of the chord, sin^2(u/2) + cos(p) cos(q) sin^2(w/2) = |P - Q|^2 / 4 with P and Q on the unit sphere, for
/// latitudes of any size; so a group at most 300 m away has its centre within 300 m / radius in space, as a chord is
/// shorter than its arc. Its entry in the grid lies at most kNachziehMeter from there (an angle is at most the sum of
/// the differences of latitude and longitude), and the grid sees farther than both together by kSpielMeter.
class Gruppierer {
  public:
    explicit Gruppierer(std::size_t punkte)
        : gitter_((Gruppierung::kUmkreisMeter + kNachziehMeter + kSpielMeter) / kErdradius, kUeblicheGruppen) {
        ergebnis_.gruppeZuPunkt.reserve(punkte);
        ergebnis_.gruppen.reserve(kUeblicheGruppen);
        eingetragen_.reserve(kUeblicheGruppen);
    }

    void nimm(const std::optional<Koordinate>& punkt) {
        std::uint32_t nummer = Gruppierung::kKeine;
        if (punkt) {
            assert(std::isfinite(punkt->breite) && std::isfinite(punkt->laenge));
            const auto ort = istGewoehnlich(*punkt) ? std::optional(raumpunkt(*punkt)) : std::nullopt;
            nummer = finde(*punkt, ort);
            if (nummer == Gruppierung::kKeine) {
                nummer = gruende(*punkt, ort);
            } else {
                Gruppe& gruppe = ergebnis_.gruppen[nummer];
                gruppe.summeBreite += punkt->breite;
                gruppe.summeLaenge += punkt->laenge;
                gruppe.anzahl += 1.0;
                zieheNach(nummer);
            }
        }
        ergebnis_.gruppeZuPunkt.push_back(nummer);
    }

    [[nodiscard]] Gruppierung ergebnis() && { return std::move(ergebnis_); }

  private:
    /// The group that takes the point; `ort` is its place in space, if it is an ordinary one.
    [[nodiscard]] std::uint32_t finde(const Koordinate& punkt, const std::optional<Raumpunkt>& ort) const {
        const auto nimmtAuf = [&](std::uint32_t nummer) {
            return entfernung(punkt, ergebnis_.gruppen[nummer].mitte()) <= Gruppierung::kUmkreisMeter;
        };
        if (!istErreichbar(punkt)) {
            return Gruppierung::kKeine;
        }
        if (!ort) {
            std::uint32_t nummer = 0;
            while (nummer < ergebnis_.gruppen.size() && !nimmtAuf(nummer)) {
                ++nummer;
            }
            return nummer < ergebnis_.gruppen.size() ? nummer : Gruppierung::kKeine;
        }
        const std::uint32_t nahe = gitter_.kleinste(*ort, nimmtAuf);
        const auto ferne = std::find_if(ferne_.begin(), ferne_.end(),
                                        [&](std::uint32_t nummer) { return nummer > nahe || nimmtAuf(nummer); });
        return ferne == ferne_.end() ? nahe : std::min(nahe, *ferne);
    }

    std::uint32_t gruende(const Koordinate& punkt, const std::optional<Raumpunkt>& ort) {
        const auto nummer = static_cast<std::uint32_t>(ergebnis_.gruppen.size());
        ergebnis_.gruppen.push_back({punkt.breite, punkt.laenge, 1.0});
        eingetragen_.push_back(ort ? punkt : Koordinate{std::nan(""), std::nan("")});
        if (ort) {
            gitter_.setze(nummer, *ort);
        } else if (istErreichbar(punkt)) {
            ferne_.push_back(nummer);
        }
        return nummer;
    }

    /// Enters the centre of a changed group where finde() looks for it.
    void zieheNach(std::uint32_t nummer) {
        const Koordinate mitte = ergebnis_.gruppen[nummer].mitte();
        const auto stelle = std::lower_bound(ferne_.begin(), ferne_.end(), nummer);
        const bool istFern = stelle != ferne_.end() && *stelle == nummer;
        if (!istErreichbar(mitte)) {
            if (istFern) {
                ferne_.erase(stelle);
            }
        } else if (!istGewoehnlich(mitte)) {
            if (!istFern) {
                ferne_.insert(stelle, nummer);
            }
        } else {
            Koordinate& eingetragen = eingetragen_[nummer];
            const double wegGrad =
                std::fabs(mitte.breite - eingetragen.breite) + std::fabs(mitte.laenge - eingetragen.laenge);
            constexpr double grenzeGrad = kNachziehMeter / kErdradius / bogenmass(1.0);
            if (!(wegGrad <= grenzeGrad)) {
                eingetragen = mitte;
                gitter_.setze(nummer, raumpunkt(mitte));
            }
        }
    }

    Gruppierung ergebnis_;
    ZentrenGitter gitter_;
    std::vector<Koordinate> eingetragen_;  ///< the centres as the grid knows them; not a number: it does not
    std::vector<std::uint32_t> ferne_;     ///< ascending: groups to be asked one by one, for the grid cannot hold them
};

}  // namespace

Gruppierung Gruppierung::aus(std::span<const std::optional<Koordinate>> punkte) {
    assert(punkte.size() < kKeine);
    Gruppierer gruppierer(punkte.size());
    for (const auto& punkt : punkte) {
        gruppierer.nimm(punkt);
    }
    return std::move(gruppierer).ergebnis();
}

}  // namespace spurkiste
