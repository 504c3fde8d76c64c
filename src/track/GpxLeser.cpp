#include "track/GpxLeser.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <span>
#include <utility>
#include <vector>

#include "base/Dateien.h"
#include "base/Text.h"
#include "base/Zahl.h"
#include "places/Ortsbuch.h"
#include "track/GpxStatistik.h"

namespace spurkiste {

namespace {

/// The elements that mean something somewhere.
enum class Element : std::uint8_t { anderes, trk, trkseg, trkpt, rte, rtept, metadata, ele, time, name, type, wetter };

Element elementMitNamen(std::string_view name) {
    const auto eines = [name](std::string_view a, Element elementA) { return name == a ? elementA : Element::anderes; };
    switch (name.size()) {
        case 3:
            return name == "ele" ? Element::ele : name == "trk" ? Element::trk : eines("rte", Element::rte);
        case 4:
            return name == "time" ? Element::time : name == "name" ? Element::name : eines("type", Element::type);
        case 5:
            return name == "trkpt" ? Element::trkpt : eines("rtept", Element::rtept);
        case 6:
            return name == "trkseg" ? Element::trkseg : eines("wetter", Element::wetter);
        case 8:
            return eines("metadata", Element::metadata);
        default:
            return Element::anderes;
    }
}

/// The last non-empty piece of a name between its colons; the whole name when there is none.
std::string_view lokalerName(std::string_view name) {
    const auto letztes = name.find_last_not_of(':');
    if (letztes == std::string_view::npos) {
        return name;
    }
    const auto bisDahin = name.substr(0, letztes + 1);
    return bisDahin.substr(bisDahin.rfind(':') + 1);  // npos + 1 is 0
}

/// text::trimme() for texts that mostly have nothing to trim.
std::string_view getrimmt(std::string_view text) {
    const auto sichtbar = [](char zeichen) { return zeichen > ' ' && zeichen < '\x7f'; };
    return !text.empty() && sichtbar(text.front()) && sichtbar(text.back()) ? text : text::trimme(text);
}

std::optional<double> alsZahl(std::optional<std::string_view> text) {
    return text ? zahl::lies(*text) : std::nullopt;
}

/// Points of one kind with the times of the first and the last that has one.
struct Punktliste {
    std::vector<GpxPunkt> punkte;
    std::optional<Zeitpunkt> ersteZeit;
    std::optional<Zeitpunkt> letzteZeit;

    void haengeAn(const GpxPunkt& punkt, std::optional<Zeitpunkt> zeit) {
        punkte.push_back(punkt);
        if (zeit) {
            if (!ersteZeit) {
                ersteZeit = zeit;
            }
            letzteZeit = zeit;
        }
    }

    void leere() {
        constexpr std::size_t behalten = std::size_t{1} << 18U;  // 8 MB: the room of one huge file is not kept
        if (punkte.capacity() > behalten) {
            punkte = {};
        }
        punkte.clear();
        ersteZeit.reset();
        letzteZeit.reset();
    }
};

/// Counts what is passed over, by kind.
class Strichliste {
  public:
    void streiche(GpxBefund::Art art, std::size_t zeile) {
        GpxBefund& befund = befunde_[static_cast<std::size_t>(art)];
        if (befund.anzahl++ == 0) {
            befund.zeile = zeile;
        }
    }

    void streiche(GpxBefund::Art art, std::size_t zeile, XmlFehler fehler) {
        streiche(art, zeile);
        befunde_[static_cast<std::size_t>(art)].fehler = fehler;
    }

    /// What was counted, in the order of the kinds.
    [[nodiscard]] std::vector<GpxBefund> ergebnis() const {
        std::vector<GpxBefund> gefunden;
        for (std::size_t art = 0; art < befunde_.size(); ++art) {
            if (befunde_[art].anzahl > 0) {
                gefunden.push_back(befunde_[art]);
                gefunden.back().art = static_cast<GpxBefund::Art>(art);
            }
        }
        return gefunden;
    }

  private:
    static constexpr GpxBefund kNichts{GpxBefund::Art::keinPunkt, 0, 1, XmlFehler::keiner};
    std::array<GpxBefund, 6> befunde_{kNichts, kNichts, kNichts, kNichts, kNichts, kNichts};
};

/// Collects what a record needs while an XmlLauf passes through a file.
class Sammler final : public XmlEmpfaenger {
  public:
    /// `maengel`, when there is one, hears of what is passed over.
    Sammler(Punktliste& spur, Punktliste& route, Strichliste* maengel)
        : spur_(spur), route_(route), maengel_(maengel) {}

    bool anfang(std::string_view name, const XmlAttribute& attribute) override {
        const bool hatDoppelpunkt = std::memchr(name.data(), ':', name.size()) != nullptr;
        const Element element = elementMitNamen(name);
        const Element eltern = stapel_.empty() ? Element::anderes : stapel_.back();
        stapel_.push_back(element);
        text_.clear();
        const Element lokales = hatDoppelpunkt ? elementMitNamen(lokalerName(name)) : element;
        beginne(lokales, attribute);
        if (maengel_ != nullptr && istPunkt(lokales)) {
            punktZeile_ = zeile();
            if (hatDoppelpunkt) {
                maengel_->streiche(GpxBefund::Art::punktMitPraefix, punktZeile_);
            }
        }
        if (textTiefe_ == 0 && brauchtText(element, eltern)) {
            textTiefe_ = stapel_.size();
        }
        return textTiefe_ != 0;
    }

    void text(std::string_view stueck) override {
        if (text_.size() <= GpxLeser::kLaengsterText) {
            text_.append(stueck);
        }
    }

    bool ende() override {
        const Element element = stapel_.back();
        if (textTiefe_ == stapel_.size()) {
            textTiefe_ = 0;
        }
        stapel_.pop_back();
        beende(element, stapel_.empty() ? Element::anderes : stapel_.back());
        return textTiefe_ != 0;
    }

    /// The record's fields that come from the content.
    [[nodiscard]] GpxMetadaten ergebnis() const;

    /// The points that the record is about: those of the tracks, without any those of the routes.
    [[nodiscard]] const Punktliste& punkte() const { return spur_.punkte.empty() ? route_ : spur_; }

  private:
    /// What an element start does, by local name.
    void beginne(Element element, const XmlAttribute& attribute) {
        switch (element) {
            case Element::trkseg:
                ++spurSegment_;
                break;
            case Element::rte:
                ++routenSegment_;
                break;
            case Element::trkpt:
            case Element::rtept:
                breite_ = alsZahl(attribute.wert("lat"));
                laenge_ = alsZahl(attribute.wert("lon"));
                hoehe_.reset();
                zeit_.reset();
                break;
            case Element::wetter:
                wetter_.nimm({alsZahl(attribute.wert("temp")), alsZahl(attribute.wert("feuchte")),
                              alsZahl(attribute.wert("wind")), kurzerText(attribute.wert("windrichtung")),
                              kurzerText(attribute.wert("lage"))});
                break;
            default:
                break;
        }
    }

    /// What an element end does, by full names. Coordinates outlive their point: nothing but the next start of a point
    /// overwrites them.
    void beende(Element element, Element eltern) {
        switch (element) {
            case Element::ele:
                if (istPunkt(eltern)) {
                    hoehe_ = zahl::lies(gelesenerText());
                    vermisse(hoehe_.has_value(), GpxBefund::Art::hoeheUnlesbar);
                }
                break;
            case Element::time:
                if (istPunkt(eltern)) {
                    zeit_ = GpxLeser::datumAus(gelesenerText());
                    vermisse(zeit_.has_value(), GpxBefund::Art::zeitUnlesbar);
                }
                break;
            case Element::name:
                if (eltern == Element::trk) {
                    merkeErsten(spurName_);
                } else if (eltern == Element::metadata) {
                    merkeErsten(metaName_);
                }
                break;
            case Element::type:
                if (eltern == Element::trk || eltern == Element::rte) {
                    merkeErsten(sportRoh_);
                }
                break;
            case Element::trkpt:
                haengePunktAn(spur_, spurSegment_);
                break;
            case Element::rtept:
                haengePunktAn(route_, routenSegment_);
                break;
            default:
                break;
        }
    }

    /// Whether beende() will look at the text. From such an element's start to its end all text is wanted, that in
    /// and behind elements inside it too.
    [[nodiscard]] static bool brauchtText(Element element, Element eltern) {
        switch (element) {
            case Element::ele:
            case Element::time:
                return istPunkt(eltern);
            case Element::name:
                return eltern == Element::trk || eltern == Element::metadata;
            case Element::type:
                return eltern == Element::trk || eltern == Element::rte;
            default:
                return false;
        }
    }

    [[nodiscard]] static bool istPunkt(Element element) {
        return element == Element::trkpt || element == Element::rtept;
    }

    [[nodiscard]] std::string_view gelesenerText() const {
        return text_.size() > GpxLeser::kLaengsterText ? std::string_view() : getrimmt(text_);
    }

    [[nodiscard]] static std::optional<std::string_view> kurzerText(std::optional<std::string_view> text) {
        return text && text->size() > GpxLeser::kLaengsterText ? std::nullopt : text;
    }

    void merkeErsten(std::optional<std::string>& ziel) const {
        const auto inhalt = gelesenerText();
        if (!ziel && !inhalt.empty()) {
            ziel = std::string(inhalt);
        }
    }

    void haengePunktAn(Punktliste& liste, std::int64_t segment) const {
        if (breite_ && laenge_) {
            GpxPunkt punkt;
            punkt.ort = {*breite_, *laenge_};
            punkt.hoehe = hoehe_.value_or(punkt.hoehe);
            punkt.segment = std::max<std::int64_t>(segment, 0);
            liste.haengeAn(punkt, zeit_);
        } else if (maengel_ != nullptr) {
            maengel_->streiche(GpxBefund::Art::punktVerworfen, punktZeile_);
        }
    }

    void vermisse(bool gefunden, GpxBefund::Art art) const {
        if (!gefunden && maengel_ != nullptr) {
            maengel_->streiche(art, zeile());
        }
    }

    Punktliste& spur_;
    Punktliste& route_;
    Strichliste* maengel_;
    std::size_t punktZeile_ = 1;  // only kept for maengel_
    std::optional<std::string> spurName_;
    std::optional<std::string> metaName_;
    std::optional<std::string> sportRoh_;
    WetterBilanz wetter_;
    std::vector<Element> stapel_;  // the open elements by full name
    std::size_t textTiefe_ = 0;    // depth of the outermost open element whose text is wanted; 0 for none
    std::string text_;             // since the last element start, whatever ended meanwhile
    std::int64_t spurSegment_ = -1;
    std::int64_t routenSegment_ = -1;
    std::optional<double> breite_;
    std::optional<double> laenge_;
    std::optional<double> hoehe_;
    std::optional<Zeitpunkt> zeit_;
};

std::optional<std::string> ortBei(const Koordinate& punkt) {
    constexpr double umkreisMeter = 15000.0;
    const auto name = Ortsbuch::geteilt().naechster(punkt, umkreisMeter);
    return name ? std::optional<std::string>(*name) : std::nullopt;
}

GpxMetadaten Sammler::ergebnis() const {
    const Punktliste& liste = punkte();
    const std::span<const GpxPunkt> punkte = liste.punkte;
    GpxMetadaten eintrag;
    eintrag.spurName = spurName_ ? spurName_ : metaName_;
    eintrag.datum = liste.ersteZeit;
    if (liste.ersteZeit && *liste.letzteZeit > *liste.ersteZeit) {
        eintrag.dauerSekunden = liste.letzteZeit->sekunden - liste.ersteZeit->sekunden;
    }
    eintrag.hatZeitstempel = eintrag.dauerSekunden > 0.0;
    eintrag.streckeMeter = GpxStatistik::strecke(punkte);
    eintrag.anstiegMeter = GpxStatistik::anstieg(punkte);
    eintrag.punkte = static_cast<std::int64_t>(punkte.size());
    eintrag.skizze = GpxStatistik::skizze(punkte);
    if (!punkte.empty()) {
        eintrag.start = punkte.front().ort;
        eintrag.ende = punkte.back().ort;
        eintrag.rundkurs = GpxStatistik::istRundkurs(eintrag.streckeMeter, *eintrag.start, *eintrag.ende);
        eintrag.startOrt = ortBei(*eintrag.start);
        eintrag.zielOrt = ortBei(*eintrag.ende);
    }
    eintrag.sportRoh = sportRoh_;
    eintrag.wetter = wetter_.zusammenfassung();
    return eintrag;
}

/// What a thread keeps from file to file, since touching fresh memory costs as much as parsing what is in it.
struct Werkbank {
    XmlLauf lauf;
    Punktliste spur;
    Punktliste route;
};

/// Reads a document and returns what `nimm` takes from the Sammler that has heard it.
template <typename Nimm>
auto leseAus(const XmlLauf::Quelle& quelle, std::size_t groesse, std::size_t amStueck, Nimm nimm,
             Strichliste* maengel = nullptr) {
    thread_local Werkbank werkbank;
    werkbank.spur.leere();
    werkbank.route.leere();
    // A recorded point seldom takes more bytes; growing would touch the memory of a large file's points twice.
    constexpr std::size_t bytesJePunkt = 256;
    constexpr std::size_t hoechstens = std::size_t{1} << 20U;
    werkbank.spur.punkte.reserve(std::min(groesse / bytesJePunkt, hoechstens));
    Sammler sammler(werkbank.spur, werkbank.route, maengel);
    const XmlAusgang ausgang = werkbank.lauf.lies(quelle, groesse, sammler, amStueck);
    if (maengel != nullptr) {
        if (sammler.punkte().punkte.empty()) {
            maengel->streiche(GpxBefund::Art::keinPunkt, ausgang.zeile);
        }
        if (ausgang.fehler != XmlFehler::keiner) {
            maengel->streiche(GpxBefund::Art::abgebrochen, ausgang.zeile, ausgang.fehler);
        }
    }
    return nimm(sammler);
}

GpxMetadaten nimmErgebnis(const Sammler& sammler) {
    return sammler.ergebnis();
}

}  // namespace

std::optional<GpxMetadaten> GpxLeser::lese(const std::string& pfad) {
    const auto angaben = dateien::angaben(pfad);
    if (!angaben) {
        return std::nullopt;
    }
    GpxMetadaten eintrag;
    if (auto leser = dateien::Leser::oeffne(pfad)) {
        const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
        eintrag = leseAus(quelle, static_cast<std::size_t>(angaben->groesse), XmlLauf::kAmStueck, nimmErgebnis);
    }
    eintrag.pfad = pfad;
    eintrag.dateiName = dateien::ohneEndung(dateien::letzterTeil(pfad));
    eintrag.dateiDatum = angaben->geaendert;
    eintrag.dateiGroesse = angaben->groesse;
    return eintrag;
}

GpxMetadaten GpxLeser::ausInhalt(std::string_view inhalt, std::size_t amStueck) {
    std::string_view rest = inhalt;
    const auto quelle = [&](std::span<char> puffer) {
        const std::size_t anzahl = rest.copy(puffer.data(), puffer.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
    return leseAus(quelle, inhalt.size(), amStueck, nimmErgebnis);
}

std::vector<Koordinate> GpxLeser::orte(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    if (!leser) {
        return {};
    }
    const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
    return leseAus(quelle, leser->groesse(), XmlLauf::kAmStueck, [](const Sammler& sammler) {
        const auto& punkte = sammler.punkte().punkte;
        std::vector<Koordinate> orte;
        orte.reserve(punkte.size());
        std::transform(punkte.begin(), punkte.end(), std::back_inserter(orte),
                       [](const GpxPunkt& punkt) { return punkt.ort; });
        return orte;
    });
}

std::optional<std::vector<GpxBefund>> GpxLeser::befunde(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    if (!leser) {
        return std::nullopt;
    }
    const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
    Strichliste maengel;
    leseAus(
        quelle, leser->groesse(), XmlLauf::kAmStueck, [](const Sammler& /*sammler*/) {}, &maengel);
    return maengel.ergebnis();
}

std::optional<Zeitpunkt> GpxLeser::datumAus(std::string_view text) {
    const auto zeit = getrimmt(text);
    if (const auto mitZone = Zeitpunkt::ausIso8601(zeit)) {
        return mitZone;
    }
    return Zeitpunkt::ausIso8601(std::string(zeit) + 'Z');
}

}  // namespace spurkiste
