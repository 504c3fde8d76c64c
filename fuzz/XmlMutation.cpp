#include "XmlMutation.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace {

using namespace std::string_view_literals;

constexpr std::array kDeklarationen = {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>"sv,
                                       "<?xml version='1.0' encoding='utf-8' standalone='yes'?>\r\n"sv,
                                       "<?xml version=\"1.1\" standalone=\"no\" ?>"sv,
                                       "\xEF\xBB\xBF<?xml version = \"1.0\"\tencoding\n=\r\"utf8\"?>\n"sv,
                                       "\xEF\xBB\xBF"sv,
                                       " \r\n\t<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"no\"?>\n"sv,
                                       "<?xml-stylesheet href='a'?>"sv,
                                       "\n\n"sv,
                                       ""sv};

constexpr std::array kNamen = {"gpx"sv,   "trk"sv,  "trkseg"sv, "trkpt"sv,      "rte"sv,        "rtept"sv, "metadata"sv,
                               "name"sv,  "type"sv, "ele"sv,    "time"sv,       "wetter"sv,     "wpt"sv,   "a"sv,
                               "x:ele"sv, ":a"sv,   "_b-1.c"sv, "gpx:trkpt"sv,  "tr"sv,         "trkp"sv,  "A"sv,
                               "names"sv, "z9"sv,   "xml"sv,    "extensions"sv, "ns3:wetter"sv, "Q"sv};

constexpr std::array kAttribute = {"lat"sv,   "lon"sv,     "temp"sv, "feuchte"sv, "lage"sv, "windrichtung"sv,
                                   "xmlns"sv, "xmlns:x"sv, "a"sv,    "b"sv,       "la"sv,   "x:lat"sv};

constexpr std::array kTexte = {"47.376900"sv,
                               "8.5417"sv,
                               "-0"sv,
                               "1e2"sv,
                               "2024-05-01T17:00:00Z"sv,
                               "2024-05-01T17:00:00.25+02:00"sv,
                               "Abendrunde"sv,
                               "\n      "sv,
                               "\r\n  "sv,
                               "\r"sv,
                               "\t"sv,
                               " "sv,
                               ""sv,
                               "]"sv,
                               "]]"sv,
                               "]] >"sv,
                               "]&gt;"sv,
                               ">"sv,
                               "'"sv,
                               "&amp;"sv,
                               "&lt;"sv,
                               "&gt;"sv,
                               "&quot;"sv,
                               "&apos;"sv,
                               "&#10;"sv,
                               "&#13;"sv,
                               "&#9;"sv,
                               "&#x20AC;"sv,
                               "&#8364;"sv,
                               "&#x1F6B2;"sv,
                               "&#0065;"sv,
                               "&#xd7ff;"sv,
                               "&#xE000;"sv,
                               "&#xFFFD;"sv,
                               "&#x10FFFF;"sv,
                               "&#x7f;"sv,
                               "&#x7FF;"sv,
                               "&#x800;"sv,
                               "Z\xC3\xBCrich"sv,
                               "\xF0\x9F\x9A\xB2"sv,
                               "\xE2\x82\xAC"sv,
                               "\xC2\x80"sv,
                               "\x7f"sv,
                               "\xEF\xBF\xBD"sv,
                               "\xEF\xBB\xBF"sv,
                               "\xED\x9F\xBF"sv,
                               "\xEE\x80\x80"sv,
                               "\xF4\x8F\xBF\xBF"sv,
                               "\xF0\x90\x80\x80"sv,
                               "\xE0\xA0\x80"sv,
                               "\xDF\xBF"sv,
                               "a rather long text of more than one block"sv};

constexpr std::array kBeiwerk = {"<!---->"sv,         "<!-->-->"sv, "<!-- a - b\r\n <c> & ]]> -->"sv,
                                 "<!--->-->"sv,       "<?d?>"sv,    "<?d e ?? f > ?>"sv,
                                 "<?xm \xC3\xA4?>"sv, "<?d\n?>"sv,  "<?xml2 ?>"sv};

constexpr std::array kCdata = {"<![CDATA[]]>"sv, "<![CDATA[ <a> & ]] > ]]]>"sv, "<![CDATA[\r\n\xC3\xA4]]>"sv};

// What may damage a document, or not, wherever it comes to stand.
constexpr std::array kStuecke = {"<"sv,
                                 ">"sv,
                                 "/"sv,
                                 "/>"sv,
                                 "</"sv,
                                 "<a>"sv,
                                 "</a>"sv,
                                 "<a/>"sv,
                                 "</gpx>"sv,
                                 "</trkpt>"sv,
                                 "<a/ >"sv,
                                 "< a>"sv,
                                 "</ a>"sv,
                                 "<a />"sv,
                                 "</a >"sv,
                                 "</a\n>"sv,
                                 "</a b='1'>"sv,
                                 "<1>"sv,
                                 "<-a/>"sv,
                                 "<.a/>"sv,
                                 "<\xC3\xA4/>"sv,
                                 "<a\xC3\xA4/>"sv,
                                 "<a b=\"1\"c=\"2\"/>"sv,
                                 "<a b=\"1\" b=\"2\"/>"sv,
                                 "<a b=1/>"sv,
                                 "<a b/>"sv,
                                 "<a b=\"<\"/>"sv,
                                 "<a b='\"'/>"sv,
                                 "<a =\"1\"/>"sv,
                                 "<a b=\"1'/>"sv,
                                 "<a b \t=\r\n'1'\n/>"sv,
                                 "<a b='\r\n\t'/>"sv,
                                 "<a b='&#10;&amp;'/>"sv,
                                 "<a b='&x;'/>"sv,
                                 "<a b='&'/>"sv,
                                 "<a 1='2'/>"sv,
                                 "<a b=''/>"sv,
                                 "<a b='1' c/>"sv,
                                 "&"sv,
                                 "&amp;"sv,
                                 "&lt;"sv,
                                 "&AMP;"sv,
                                 "&amp"sv,
                                 "&;"sv,
                                 "&x;"sv,
                                 "& amp;"sv,
                                 "&amp ;"sv,
                                 "&#65;"sv,
                                 "&#x41;"sv,
                                 "&#X41;"sv,
                                 "&#;"sv,
                                 "&#x;"sv,
                                 "&#0;"sv,
                                 "&#1;"sv,
                                 "&#x1F;"sv,
                                 "&#xB;"sv,
                                 "&#xD800;"sv,
                                 "&#xDFFF;"sv,
                                 "&#xFFFE;"sv,
                                 "&#xFFFF;"sv,
                                 "&#x1FFFE;"sv,
                                 "&#x110000;"sv,
                                 "&#x100000041;"sv,
                                 "&#4294967361;"sv,
                                 "&#6a;"sv,
                                 "&#x4g;"sv,
                                 "&#-5;"sv,
                                 "&a:b;"sv,
                                 "&nbsp;"sv,
                                 "]]>"sv,
                                 "]]"sv,
                                 "]"sv,
                                 "]]]>"sv,
                                 "<![CDATA["sv,
                                 "<![CDATA[x]]>"sv,
                                 "<![cdata[x]]>"sv,
                                 "<![CDAT[x]]>"sv,
                                 "<![CDATA [x]]>"sv,
                                 "<!"sv,
                                 "<!a>"sv,
                                 "<![a]]>"sv,
                                 "<!--"sv,
                                 "-->"sv,
                                 "--"sv,
                                 "<!-- -- -->"sv,
                                 "<!----->"sv,
                                 "<!--->"sv,
                                 "<!-- x --->"sv,
                                 "<!- x -->"sv,
                                 "<?"sv,
                                 "?>"sv,
                                 "<?x?>"sv,
                                 "<?x y?>"sv,
                                 "<?xml?>"sv,
                                 "<?xml version='1.0'?>"sv,
                                 "<?XML x?>"sv,
                                 "<?xMl?>"sv,
                                 "<? x?>"sv,
                                 "<?x/?>"sv,
                                 "<?x>"sv,
                                 "<?1?>"sv,
                                 "<?x"sv,
                                 "<?\xC3\xA4 ?>"sv,
                                 "<?x="sv,
                                 "<!DOCTYPE gpx>"sv,
                                 "<!DOCTYPE gpx [<!ENTITY x 'y'>]>"sv,
                                 "<!ELEMENT a ANY>"sv,
                                 "\r"sv,
                                 "\n"sv,
                                 "\r\n"sv,
                                 "\t"sv,
                                 " "sv,
                                 "\0"sv,
                                 "\x01"sv,
                                 "\x08"sv,
                                 "\x0B"sv,
                                 "\x0C"sv,
                                 "\x0E"sv,
                                 "\x1F"sv,
                                 "\x7F"sv,
                                 "x"sv,
                                 "\""sv,
                                 "'"sv,
                                 "="sv,
                                 ":"sv,
                                 "-"sv,
                                 "."sv,
                                 "1"sv,
                                 "_"sv,
                                 ";"sv,
                                 "#"sv,
                                 "!"sv,
                                 "?"sv,
                                 "["sv,
                                 " a=\"1\""sv,
                                 " lat='1'"sv,
                                 "a='1'"sv,
                                 " lat=\"1\" lon=\"2\""sv,
                                 " encoding=\"latin1\""sv,
                                 " standalone='maybe'"sv,
                                 " version='1.0'"sv,
                                 " encoding='UTF-8'"sv,
                                 "\xEF\xBB\xBF"sv,
                                 "\xEF\xBF\xBE"sv,
                                 "\xEF\xBF\xBF"sv,
                                 "\xEF\xBF"sv,
                                 "\xED\xA0\x80"sv,
                                 "\xED\xBF\xBF"sv,
                                 "\xC0\x80"sv,
                                 "\xC1\xBF"sv,
                                 "\xE0\x9F\xBF"sv,
                                 "\xE0\x80\x80"sv,
                                 "\xF0\x8F\xBF\xBF"sv,
                                 "\xF4\x90\x80\x80"sv,
                                 "\xF5\x80\x80\x80"sv,
                                 "\xF0\x9F\xBF\xBE"sv,
                                 "\xF0\x9F\x9A"sv,
                                 "\xE2\x82"sv,
                                 "\xC3"sv,
                                 "\x80"sv,
                                 "\xBF"sv,
                                 "\xFF"sv,
                                 "\xFE"sv,
                                 "\xC3\x28"sv,
                                 "\xC3\xC3"sv,
                                 "\xE2\x28\xA1"sv,
                                 "\xE2\x82\x28"sv,
                                 "\xF0\x28\x8C\xBC"sv,
                                 "\xF0\x90\x28\xBC"sv,
                                 "\xF0\x9F\x9A\x28"sv};

}  // namespace

std::string XmlMutation::name() {
    return std::string(eines(kNamen));
}

std::string XmlMutation::text() {
    std::string ergebnis;
    for (std::size_t i = wuerfle(3); i > 0; --i) {
        ergebnis += eines(kTexte);
    }
    return ergebnis;
}

std::string XmlMutation::attribute() {
    std::string ergebnis;
    std::set<std::string_view> schon;
    for (std::size_t i = wuerfle(wuerfle(40) == 0 ? 12 : 4); i > 0; --i) {
        const std::string_view einer = eines(kAttribute);
        if (!schon.insert(einer).second) {
            continue;
        }
        ergebnis += eines(std::array{" "sv, "\n"sv, "  "sv, "\r\n\t"sv});
        ergebnis.append(einer).append(eines(std::array{"="sv, "="sv, " = "sv, "\n=\t"sv}));
        const char anfuehrung = wuerfle(3) == 0 ? '\'' : '"';
        std::string wert = text();
        wert.erase(std::remove(wert.begin(), wert.end(), anfuehrung), wert.end());
        ergebnis.append(1, anfuehrung).append(wert).append(1, anfuehrung);
    }
    return ergebnis;
}

std::string XmlMutation::beiwerk() {
    return wuerfle(6) == 0 ? std::string(eines(kBeiwerk)) : std::string();
}

void XmlMutation::element(std::string& ziel, std::size_t tiefe) {
    constexpr std::size_t genug = 3000;
    const std::string eigener = name();
    ziel += "<" + eigener + attribute() + (wuerfle(5) == 0 ? "\n" : "");
    if (wuerfle(4) == 0) {
        ziel += "/>";
        return;
    }
    ziel += ">";
    for (std::size_t i = wuerfle(5); i > 0; --i) {
        ziel += text() + beiwerk();
        if (wuerfle(10) == 0) {
            ziel += eines(kCdata);
        }
        if (tiefe > 0 && ziel.size() < genug) {
            element(ziel, tiefe - 1);
        }
    }
    ziel += text() + "</" + eigener + (wuerfle(8) == 0 ? " >" : ">");
}

std::string XmlMutation::erfinde() {
    std::string ergebnis(eines(kDeklarationen));
    ergebnis += beiwerk();
    if (wuerfle(400) == 0) {
        // About as deep as the fast way goes, and about as many attributes.
        const std::size_t tiefe = 250 + wuerfle(10);
        for (std::size_t i = 0; i < tiefe; ++i) {
            ergebnis += "<a>";
        }
        ergebnis += "<a";
        for (std::size_t i = 25 + wuerfle(10); i > 0; --i) {
            ergebnis += " a" + std::to_string(i) + "=''";
        }
        ergebnis += "/>";
        for (std::size_t i = 0; i < tiefe; ++i) {
            ergebnis += "</a>";
        }
    } else {
        element(ergebnis, 6);
    }
    for (std::size_t i = wuerfle(3); i > 0; --i) {
        ergebnis.append(eines(std::array{""sv, "\n"sv, " \r\n"sv, "\r"sv, "\n\r"sv})).append(beiwerk());
    }
    return ergebnis;
}

/// Where tokens meet, or anywhere.
std::size_t XmlMutation::stelle(const std::string& dokument) {
    const std::size_t irgendwo = wuerfle(dokument.size() + 1);
    if (wuerfle(3) == 0) {
        return irgendwo;
    }
    const std::size_t grenze = dokument.find_first_of("<>&;\"'=/ \n[]-?!", irgendwo);
    return grenze == std::string::npos ? irgendwo : grenze + wuerfle(2);
}

std::string XmlMutation::veraendere(std::string dokument) {
    const std::size_t hier = stelle(dokument);
    const std::size_t dort = std::min(stelle(dokument), hier + 200);
    const std::size_t laenge =
        dort > hier ? dort - hier : std::min<std::size_t>(1 + wuerfle(4), dokument.size() - hier);
    switch (wuerfle(8)) {
        case 0:
        case 1:
        case 2:
            return dokument.insert(hier, eines(kStuecke));
        case 3:
            return dokument.replace(hier, laenge, eines(kStuecke));
        case 4:
            return dokument.erase(hier, laenge);
        case 5:
            return dokument.insert(stelle(dokument), dokument.substr(hier, laenge));
        case 6:
            return dokument.insert(hier, eines(kTexte));
        default:
            if (hier < dokument.size()) {
                dokument[hier] = static_cast<char>(wuerfle(256));
            }
            return dokument;
    }
}
