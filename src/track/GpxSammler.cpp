#include "track/GpxSammler.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <utility>

#include "base/Text.h"
#include "base/Zahl.h"
#include "places/Ortsbuch.h"
#include "track/GpxLeser.h"

namespace spurkiste {

namespace {

/// The last non-empty piece of a name between its colons; the whole name when there is none.
std::string_view letzterNamensteil(std::string_view name) {
    const auto letztes = name.find_last_not_of(':');
    if (letztes == std::string_view::npos) {
        return name;
    }
    const auto bisDahin = name.substr(0, letztes + 1);
    return bisDahin.substr(bisDahin.rfind(':') + 1);  // npos + 1 is 0
}

std::optional<double> alsZahl(std::optional<std::string_view> text) {
    return text ? zahl::lies(*text) : std::nullopt;
}

/// text::trimme() for texts that mostly have nothing to trim.
std::string_view getrimmt(std::string_view text) {
    const auto sichtbar = [](char zeichen) { return zeichen > ' ' && zeichen < '\x7f'; };
    return !text.empty() && sichtbar(text.front()) && sichtbar(text.back()) ? text : text::trimme(text);
}

std::optional<std::string_view> kurzerText(std::optional<std::string_view> text) {
    return text && text->size() > GpxLeser::kLaengsterText ? std::nullopt : text;
}

std::optional<std::string> ortBei(const Koordinate& punkt) {
    constexpr double umkreisMeter = 15000.0;
    const auto name = Ortsbuch::geteilt().naechster(punkt, umkreisMeter);
    return name ? std::optional<std::string>(*name) : std::nullopt;
}

}  // namespace

GpxSammler::Element GpxSammler::elementMitNamen(std::string_view name) {
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

bool GpxSammler::istPunkt(Element element) {
    return element == Element::trkpt || element == Element::rtept;
}

/// Whether beende() will look at the text. From such an element's start to its end all text is wanted, that in and
/// behind elements inside it too.
bool GpxSammler::brauchtText(Element element, Element eltern) {
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

bool GpxSammler::anfang(std::string_view name, const XmlAttribute& attribute) {
    const bool hatDoppelpunkt = std::memchr(name.data(), ':', name.size()) != nullptr;
    const Element element = elementMitNamen(name);
    const Element eltern = stapel_.empty() ? Element::anderes : stapel_.back();
    stapel_.push_back(element);
    text_.clear();
    const Element lokales = hatDoppelpunkt ? elementMitNamen(letzterNamensteil(name)) : element;
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

void GpxSammler::text(std::string_view stueck) {
    if (text_.size() <= GpxLeser::kLaengsterText) {
        text_.append(stueck);
    }
}

bool GpxSammler::ende() {
    const Element element = stapel_.back();
    if (textTiefe_ == stapel_.size()) {
        textTiefe_ = 0;
    }
    stapel_.pop_back();
    beende(element, stapel_.empty() ? Element::anderes : stapel_.back());
    return textTiefe_ != 0;
}

void GpxSammler::schluss(XmlFehler fehler) {
    if (maengel_ == nullptr) {
        return;
    }
    if (punkte().punkte.empty()) {
        maengel_->streiche(GpxBefund::Art::keinPunkt, zeile());
    }
    if (fehler != XmlFehler::keiner) {
        maengel_->streiche(GpxBefund::Art::abgebrochen, zeile(), fehler);
    }
}

/// What an element start does, by local name.
void GpxSammler::beginne(Element element, const XmlAttribute& attribute) {
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
void GpxSammler::beende(Element element, Element eltern) {
    switch (element) {
        case Element::ele:
            if (istPunkt(eltern)) {
                hoehe_ = zahl::lies(gelesenerText());
                vermisse(hoehe_.has_value(), GpxBefund::Art::hoeheUnlesbar);
            }
            break;
        case Element::time:
            if (istPunkt(eltern)) {
                zeit_ = datumAus(gelesenerText());
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

std::string_view GpxSammler::gelesenerText() const {
    return text_.size() > GpxLeser::kLaengsterText ? std::string_view() : getrimmt(text_);
}

void GpxSammler::merkeErsten(std::optional<std::string>& ziel) const {
    const auto inhalt = gelesenerText();
    if (!ziel && !inhalt.empty()) {
        ziel = std::string(inhalt);
    }
}

void GpxSammler::haengePunktAn(GpxPunktliste& liste, std::int64_t segment) const {
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

void GpxSammler::vermisse(bool gefunden, GpxBefund::Art art) const {
    if (!gefunden && maengel_ != nullptr) {
        maengel_->streiche(art, zeile());
    }
}

GpxMetadaten GpxSammler::ergebnis() const {
    const GpxPunktliste& liste = punkte();
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

std::optional<Zeitpunkt> GpxSammler::datumAus(std::string_view text) {
    const auto zeit = getrimmt(text);
    if (const auto mitZone = Zeitpunkt::ausIso8601(zeit)) {
        return mitZone;
    }
    return Zeitpunkt::ausIso8601(std::string(zeit) + 'Z');
}

}  // namespace spurkiste
