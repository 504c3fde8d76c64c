#include "track/GpxStatistik.h"

#include <algorithm>

#include "base/Text.h"

namespace spurkiste {

namespace {

/// Adds the summand unless the sum would then no longer be finite, and returns whether it did.
bool nimmDazu(double& summe, double summand) {
    const double neu = summe + summand;
    if (!std::isfinite(neu)) {
        return false;
    }
    summe = neu;
    return true;
}

/// Mean of the elevation at `stelle` and of up to two on either side.
double geglaettet(std::span<const GpxPunkt> lauf, std::size_t stelle) {
    const std::size_t von = stelle < 2 ? 0 : stelle - 2;
    const std::size_t bis = std::min(stelle + 3, lauf.size());
    double summe = 0.0;
    for (std::size_t i = von; i < bis; ++i) {
        summe += lauf[i].hoehe;
    }
    return summe / static_cast<double>(bis - von);
}

double anstiegImLauf(std::span<const GpxPunkt> lauf) {
    double summe = 0.0;
    if (lauf.size() < 4) {
        return summe;  // every window holds the whole run: a flat line
    }
    double vorher = geglaettet(lauf, 0);
    for (std::size_t i = 1; i < lauf.size(); ++i) {
        const double jetzt = geglaettet(lauf, i);
        if (jetzt > vorher) {
            nimmDazu(summe, jetzt - vorher);
        }
        vorher = jetzt;
    }
    return summe;
}

/// The position behind the run of neighbours in one segment that begins at `von`.
std::size_t laufEnde(std::span<const GpxPunkt> punkte, std::size_t von) {
    std::size_t bis = von + 1;
    while (bis < punkte.size() && punkte[bis].segment == punkte[von].segment) {
        ++bis;
    }
    return bis;
}

}  // namespace

double GpxStatistik::strecke(std::span<const GpxPunkt> punkte) {
    double summe = 0.0;
    double kosinusVorher = 0.0;  // every point is met twice, and a cosine costs as much as a sine
    for (std::size_t i = 0; i < punkte.size(); ++i) {
        const double kosinus = std::cos(bogenmass(punkte[i].ort.breite));
        if (i > 0 && punkte[i].segment == punkte[i - 1].segment) {
            nimmDazu(summe, entfernungMitKosinus(punkte[i - 1].ort, kosinusVorher, punkte[i].ort, kosinus));
        }
        kosinusVorher = kosinus;
    }
    return summe;
}

double GpxStatistik::anstieg(std::span<const GpxPunkt> punkte) {
    double summe = 0.0;
    std::size_t von = 0;
    for (std::size_t i = 0; i < punkte.size(); ++i) {
        if (!punkte[i].hatHoehe()) {
            nimmDazu(summe, anstiegImLauf(punkte.subspan(von, i - von)));
            von = i + 1;
        } else if (i > von && punkte[i].segment != punkte[von].segment) {
            nimmDazu(summe, anstiegImLauf(punkte.subspan(von, i - von)));
            von = i;
        }
    }
    nimmDazu(summe, anstiegImLauf(punkte.subspan(von)));
    return summe;
}

bool GpxStatistik::istRundkurs(double streckeMeter, const Koordinate& start, const Koordinate& ende) {
    return streckeMeter >= 1000.0 && entfernung(start, ende) < 200.0;
}

Skizze GpxStatistik::skizze(std::span<const GpxPunkt> punkte) {
    const std::size_t schritt = std::max<std::size_t>(punkte.size() / 256, 1);
    Skizze::Bau bau;
    for (std::size_t von = 0; von < punkte.size();) {
        const std::size_t bis = laufEnde(punkte, von);
        bau.beginneLinie();
        for (std::size_t i = von; i < bis; i += schritt) {
            bau.haengeAn(punkte[i].ort);
        }
        if ((bis - 1 - von) % schritt != 0) {
            bau.haengeAn(punkte[bis - 1].ort);
        }
        von = bis;
    }
    return std::move(bau).fertig();
}

void WetterBilanz::Mittel::nimm(std::optional<double> wert) {
    if (wert && nimmDazu(summe_, *wert)) {
        ++anzahl_;
    }
}

std::optional<double> WetterBilanz::Mittel::wert() const {
    return anzahl_ == 0 ? std::nullopt : std::optional(summe_ / static_cast<double>(anzahl_));
}

void WetterBilanz::Haeufigster::nimm(std::optional<std::string_view> text) {
    const auto getrimmt = text::trimme(text.value_or(std::string_view()));
    if (!getrimmt.empty()) {
        ++texte_.try_emplace(std::string(getrimmt), Zaehler{0, texte_.size()}).first->second.anzahl;
    }
}

std::optional<std::string> WetterBilanz::Haeufigster::wert() const {
    const auto seltener = [](const auto& a, const auto& b) {
        return a.second.anzahl != b.second.anzahl ? a.second.anzahl < b.second.anzahl : a.second.rang > b.second.rang;
    };
    const auto bester = std::max_element(texte_.begin(), texte_.end(), seltener);
    return bester == texte_.end() ? std::nullopt : std::optional(bester->first);
}

void WetterBilanz::nimm(const WetterProbe& probe) {
    temperatur_.nimm(probe.temperatur);
    feuchte_.nimm(probe.feuchte);
    wind_.nimm(probe.wind);
    windrichtung_.nimm(probe.windrichtung);
    lage_.nimm(probe.lage);
    ++messpunkte_;
}

std::optional<GpxWetter> WetterBilanz::zusammenfassung() const {
    if (messpunkte_ == 0) {
        return std::nullopt;
    }
    return GpxWetter{temperatur_.wert(),   feuchte_.wert(), wind_.wert(),
                     windrichtung_.wert(), lage_.wert(),    messpunkte_};
}

}  // namespace spurkiste
