#include "track/XmlEilweg.h"

#include <algorithm>

#include "track/XmlVerweis.h"
#include "track/XmlZeichen.h"

namespace spurkiste {

namespace {

enum class Rolle : std::uint8_t { keine, imNamen, amNamensanfang };

/// What each byte may be in a name; only ASCII ones here.
constexpr std::array<Rolle, 256> kRollen = [] {
    std::array<Rolle, 256> rollen{};
    for (unsigned i = 0; i < 26; ++i) {
        rollen['a' + i] = Rolle::amNamensanfang;
        rollen['A' + i] = Rolle::amNamensanfang;
    }
    rollen['_'] = Rolle::amNamensanfang;
    rollen[':'] = Rolle::amNamensanfang;
    for (unsigned i = 0; i < 10; ++i) {
        rollen['0' + i] = Rolle::imNamen;
    }
    rollen['-'] = Rolle::imNamen;
    rollen['.'] = Rolle::imNamen;
    return rollen;
}();

Rolle rolle(char zeichen) {
    return kRollen[static_cast<unsigned char>(zeichen)];
}

bool istLeerraum(char zeichen) {
    return zeichen == ' ' || zeichen == '\n' || zeichen == '\t' || zeichen == '\r';
}

/// Whether the texts are the same but for the case of ASCII letters; `klein` has none in capitals.
bool istBisAufGroesse(std::string_view text, std::string_view klein) {
    return std::equal(text.begin(), text.end(), klein.begin(), klein.end(),
                      [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

}  // namespace

bool XmlEilweg::lies() {
    if (!xmlzeichen::alleErlaubt(rest()) || !liesDeklaration() || !liesUmgebung() || !liesInhalt()) {
        return false;
    }
    if (!liesUmgebung() || stelle_ != ende_) {
        return false;
    }
    // Expat does not count a carriage return at the very end: a line feed could still follow.
    ereignis_ = ende_[-1] == '\r' ? ende_ - 1 : ende_;
    return true;
}

std::size_t XmlEilweg::zeile() {
    for (; gezaehltBis_ != ereignis_; ++gezaehltBis_) {
        const bool umbruch = *gezaehltBis_ == '\n' || (*gezaehltBis_ == '\r' && gezaehltBis_[1] != '\n');
        zeile_ += umbruch ? 1 : 0;
    }
    return zeile_;
}

/// The XML declaration, when there is one.
bool XmlEilweg::liesDeklaration() {
    constexpr std::string_view anfang = "<?xml";
    if (!rest().starts_with(anfang) || rolle(stelle_[anfang.size()]) != Rolle::keine) {
        return true;
    }
    stelle_ += anfang.size();
    std::string_view wert;
    if (!liesAngabe("version", wert) || wert.empty()) {
        return false;
    }
    wert = {};
    if (!liesAngabe("encoding", wert)) {
        return false;
    }
    if (!wert.empty() && !istBisAufGroesse(wert, "utf-8") &&
        (!kodierungEgal_ || rolle(wert.front()) != Rolle::amNamensanfang || wert.front() == '_')) {
        return false;
    }
    wert = "yes";
    if (!liesAngabe("standalone", wert) || (wert != "yes" && wert != "no")) {
        return false;
    }
    ueberspringeLeerraum();
    return nimm("?>");
}

/// One statement of the declaration, `name="wert"`; the value stays as it is when there is none of that name.
bool XmlEilweg::liesAngabe(std::string_view name, std::string_view& wert) {
    const char* const vorher = stelle_;
    ueberspringeLeerraum();
    if (stelle_ == vorher || !nimm(name)) {
        stelle_ = vorher;
        return true;
    }
    ueberspringeLeerraum();
    if (!nimm("=")) {
        return false;
    }
    ueberspringeLeerraum();
    const char anfuehrung = *stelle_;
    if (anfuehrung != '"' && anfuehrung != '\'') {
        return false;
    }
    const char* const von = ++stelle_;
    while (rolle(*stelle_) != Rolle::keine && *stelle_ != ':') {
        ++stelle_;
    }
    wert = {von, static_cast<std::size_t>(stelle_ - von)};
    return !wert.empty() && nimm({&anfuehrung, 1});
}

/// What may stand before and behind the root element.
bool XmlEilweg::liesUmgebung() {
    for (;;) {
        ueberspringeLeerraum();
        if (rest().starts_with("<!--")) {
            if (!ueberspringeKommentar()) {
                return false;
            }
        } else if (rest().starts_with("<?")) {
            if (!ueberspringeAnweisung()) {
                return false;
            }
        } else {
            return true;
        }
    }
}

/// The root element and all that is in it.
bool XmlEilweg::liesInhalt() {
    if (*stelle_ != '<' || !liesAnfang()) {
        return false;
    }
    while (!offen_.empty()) {
        if (!liesText() || !liesMarkierung()) {
            return false;
        }
    }
    return true;
}

/// Whatever begins with a '<' inside of an element.
bool XmlEilweg::liesMarkierung() {
    switch (stelle_[1]) {
        case '/':
            return liesEnde();
        case '!':
            return stelle_[2] == '-' ? ueberspringeKommentar() : ueberspringeCdata();
        case '?':
            return ueberspringeAnweisung();
        default:
            return liesAnfang();
    }
}

bool XmlEilweg::liesAnfang() {
    ereignis_ = stelle_;
    ++stelle_;
    const std::string_view name = nimmName();
    if (name.empty()) {
        return false;
    }
    attribute_.clear();
    for (;;) {
        const char* const vorher = stelle_;
        ueberspringeLeerraum();
        if (*stelle_ == '>') {
            ++stelle_;
            return meldeAnfang(name, false);
        }
        if (*stelle_ == '/') {
            return nimm("/>") && meldeAnfang(name, true);
        }
        if (stelle_ == vorher || !liesAttribut()) {
            return false;
        }
    }
}

bool XmlEilweg::liesAttribut() {
    const std::string_view name = nimmName();
    const bool doppelt = std::any_of(attribute_.begin(), attribute_.end(),
                                     [name](const XmlAttribut& attribut) { return attribut.name == name; });
    if (name.empty() || doppelt || attribute_.size() == kMeisteAttribute) {
        return false;
    }
    ueberspringeLeerraum();
    if (!nimm("=")) {
        return false;
    }
    ueberspringeLeerraum();
    attribute_.push_back({name, {}});
    return liesAttributwert();
}

/// The value of the last attribute, quotation marks included.
bool XmlEilweg::liesAttributwert() {
    const char anfuehrung = *stelle_;
    if (anfuehrung != '"' && anfuehrung != '\'') {
        return false;
    }
    const char* von = ++stelle_;
    stelle_ = xmlzeichen::wertende(stelle_, anfuehrung);
    std::string_view& wert = attribute_.back().wert;
    if (*stelle_ == anfuehrung) {
        wert = {von, static_cast<std::size_t>(stelle_ - von)};
        ++stelle_;
        return true;
    }
    std::string& umgeschrieben = umgeschrieben_[attribute_.size() - 1];
    umgeschrieben.clear();
    for (;;) {
        umgeschrieben.append(von, stelle_);
        if (*stelle_ == anfuehrung) {
            wert = umgeschrieben;
            ++stelle_;
            return true;
        }
        if (*stelle_ == '&') {
            if (!liesVerweis(umgeschrieben)) {
                return false;
            }
        } else if (istLeerraum(*stelle_)) {
            stelle_ += stelle_[0] == '\r' && stelle_[1] == '\n' ? 2 : 1;
            umgeschrieben += ' ';
        } else {
            return false;
        }
        von = stelle_;
        stelle_ = xmlzeichen::wertende(stelle_, anfuehrung);
    }
}

bool XmlEilweg::meldeAnfang(std::string_view name, bool leer) {
    willText_ = empfaenger_.anfang(name, XmlAttribute(attribute_));
    if (leer) {
        ereignis_ = stelle_;
        willText_ = empfaenger_.ende();
        return true;
    }
    offen_.push_back(name);
    return offen_.size() <= kGroessteTiefe;
}

bool XmlEilweg::liesEnde() {
    ereignis_ = stelle_;
    stelle_ += 2;
    if (!nimm(offen_.back())) {
        return false;
    }
    ueberspringeLeerraum();
    if (*stelle_ != '>') {
        return false;
    }
    ++stelle_;
    offen_.pop_back();
    willText_ = empfaenger_.ende();
    return true;
}

/// Text up to the next '<'.
bool XmlEilweg::liesText() {
    for (;;) {
        const char* const von = stelle_;
        stelle_ = xmlzeichen::textende(stelle_);
        while (*stelle_ == ']') {
            if (stelle_[1] == ']' && stelle_[2] == '>') {
                return false;
            }
            stelle_ = xmlzeichen::textende(stelle_ + 1);
        }
        meldeText(von, stelle_);
        if (*stelle_ == '<') {
            return true;
        }
        ereignis_ = stelle_;
        zeichen_.clear();
        if (*stelle_ == '\r') {
            stelle_ += stelle_[1] == '\n' ? 2 : 1;
            zeichen_ = '\n';
        } else if (*stelle_ != '&' || !liesVerweis(zeichen_)) {
            return false;
        }
        if (willText_) {
            empfaenger_.text(zeichen_);
        }
    }
}

void XmlEilweg::meldeText(const char* von, const char* bis) {
    if (willText_ && von != bis) {
        ereignis_ = von;
        empfaenger_.text({von, static_cast<std::size_t>(bis - von)});
    }
}

/// A reference; what it stands for is appended.
bool XmlEilweg::liesVerweis(std::string& ziel) {
    ++stelle_;
    const char* const von = stelle_;
    if (*stelle_ == '#') {
        ++stelle_;
    }
    while (rolle(*stelle_) != Rolle::keine) {
        ++stelle_;
    }
    const std::string_view verweis(von, static_cast<std::size_t>(stelle_ - von));
    return nimm(";") && loeseXmlVerweis(verweis, ziel);
}

/// A processing instruction, which must not be called as the XML declaration is.
bool XmlEilweg::ueberspringeAnweisung() {
    stelle_ += 2;
    const std::string_view ziel = nimmName();
    const bool getrennt = istLeerraum(*stelle_) || rest().starts_with("?>");
    const auto bis = rest().find("?>");
    if (ziel.empty() || istBisAufGroesse(ziel, "xml") || !getrennt || bis == std::string_view::npos) {
        return false;
    }
    stelle_ += bis + 2;
    return true;
}

bool XmlEilweg::ueberspringeKommentar() {
    if (!nimm("<!--")) {
        return false;
    }
    const auto bis = rest().find("--");
    if (bis == std::string_view::npos) {
        return false;
    }
    stelle_ += bis;
    return nimm("-->");
}

/// A CDATA section, whose content nobody hears of.
bool XmlEilweg::ueberspringeCdata() {
    if (!nimm("<![CDATA[")) {
        return false;
    }
    const auto bis = rest().find("]]>");
    if (bis == std::string_view::npos) {
        return false;
    }
    stelle_ += bis + 3;
    return true;
}

void XmlEilweg::ueberspringeLeerraum() {
    while (istLeerraum(*stelle_)) {
        ++stelle_;
    }
}

bool XmlEilweg::nimm(std::string_view zeichen) {
    if (!rest().starts_with(zeichen)) {
        return false;
    }
    stelle_ += zeichen.size();
    return true;
}

/// The name that comes next; empty when none does.
std::string_view XmlEilweg::nimmName() {
    const char* const von = stelle_;
    if (rolle(*stelle_) == Rolle::amNamensanfang) {
        do {
            ++stelle_;
        } while (rolle(*stelle_) != Rolle::keine);
    }
    return {von, static_cast<std::size_t>(stelle_ - von)};
}

}  // namespace spurkiste
