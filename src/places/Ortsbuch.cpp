#include "places/Ortsbuch.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <span>
#include <tuple>

#include "base/Dateien.h"
#include "base/Text.h"
#include "places/OrtsZeile.h"
#include "places/Zelle.h"
#include "platform/Ressourcen.h"

namespace spurkiste {

namespace {

constexpr double kEinheit = 1.0 / OrtsZeile::kJeGrad;  ///< of an Ort's coordinates, in degrees, for estimates
constexpr std::size_t kGroessteDatei = std::numeric_limits<std::uint32_t>::max();

}  // namespace

/// One search: asks of each place in turn whether it is the best so far.
///
/// The exact distance costs four trigonometric functions, and a search in a dense region meets 700 places. So a place
/// is first held against a lower bound of its distance. With the differences u of latitude and w of longitude in
/// radians, at most 0.3 degrees each, and the latitude p of the point,
///   sin^2(t) >= t^2 (1 - t^2/3)                          so sin^2(u/2) >= (1 - 3e-6) u^2/4, for w alike, and
///   cos(p + u) >= cos(p) - u sin(p) - u^2/2              (Taylor; the second derivative is at most 1),
/// the haversine is at least (1 - 3e-6)/4 * (u^2 + cos(p) (cos(p) - u sin(p) - u^2/2) w^2), and the distance at least
/// the diameter times its root, for asin(t) >= t. A millimetre and relative 1e-5 on top cover the factor and every
/// rounding error (below a micrometre). So a place beyond the bound is farther away than the best one so far or than
/// the greatest distance asked for, and leaving it out changes nothing; all others are decided exactly.
class Ortsbuch::Suche {
  public:
    Suche(const Ortsbuch& buch, const Koordinate& punkt, const Zelle& mitte, double maxMeter)
        : buch_(buch),
          punkt_(punkt),
          breite_(punkt.breite * OrtsZeile::kJeGrad),
          laenge_(punkt.laenge * OrtsZeile::kJeGrad),
          kosinus_(std::cos(bogenmass(punkt.breite))),
          sinusJeGrad_(std::sin(bogenmass(punkt.breite)) * bogenmass(1.0)),
          maxMeter_(maxMeter),
          // The bound holds where neighbours in number are neighbours on the earth: not at the ends of the rows, which
          // run on into each other, and not where cosines are negative.
          filtert_(std::fabs(punkt.breite) <= 90.0 && mitte.spalte >= Zelle::kUmkreis &&
                   mitte.spalte < Zelle::kSpalten - Zelle::kUmkreis),
          ueberSuedrand_(punkt.breite + 90.0 - static_cast<double>(mitte.zeile) * Zelle::kGrad),
          grenze_(filtert_ ? grenzeFuer(maxMeter) : std::numeric_limits<double>::infinity()) {}

    /// Whether a row so many (but not 0) north of the point's own may hold the best place: none of its places is nearer
    /// than the row itself.
    [[nodiscard]] bool erreicht(std::int64_t versatz) const {
        const double weite = static_cast<double>(versatz) * Zelle::kGrad - ueberSuedrand_;
        const double abstand = versatz > 0 ? weite : -weite - Zelle::kGrad;
        return !(abstand * abstand > grenze_);
    }

    /// Starts with what looks like the best of a stretch, so that few others are worth an exact look.
    void beginneMit(std::span<const Ort> strecke) {
        double kleinste = std::numeric_limits<double>::infinity();
        const Ort* aussichtsreich = nullptr;
        for (const Ort& ort : strecke) {
            if (const double wert = schranke(ort); wert < kleinste) {
                kleinste = wert;
                aussichtsreich = &ort;
            }
        }
        if (aussichtsreich != nullptr) {
            pruefe(*aussichtsreich);
        }
    }

    void pruefe(const Ort& ort) {
        if ((!(schranke(ort) > grenze_) || ort.breite == kInGenau) && name() != ort.name) {
            pruefeGenau(buch_.lage(ort), ort.zelle, ort.name);
        }
    }

    /// Places may come in any order: of two at the same distance the one of the lower cell stays, then the earlier one.
    void pruefeGenau(const Koordinate& lage, std::int64_t zelle, std::uint32_t name) {
        const double abstand = entfernung(punkt_, lage);
        const Rang rang{abstand, zelle, name};
        if (abstand <= maxMeter_ && (!bester_ || rang < *bester_)) {
            bester_ = rang;
            if (filtert_) {
                grenze_ = grenzeFuer(abstand);
            }
        }
    }

    /// Where the name of the best place begins.
    [[nodiscard]] std::optional<std::uint32_t> name() const {
        return bester_ ? std::optional(std::get<2>(*bester_)) : std::nullopt;
    }

  private:
    using Rang = std::tuple<double, std::int64_t, std::uint32_t>;  ///< distance, cell, beginning of the name

    /// The square, in degrees, of the lower bound. Means nothing for a place that is kInGenau.
    [[nodiscard]] double schranke(const Ort& ort) const {
        const double u = (ort.breite - breite_) * kEinheit;
        const double w = (ort.laenge - laenge_) * kEinheit;
        constexpr double halbesQuadrat = bogenmass(1.0) * bogenmass(1.0) / 2.0;
        return u * u + kosinus_ * (kosinus_ - u * sinusJeGrad_ - u * u * halbesQuadrat) * w * w;
    }

    /// The square, in degrees, that the bound of a place within `meter` metres does not exceed.
    static double grenzeFuer(double meter) {
        constexpr double meterJeGrad = kErddurchmesser / 2.0 * bogenmass(1.0);
        const double grad = (std::max(meter, 0.0) + 0.001) * (1.0 + 1e-5) / meterJeGrad;
        return grad * grad;
    }

    const Ortsbuch& buch_;
    Koordinate punkt_;
    double breite_;  ///< of the point, in the units of an Ort
    double laenge_;
    double kosinus_;
    double sinusJeGrad_;
    double maxMeter_;
    bool filtert_;
    double ueberSuedrand_;
    double grenze_;
    std::optional<Rang> bester_;
};

Ortsbuch::Ortsbuch(std::string_view inhalt) {
    erwarte(inhalt.size());
    if (nimmZeilen(inhalt)) {
        ordneNachZellen();
    }
}

/// Reads in pieces: a buffer that is used again and again stays in the cache, and nothing of the text but the names is
/// kept. Touching fresh memory for the whole of it would take a third of the loading time.
Ortsbuch::Ortsbuch(dateien::Leser& datei) {
    constexpr std::size_t stueck = 65536;
    std::string puffer;
    erwarte(datei.groesse());
    for (bool weiter = true; weiter;) {
        const std::size_t rest = puffer.size();
        puffer.resize(rest + stueck);
        const std::size_t neu = datei.lies(std::span(puffer).subspan(rest), lesefehler_);
        if (lesefehler_) {
            vergiss();
            return;
        }
        puffer.resize(rest + neu);
        weiter = neu == stueck;
        const std::size_t ganzeZeilen = weiter ? puffer.rfind('\n') + 1 : puffer.size();
        if (!nimmZeilen(std::string_view(puffer).substr(0, ganzeZeilen))) {
            return;
        }
        puffer.erase(0, ganzeZeilen);
    }
    ordneNachZellen();
}

const Ortsbuch& Ortsbuch::geteilt() {
    static const Ortsbuch buch = [] {
        std::error_code unauffindbar;
        const auto pfad = ressourcen::finde("orte", "tsv", unauffindbar);
        try {
            if (pfad) {
                dateien::Leser datei(*pfad);
                return datei.groesse() <= kGroessteDatei ? Ortsbuch(datei) : Ortsbuch(std::string_view());
            }
        } catch (const std::system_error& fehler) {
            return Ortsbuch(fehler.code());
        }
        return Ortsbuch(unauffindbar);
    }();
    return buch;
}

/// Makes room for the places of a text of that size with names and figures of usual length. Lists that grow by doubling
/// would touch twice the memory, while room that stays unused is never touched.
void Ortsbuch::erwarte(std::size_t bytes) {
    orte_.reserve(bytes / 20);
    namen_.reserve(bytes / 2);
}

/// Takes whole lines; forgets everything and returns false when they are not UTF-8.
bool Ortsbuch::nimmZeilen(std::string_view zeilen) {
    if (!text::istUtf8(zeilen)) {
        vergiss();
        return false;
    }
    for (std::size_t anfang = 0; anfang < zeilen.size();) {
        const std::size_t ende = std::min(zeilen.find('\n', anfang), zeilen.size());
        if (const auto ort = OrtsZeile::lies(zeilen.substr(anfang, ende - anfang))) {
            nimmAuf(*ort);
        }
        anfang = ende + 1;
    }
    return true;
}

void Ortsbuch::vergiss() {
    namen_.clear();
    orte_.clear();
    genau_.clear();
    aussen_.clear();
}

void Ortsbuch::nimmAuf(const OrtsZeile& ort) {
    const auto zelle = Zelle::von(ort.lage);
    if (!zelle) {
        return;
    }
    assert(namen_.size() <= std::numeric_limits<std::uint32_t>::max());
    const auto name = static_cast<std::uint32_t>(namen_.size());
    namen_.append(ort.name).push_back('\n');
    if (!(std::fabs(ort.lage.breite) <= 90.0 && std::fabs(ort.lage.laenge) <= 180.0)) {
        aussen_.push_back({ort.lage, zelle->nummer(), name});
        return;
    }
    const auto nummer = static_cast<std::uint32_t>(zelle->nummer());
    if (ort.rund) {
        orte_.push_back({ort.rund->breite, ort.rund->laenge, nummer, name});
    } else {
        orte_.push_back({kInGenau, static_cast<std::int32_t>(genau_.size()), nummer, name});
        genau_.push_back(ort.lage);
    }
}

Koordinate Ortsbuch::lage(const Ort& ort) const {
    if (ort.breite == kInGenau) {
        return genau_[static_cast<std::size_t>(ort.laenge)];
    }
    return {ort.breite / OrtsZeile::kJeGrad, ort.laenge / OrtsZeile::kJeGrad};
}

void Ortsbuch::ordneNachZellen() {
    std::sort(orte_.begin(), orte_.end(), [](const Ort& a, const Ort& b) { return a.zelle < b.zelle; });
}

std::optional<std::string_view> Ortsbuch::naechster(const Koordinate& punkt, double maxMeter) const {
    assert(std::isfinite(punkt.breite) && std::isfinite(punkt.laenge));
    const auto mitte = Zelle::von(punkt);
    if (!mitte || anzahl() == 0) {
        return std::nullopt;
    }
    Suche suche(*this, punkt, *mitte, maxMeter);
    const auto westenVon = [&](std::int64_t versatz) {
        return Zelle{mitte->zeile + versatz, mitte->spalte - Zelle::kUmkreis}.nummer();
    };
    // The five cells of a row have consecutive numbers, so they are one stretch of the list.
    const auto strecke = [&](std::int64_t versatz) {
        const std::int64_t westen = westenVon(versatz);
        const auto anfang =
            std::partition_point(orte_.begin(), orte_.end(), [westen](const Ort& ort) { return ort.zelle < westen; });
        const auto ende = std::find_if(anfang, orte_.end(),
                                       [westen](const Ort& ort) { return ort.zelle > westen + 2 * Zelle::kUmkreis; });
        return std::span(anfang, ende);
    };
    // The middle row first: it mostly makes the outer ones needless.
    const auto mittlere = strecke(0);
    suche.beginneMit(mittlere);
    std::for_each(mittlere.begin(), mittlere.end(), [&](const Ort& ort) { suche.pruefe(ort); });
    for (const std::int64_t versatz : {1, -1, 2, -2}) {
        if (suche.erreicht(versatz)) {
            const auto aeussere = strecke(versatz);
            std::for_each(aeussere.begin(), aeussere.end(), [&](const Ort& ort) { suche.pruefe(ort); });
        }
    }
    for (const Aussenseiter& ort : aussen_) {
        for (std::int64_t versatz = -Zelle::kUmkreis; versatz <= Zelle::kUmkreis; ++versatz) {
            if (ort.zelle >= westenVon(versatz) && ort.zelle <= westenVon(versatz) + 2 * Zelle::kUmkreis) {
                suche.pruefeGenau(ort.lage, ort.zelle, ort.name);
            }
        }
    }
    const auto name = suche.name();
    return name ? std::optional(std::string_view(namen_).substr(*name, namen_.find('\n', *name) - *name))
                : std::nullopt;
}

}  // namespace spurkiste
