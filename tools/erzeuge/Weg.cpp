#include "erzeuge/Weg.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace spurkiste::erzeuge {

namespace {

/// A place or a direction on the plane around the start: metres to the east and to the north.
struct Ebene {
    double x = 0.0;
    double y = 0.0;
};

Ebene operator+(Ebene a, Ebene b) {
    return {a.x + b.x, a.y + b.y};
}
Ebene operator-(Ebene a, Ebene b) {
    return {a.x - b.x, a.y - b.y};
}
Ebene operator*(Ebene a, double faktor) {
    return {a.x * faktor, a.y * faktor};
}
double laenge(Ebene a) {
    return std::sqrt(a.x * a.x + a.y * a.y);
}
Ebene gedreht(Ebene a, double winkel) {
    const double c = kosinus(winkel);
    const double s = sinus(winkel);
    return {a.x * c - a.y * s, a.x * s + a.y * c};
}
Ebene normiert(Ebene a) {
    const double l = laenge(a);
    return l > 0.0 ? a * (1.0 / l) : Ebene{1.0, 0.0};
}

constexpr double kVollkreis = 6.283185307179586;
// A way is longer than the polygon of its turning points by about this factor.
constexpr double kUmweg = 1.25;

// The corners that the way is to pass, the start left out, the end included, scaled to the intended length.
std::vector<Ebene> eckpunkte(const Vorhaben& vorhaben, double meter, Zufall& zufall) {
    std::vector<Ebene> ecken;
    const double richtung = zufall.zwischen(0.0, kVollkreis);
    if (vorhaben.ziel) {
        const Koordinate& von = vorhaben.start;
        const Koordinate& nach = vorhaben.ziel->lage;
        const Ebene ziel{(nach.laenge - von.laenge) * kMeterProGrad * kosinus(bogenmass(von.breite)),
                         (nach.breite - von.breite) * kMeterProGrad};
        const Ebene quer{-ziel.y, ziel.x};
        for (const double anteil : {0.25, 0.5, 0.75}) {
            ecken.push_back(ziel * anteil + quer * (0.12 * zufall.glocke()));
        }
        ecken.push_back(ziel);
        return ecken;
    }
    double umfang = 0.0;
    Ebene letzte;
    const auto haengeAn = [&](Ebene ecke) {
        umfang += laenge(ecke - letzte);
        letzte = ecke;
        ecken.push_back(ecke);
    };
    if (vorhaben.form == Form::runde) {
        // Around a dented circle that passes through the start.
        const auto anzahl = zufall.ganz(4, 9);
        const double sinn = zufall.mit(0.5) ? 1.0 : -1.0;
        const Ebene mitte = gedreht({1.0, 0.0}, richtung);
        for (std::int64_t i = 1; i < anzahl; ++i) {
            const double bruch = (static_cast<double>(i) + zufall.zwischen(-0.35, 0.35)) / static_cast<double>(anzahl);
            const double winkel = sinn * kVollkreis * bruch;
            haengeAn(mitte + gedreht(mitte * -1.0, winkel) * zufall.zwischen(0.45, 1.45));
        }
        haengeAn({});
    } else {
        const Ebene vor = gedreht({1.0, 0.0}, richtung);
        const Ebene quer{-vor.y, vor.x};
        const auto anzahl = zufall.ganz(2, 5);
        for (std::int64_t i = 1; i <= anzahl; ++i) {
            haengeAn(vor * static_cast<double>(i) + quer * (0.45 * zufall.glocke()));
        }
    }
    const double massstab = meter / (kUmweg * umfang);
    for (Ebene& ecke : ecken) {
        ecke = ecke * massstab;
    }
    return ecken;
}

// From corner to corner in steps of equal length, as a road would: bending, now and then turning off sharply, and
// always coming back to the aim.
std::vector<Ebene> folge(const std::vector<Ebene>& ecken, double schritt, double gedaechtnis, std::size_t hoechstens,
                         Zufall& zufall) {
    std::vector<Ebene> weg{{}};
    weg.reserve(hoechstens);
    Ebene ort;
    Ebene richtung = normiert(ecken.front());
    const double frische = std::min(1.0, schritt / gedaechtnis);
    const double behalten = 1.0 - frische;
    double drall = 0.0;
    std::size_t ecke = 0;
    while (weg.size() < hoechstens) {
        Ebene rest = ecken[ecke] - ort;
        double abstand = laenge(rest);
        if (ecke + 1 < ecken.size() && abstand < std::max(1.5 * schritt, 0.5 * gedaechtnis)) {
            rest = ecken[++ecke] - ort;
            abstand = laenge(rest);
        }
        if (ecke + 1 == ecken.size() && abstand <= 1.2 * schritt) {
            weg.push_back(ecken[ecke]);
            break;
        }
        drall = behalten * drall + std::sqrt(1.0 - behalten * behalten) * zufall.glocke();
        const double zug = std::min(1.0, 0.6 * frische + 1.5 * schritt / (abstand + schritt));
        Ebene quer{-richtung.y, richtung.x};
        if (abstand > 4.0 * gedaechtnis && zufall.mit(0.2 * frische)) {
            richtung = quer * (zufall.mit(0.5) ? 1.0 : -1.0);
            quer = {-richtung.y, richtung.x};
        }
        richtung =
            normiert(richtung * (1.0 - zug) + rest * (zug / std::max(abstand, 1e-6)) + quer * (0.55 * frische * drall));
        ort = ort + richtung * schritt;
        weg.push_back(ort);
    }
    return weg;
}

// A way of about this length in about this many steps. How much longer than its corners a way becomes shows only when
// it has been gone: so it is gone twice with the same fortune, the second time with corners or steps to measure.
std::vector<Ebene> lege(const Vorhaben& vorhaben, double meter, double schritte, Zufall& zufall) {
    std::vector<Ebene> ecken = eckpunkte(vorhaben, meter, zufall);
    double schritt = meter / schritte;
    const auto hoechstens = static_cast<std::size_t>(3.0 * schritte) + 2;
    Zufall probe = zufall;
    const auto gebraucht = folge(ecken, schritt, vorhaben.profil->gedaechtnis, hoechstens, probe).size() - 1;
    const double zuviel = static_cast<double>(gebraucht) / schritte;
    if (vorhaben.ziel) {
        schritt *= zuviel;
    } else {
        for (Ebene& ecke : ecken) {
            ecke = ecke * (1.0 / zuviel);
        }
    }
    return folge(ecken, schritt, vorhaben.profil->gedaechtnis, hoechstens, zufall);
}

// An even number in [-1, 1] for each crossing of a square net.
double knoten(std::int64_t x, std::int64_t y, std::uint64_t ebene) {
    std::uint64_t z = static_cast<std::uint64_t>(x) * 0x9e3779b97f4a7c15U ^
                      static_cast<std::uint64_t>(y) * 0xc2b2ae3d27d4eb4fU ^ ebene * 0x165667b19e3779f9U;
    z = (z ^ (z >> 29)) * 0xbf58476d1ce4e5b9U;
    z ^= z >> 32;
    return static_cast<double>(z & 0xffffffffU) / 2147483647.5 - 1.0;
}

double huegel(double x, double y, std::uint64_t ebene) {
    const double zelleX = std::floor(x);
    const double zelleY = std::floor(y);
    const auto i = static_cast<std::int64_t>(zelleX);
    const auto j = static_cast<std::int64_t>(zelleY);
    const double u = x - zelleX;
    const double v = y - zelleY;
    const double glattU = u * u * (3.0 - 2.0 * u);
    const double glattV = v * v * (3.0 - 2.0 * v);
    const double unten = knoten(i, j, ebene) * (1.0 - glattU) + knoten(i + 1, j, ebene) * glattU;
    const double oben = knoten(i, j + 1, ebene) * (1.0 - glattU) + knoten(i + 1, j + 1, ebene) * glattU;
    return unten * (1.0 - glattV) + oben * glattV;
}

/// A disturbance that changes slowly: mean 0, the given deviation, forgotten after `dauer` steps.
class Drift {
  public:
    Drift(double weite, double dauer) : weite_(weite), behalten_(1.0 - 1.0 / dauer) {}
    double naechste(Zufall& zufall) {
        wert_ = behalten_ * wert_ + std::sqrt(1.0 - behalten_ * behalten_) * zufall.glocke();
        return weite_ * wert_;
    }

  private:
    double weite_;
    double behalten_;
    double wert_ = 0.0;
};

// How much slower or faster than on the flat; `steigung` is metres up per metre along.
double tempo(const Sportprofil& profil, double steigung) {
    if (steigung >= 0.0) {
        return 1.0 / (1.0 + profil.bergauf * steigung);
    }
    return std::min(1.0 - 0.35 * profil.bergauf * steigung, 1.6);
}

}  // namespace

double gelaende(const Koordinate& ort) {
    // About metres, and the same net for the whole world.
    const double x = ort.laenge * 75000.0;
    const double y = ort.breite * kMeterProGrad;
    return 0.66 * huegel(x / 5200.0, y / 5200.0, 1) + 0.24 * huegel(x / 1500.0, y / 1500.0, 2) +
           0.08 * huegel(x / 420.0, y / 420.0, 3) + 0.02 * huegel(x / 120.0, y / 120.0, 4);
}

Weg begehe(const Vorhaben& vorhaben, std::size_t punkte, bool geplant, Zufall& zufall) {
    const Sportprofil& profil = *vorhaben.profil;
    const double sekunden = vorhaben.meter / (vorhaben.kmh / 3.6);
    const double dichte = std::max(2.0, std::min(static_cast<double>(punkte), sekunden));
    const bool kehrt = vorhaben.form == Form::hinUndZurueck;
    const double anteil = kehrt ? 0.5 : 1.0;
    std::vector<Ebene> spur = lege(vorhaben, vorhaben.meter * anteil, dichte * anteil, zufall);
    if (kehrt) {
        spur.insert(spur.end(), spur.rbegin() + 1, spur.rend());
    }

    const double relief = vorhaben.ort->relief * profil.relief;
    const double sockel = vorhaben.ort->hoehe - relief * gelaende(vorhaben.start);
    const bool wasser = profil.ort == Ortsart::see;
    const double pausen = geplant ? 0.0 : zufall.zwischen(0.0, wasser ? 1.0 : 5.0);
    const double pausenDichte = pausen / static_cast<double>(spur.size());
    const bool trenntPausen = zufall.mit(0.3);
    const double rauschen = geplant ? 0.0 : wasser ? 2.6 : 2.2;
    // Receivers wander over tens of seconds, however often they write a point.
    const double dauer = std::max(1.5, 25.0 * dichte / sekunden);
    Drift fehlerX(rauschen, dauer);
    Drift fehlerY(rauschen, dauer);
    Drift fehlerHoehe(geplant ? 0.0 : 2.5, 8.0 * dauer);
    Drift laune(0.08, 4.0 * dauer);

    Weg weg;
    weg.punkte.reserve(spur.size());
    weg.segmente.push_back(0);
    auto zeit = static_cast<double>(vorhaben.beginn);
    double bodenVorher = vorhaben.ort->hoehe;
    double puls = 0.7 * profil.puls;
    for (std::size_t i = 0; i < spur.size(); ++i) {
        const double boden = sockel + relief * gelaende(versetzt(vorhaben.start, spur[i].x, spur[i].y));
        if (i > 0) {
            const double strecke = laenge(spur[i] - spur[i - 1]);
            const double steigung = strecke > 0.0 ? (boden - bodenVorher) / strecke : 0.0;
            zeit += strecke * 3.6 / (vorhaben.kmh * tempo(profil, steigung) * (1.0 + laune.naechste(zufall)));
            puls += 0.04 * (profil.puls * (1.0 + 1.2 * std::clamp(steigung, -0.1, 0.2)) - puls) + 0.6 * zufall.glocke();
            bool neuesSegment = false;
            if (zufall.mit(pausenDichte)) {
                const double kurz = zufall.einheit();
                zeit += 30.0 + 1500.0 * kurz * kurz;
                neuesSegment = trenntPausen && i + 1 < spur.size();
            }
            if (neuesSegment) {
                weg.segmente.push_back(i);
            } else {
                weg.meter += strecke;
                weg.anstieg += std::max(0.0, boden - bodenVorher);
            }
        }
        bodenVorher = boden;
        Wegpunkt punkt;
        const Ebene gemessen = spur[i] + Ebene{fehlerX.naechste(zufall), fehlerY.naechste(zufall)};
        punkt.ort = versetzt(vorhaben.start, gemessen.x, gemessen.y);
        punkt.hoehe = boden + fehlerHoehe.naechste(zufall);
        punkt.zeit = static_cast<std::int64_t>(zeit);
        if (i > 0) {
            punkt.zeit = std::max(punkt.zeit, weg.punkte.back().zeit + 1);
        }
        punkt.puls = static_cast<std::int64_t>(std::clamp(puls, 55.0, 196.0));
        weg.punkte.push_back(punkt);
    }
    return weg;
}

}  // namespace spurkiste::erzeuge
