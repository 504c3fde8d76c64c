#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "erzeuge/Orte.h"
#include "erzeuge/Sportprofil.h"
#include "erzeuge/Zufall.h"
#include "geo/Koordinate.h"

namespace spurkiste::erzeuge {

/// The shape of a way, in the order of Sportprofil::formen.
enum class Form { runde, hinUndZurueck, strecke };

/// A door, a station, a car park: where somebody sets out again and again.
struct Startplatz {
    const Ort* ort = nullptr;
    Koordinate lage;
};

/// What somebody sets out to do, before the first step.
struct Vorhaben {
    const Sportprofil* profil = nullptr;
    const Ort* ort = nullptr;  ///< the place that names it
    Koordinate start;
    std::optional<Startplatz> ziel;  ///< a known place to arrive at; only for Form::strecke
    Form form = Form::runde;
    double meter = 0.0;       ///< intended length
    double kmh = 0.0;         ///< speed of that day on the flat
    std::int64_t beginn = 0;  ///< seconds since 1970-01-01 00:00:00 UTC
};

/// The made-up owner of a library: lives somewhere, has favourite car parks, does some sports more than others.
class Mensch {
  public:
    /// `anzahl` is the number of tracks of the whole life: who records more knows more places.
    Mensch(std::uint64_t saat, std::size_t anzahl);

    /// Something to do. `sport` fixes the sport, else the person's taste decides.
    [[nodiscard]] Vorhaben plane(Zufall& zufall, std::optional<GpxSportart> sport = std::nullopt) const;

  private:
    [[nodiscard]] Startplatz waehleStart(Zufall& zufall, const Sportprofil& profil) const;
    [[nodiscard]] std::optional<Startplatz> waehleZiel(Zufall& zufall, const Startplatz& start, double meter) const;

    std::vector<Startplatz> tueren_;
    std::vector<Startplatz> parkplaetze_;
    std::vector<const Ort*> seen_;
    std::vector<const Ort*> pisten_;
};

/// Metres per degree of latitude on the sphere of entfernung().
inline constexpr double kMeterProGrad = 111194.9266;

/// `punkt` moved by metres to the east and to the north, as on a plane: for a few hundred kilometres at most.
[[nodiscard]] Koordinate versetzt(const Koordinate& punkt, double ost, double nord);

}  // namespace spurkiste::erzeuge
