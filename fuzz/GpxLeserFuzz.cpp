// Any bytes as a GPX file. The record must obey its rules, must not depend on the pieces in which the bytes are parsed,
// and must agree with a reader that does the same in the plainest way: every name and every text kept.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "base/Zahl.h"
#include "track/GpxLeser.h"
#include "track/GpxStatistik.h"
#include "track/XmlLauf.h"

namespace {

using spurkiste::GpxLeser;
using spurkiste::GpxMetadaten;
using spurkiste::GpxPunkt;
using spurkiste::Zeitpunkt;

void verlange(bool wahr) {
    if (!wahr) {
        std::abort();
    }
}

/// The pieces of a name between its colons, the empty ones dropped; the last counts.
std::string lokal(const std::string& name) {
    std::vector<std::string> teile;
    std::string teil;
    for (const char zeichen : name + ":") {
        if (zeichen != ':') {
            teil += zeichen;
        } else if (!teil.empty()) {
            teile.push_back(teil);
            teil.clear();
        }
    }
    return teile.empty() ? name : teile.back();
}

class SchlichterLeser final : public spurkiste::XmlEmpfaenger {
  public:
    std::vector<GpxPunkt> spur;
    std::vector<GpxPunkt> route;
    std::vector<Zeitpunkt> spurZeiten;
    std::vector<Zeitpunkt> routenZeiten;
    std::string trkName;
    std::string metaName;
    std::string sport;
    std::int64_t proben = 0;

    bool anfang(std::string_view name, const spurkiste::XmlAttribute& attribute) override {
        stapel_.emplace_back(name);
        text_.clear();
        const std::string ort = lokal(stapel_.back());
        spurSegment_ += ort == "trkseg" ? 1 : 0;
        routenSegment_ += ort == "rte" ? 1 : 0;
        proben += ort == "wetter" ? 1 : 0;
        if (ort == "trkpt" || ort == "rtept") {
            breite_ = spurkiste::zahl::lies(attribute.wert("lat").value_or(""));
            laenge_ = spurkiste::zahl::lies(attribute.wert("lon").value_or(""));
            hoehe_.reset();
            zeit_.reset();
        }
        return true;
    }

    void text(std::string_view stueck) override { text_ += stueck; }

    bool ende() override {
        const std::string name = stapel_.back();
        const std::string eltern = stapel_.size() < 2 ? "" : stapel_[stapel_.size() - 2];
        const bool imPunkt = eltern == "trkpt" || eltern == "rtept";
        const std::string inhalt(text_.size() > GpxLeser::kLaengsterText ? "" : spurkiste::text::trimme(text_));
        if (name == "ele" && imPunkt) {
            hoehe_ = spurkiste::zahl::lies(inhalt);
        } else if (name == "time" && imPunkt) {
            zeit_ = GpxLeser::datumAus(inhalt);
        } else if (name == "name" && eltern == "trk") {
            trkName = trkName.empty() ? inhalt : trkName;
        } else if (name == "name" && eltern == "metadata") {
            metaName = metaName.empty() ? inhalt : metaName;
        } else if (name == "type" && (eltern == "trk" || eltern == "rte")) {
            sport = sport.empty() ? inhalt : sport;
        } else if (name == "trkpt") {
            haengeAn(spur, spurZeiten, spurSegment_);
        } else if (name == "rtept") {
            haengeAn(route, routenZeiten, routenSegment_);
        }
        stapel_.pop_back();
        return true;
    }

  private:
    void haengeAn(std::vector<GpxPunkt>& punkte, std::vector<Zeitpunkt>& zeiten, std::int64_t segment) const {
        if (!breite_ || !laenge_) {
            return;
        }
        punkte.push_back({{*breite_, *laenge_}, hoehe_.value_or(NAN), std::max<std::int64_t>(segment, 0)});
        if (zeit_) {
            zeiten.push_back(*zeit_);
        }
    }

    std::vector<std::string> stapel_;
    std::string text_;
    std::int64_t spurSegment_ = -1;
    std::int64_t routenSegment_ = -1;
    std::optional<double> breite_;
    std::optional<double> laenge_;
    std::optional<double> hoehe_;
    std::optional<Zeitpunkt> zeit_;
};

void vergleiche(const GpxMetadaten& eintrag, const SchlichterLeser& schlicht) {
    const auto& punkte = schlicht.spur.empty() ? schlicht.route : schlicht.spur;
    const auto& zeiten = schlicht.spur.empty() ? schlicht.routenZeiten : schlicht.spurZeiten;
    verlange(eintrag.punkte == static_cast<std::int64_t>(punkte.size()));
    verlange(punkte.empty() || (eintrag.start == punkte.front().ort && eintrag.ende == punkte.back().ort));
    verlange(eintrag.streckeMeter == spurkiste::GpxStatistik::strecke(punkte));
    verlange(eintrag.anstiegMeter == spurkiste::GpxStatistik::anstieg(punkte));
    verlange(eintrag.skizze == spurkiste::GpxStatistik::skizze(punkte));
    verlange(eintrag.datum == (zeiten.empty() ? std::nullopt : std::optional(zeiten.front())));
    const double dauer = zeiten.empty() ? 0.0 : zeiten.back().sekunden - zeiten.front().sekunden;
    verlange(eintrag.dauerSekunden == std::max(dauer, 0.0));
    verlange(eintrag.spurName.value_or("") == (schlicht.trkName.empty() ? schlicht.metaName : schlicht.trkName));
    verlange(eintrag.sportRoh.value_or("") == schlicht.sport);
    verlange((eintrag.wetter ? eintrag.wetter->messpunkte : 0) == schlicht.proben);
}

void pruefe(const GpxMetadaten& eintrag) {
    for (const double zahl : {eintrag.streckeMeter, eintrag.dauerSekunden, eintrag.anstiegMeter}) {
        verlange(std::isfinite(zahl) && zahl >= 0.0);
    }
    verlange(eintrag.hatZeitstempel == (eintrag.dauerSekunden > 0.0));
    verlange(!eintrag.datum || std::isfinite(eintrag.datum->sekunden));
    verlange(eintrag.start.has_value() == (eintrag.punkte > 0) && eintrag.ende.has_value() == (eintrag.punkte > 0));
    verlange(!eintrag.rundkurs || eintrag.streckeMeter >= 1000.0);
    for (const auto* text : {&eintrag.spurName, &eintrag.sportRoh, &eintrag.startOrt, &eintrag.zielOrt}) {
        verlange(!*text || (!(*text)->empty() && spurkiste::text::istUtf8(**text)));
    }
    const auto punkte = static_cast<std::size_t>(eintrag.punkte);
    const std::size_t schritt = std::max<std::size_t>(punkte, 256) / 256;
    verlange(eintrag.skizze.leer() == (punkte == 0));
    verlange(eintrag.skizze.punkte().size() <= punkte / schritt + 2 * eintrag.skizze.linien());
    for (const auto& ort : eintrag.skizze.punkte()) {
        verlange(std::isfinite(ort.breite) && std::isfinite(ort.laenge));
    }
    if (eintrag.wetter) {
        const auto& wetter = *eintrag.wetter;
        verlange(wetter.messpunkte > 0);
        for (const auto& zahl : {wetter.temperaturCelsius, wetter.luftfeuchteProzent, wetter.windKmh}) {
            verlange(!zahl || std::isfinite(*zahl));
        }
        for (const auto* text : {&wetter.windrichtung, &wetter.lage}) {
            verlange(!*text || (!(*text)->empty() && spurkiste::text::istUtf8(**text)));
        }
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view inhalt(reinterpret_cast<const char*>(daten), groesse);
    const GpxMetadaten eintrag = GpxLeser::ausInhalt(inhalt);
    pruefe(eintrag);
    verlange(GpxLeser::ausInhalt(inhalt, 1 + groesse % 61) == eintrag);
    verlange(GpxLeser::ausInhalt(inhalt, spurkiste::XmlLauf::kAmStueck, spurkiste::XmlWeg::nurExpat) == eintrag);

    SchlichterLeser schlicht;
    std::string_view rest = inhalt;
    const auto quelle = [&](std::span<char> puffer) {
        const std::size_t anzahl = rest.copy(puffer.data(), puffer.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
    const auto empfang = [&]() -> spurkiste::XmlEmpfaenger& { return schlicht; };
    spurkiste::XmlLauf().lies(quelle, groesse, empfang, spurkiste::XmlLauf::kAmStueck, spurkiste::XmlWeg::nurExpat);
    vergleiche(eintrag, schlicht);
    return 0;
}
