#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "track/Weghoerer.h"
#include "track/XmlLauf.h"

namespace spurkiste {

namespace {

/// Writes everything down in one line: "<name a=value", "text", ">".
class Mitschrift final : public XmlEmpfaenger {
  public:
    std::string zeile;
    std::string wirfBei;

    bool anfang(std::string_view name, const XmlAttribute& attribute) override {
        zeile.append("<").append(name);
        if (const auto wert = attribute.wert("a")) {
            zeile.append(" a=").append(*wert);
        }
        zeile.append("|");
        if (name == wirfBei) {
            throw std::runtime_error("genug");
        }
        return name != "stumm";
    }
    void text(std::string_view stueck) override { zeile.append(stueck); }
    bool ende() override {
        zeile.append(">");
        return true;
    }
};

/// Gives the bytes away, piece by piece.
XmlLauf::Quelle quelle(std::string_view bytes) {
    return [rest = bytes](std::span<char> puffer) mutable {
        const std::size_t anzahl = rest.copy(puffer.data(), puffer.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
}

std::string lies(std::string_view bytes, std::size_t amStueck = XmlLauf::kAmStueck, const std::string& wirfBei = {}) {
    std::optional<Mitschrift> mitschrift;
    const auto empfang = [&]() -> XmlEmpfaenger& {
        mitschrift.emplace();
        mitschrift->wirfBei = wirfBei;
        return *mitschrift;
    };
    try {
        XmlLauf().lies(quelle(bytes), bytes.size(), empfang, amStueck);
    } catch (const std::runtime_error& fehler) {
        mitschrift->zeile += fehler.what();
    }
    return mitschrift->zeile;
}

/// ASCII and the three letters of the cases below as UTF-16.
std::string utf16(std::string_view text, bool kleinesEndeZuerst) {
    std::string ergebnis;
    const auto haengeAn = [&](int hoch, int tief) {
        ergebnis += static_cast<char>(kleinesEndeZuerst ? tief : hoch);
        ergebnis += static_cast<char>(kleinesEndeZuerst ? hoch : tief);
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with("ß")) {
            haengeAn(0, 0xDF);
            ++i;
        } else {
            haengeAn(0, text[i]);
        }
    }
    return ergebnis;
}

std::string deklariert(std::string_view kodierung, std::string_view inhalt) {
    return "<?xml version=\"1.0\" encoding=\"" + std::string(kodierung) + "\"?>" + std::string(inhalt);
}

/// Whether the fast reader takes the document.
bool istEilig(std::string_view bytes) {
    std::optional<Mitschrift> mitschrift;
    return XmlLauf().lies(quelle(bytes), bytes.size(), [&]() -> XmlEmpfaenger& { return mitschrift.emplace(); });
}

}  // namespace

TEST(XmlLaufTest, LiestJedeKodierungDerWildnis) {
    const std::string bom = "\xEF\xBB\xBF";
    const std::string klein = "\xFF\xFE";
    const std::string gross = "\xFE\xFF";
    const std::string leer = " \t\r\n";
    const std::string inhalt = "<x a=\"ß\">ß</x>";
    const std::string latin = "<x a=\"\xDF\">\xDF</x>";
    const std::vector<std::string> faelle = {
        inhalt,
        leer + inhalt,
        bom + inhalt,
        bom + leer + deklariert("UTF-8", inhalt),
        leer + deklariert("utf-8", inhalt),
        std::string(5100, '\n') + deklariert("utf8", inhalt),
        bom + deklariert("windows-1252", inhalt),
        deklariert("utf8", inhalt),
        deklariert("UTF-16", inhalt),
        deklariert("utf-16le", inhalt),
        deklariert("made-up", inhalt),
        deklariert("ISO-8859-1", latin),
        deklariert("iso-8859-15", latin),
        deklariert("windows-1252", latin),
        deklariert("Windows-1254", latin),
        deklariert("cp437", "<x a=\"\xE1\">\xE1</x>"),
        utf16(inhalt, true),
        utf16(inhalt, false),
        utf16(deklariert("utf-8", inhalt), true),
        utf16(leer + deklariert("UTF-16", inhalt), false),
        klein + utf16(deklariert("UTF-16", inhalt), true),
        klein + utf16(std::string(3001, ' ') + deklariert("utf-8", inhalt), true),
        gross + utf16(deklariert("UTF-16LE", inhalt), false),
        gross + utf16(leer + inhalt, false),
    };
    for (std::size_t i = 0; i < faelle.size(); ++i) {
        for (const std::size_t amStueck : {std::size_t{1}, std::size_t{7}, XmlLauf::kAmStueck}) {
            EXPECT_EQ(lies(faelle[i], amStueck), "<x a=ß|ß>") << "case " << i << " in pieces of " << amStueck;
        }
    }
    EXPECT_EQ(lies(deklariert("windows-1252", "<x>\x80 \x96</x>")), "<x|€ –>");
}

TEST(XmlLaufTest, MeldetNamenUndTextWieGeschrieben) {
    const std::vector<std::pair<std::string, std::string>> faelle = {
        {"", ""},
        {" ", ""},
        {"kein XML", ""},
        {"<a", ""},
        {"<a/>", "<a|>"},
        {"<a/><b/>", "<a|>"},
        {"<p:a xmlns:q='u' p:a='1' a='2'><q:b/></p:a>", "<p:a a=2|<q:b|>>"},
        {"<x>a&amp;b&#228;&#x1F6B2;<!--c--><?d e?>f</x>", "<x|a&bä🚲f>"},
        {"<x>a<![CDATA[b]]>c</x>", "<x|ac>"},
        {"<x>1<stumm>2<![CDATA[3]]>4<y>5</y></stumm>6</x>", "<x|1<stumm|<y|5>>6>"},
        {"<x a='1 &lt;\n2'/>", "<x a=1 < 2|>"},
        {"<x>a\r\nb</x>", "<x|a\nb>"},
        {"<x><y>1</y><y>2</x>", "<x|<y|1><y|2"},
        {"<x>1&nichts;2</x>", "<x|1"},
        {std::string("<x>1\0</x>", 9), "<x|1"},
        {"<x>\xFF</x>", "<x|"},
        {"<!DOCTYPE x [<!ENTITY e 'E<y/>'>]><x>&e;!</x>", "<x|E<y|>!>"},
    };
    for (const auto& [xml, zeile] : faelle) {
        EXPECT_EQ(lies(xml), zeile) << xml;
        EXPECT_EQ(lies(xml, 3), zeile) << xml;
    }
}

TEST(XmlLaufTest, LiestEiligWasSchlichtIst) {
    const std::string bom = "\xEF\xBB\xBF";
    const auto verschachtelt = [](int tiefe) {
        std::string xml = "<b/>";
        for (int i = 1; i < tiefe; ++i) {
            xml = "<a>" + xml + "</a>";
        }
        return xml;
    };
    const auto mitAttributen = [](int anzahl) {
        std::string xml = "<a";
        for (int i = 0; i < anzahl; ++i) {
            xml += " a" + std::to_string(i) + "='&lt;'";
        }
        return xml + "/>";
    };
    const std::vector<std::pair<std::string, bool>> faelle = {
        {"<a/>", true},
        {bom + "\n<a>\xC3\xA4</a>\n", true},
        {" \r\n<?xml version='1.0' encoding='utf-8' standalone='yes' ?><!-- c --><?d e?><a/><!-- c -->", true},
        {bom + "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a/>", true},
        {"<?xml version=\"1.0\" encoding=\"utf8\"?><a/>", true},
        {"<p:a xmlns:p='u' b = \"1\r\n2&#x1F6B2;\"\n>&amp;]]&gt;<![CDATA[<]]><?xm?></p:a >", true},
        {mitAttributen(32), true},
        {verschachtelt(256), true},
        {mitAttributen(33), false},
        {verschachtelt(258), false},
        {"<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a/>", false},
        {utf16("<a/>", true), false},
        {"<!DOCTYPE a><a/>", false},
        {"<a>&nbsp;</a>", false},
        {"<\xC3\xA4/>", false},
        {"<a></b>", false},
        {"<a>", false},
        {"", false},
    };
    for (const auto& [xml, eilig] : faelle) {
        EXPECT_EQ(istEilig(xml), eilig) << xml;
    }
}

TEST(XmlLaufTest, NimmtVonEinerWachsendenDateiNichtMehrAlsGesagt) {
    for (const std::size_t groesse : {std::size_t{0}, std::size_t{10}, std::size_t{5000}, std::size_t{1'000'000}}) {
        for (const std::size_t amStueck : {std::size_t{100}, XmlLauf::kAmStueck}) {
            std::size_t genommen = 0;
            const auto endlos = [&](std::span<char> puffer) {
                std::fill(puffer.begin(), puffer.end(), ' ');
                genommen += puffer.size();
                return puffer.size();
            };
            Mitschrift mitschrift;
            XmlLauf().lies(
                endlos, groesse, [&]() -> XmlEmpfaenger& { return mitschrift; }, amStueck);
            EXPECT_EQ(genommen, groesse);
        }
    }
}

TEST(XmlLaufTest, LaesstAusnahmenDesEmpfaengersHinaus) {
    for (const std::size_t amStueck : {std::size_t{4}, XmlLauf::kAmStueck}) {
        EXPECT_EQ(lies("<x>1<y/>2</x>", amStueck, "y"), "<x|1<y|genug");
    }
}

TEST(XmlLaufTest, BleibtBeiFeindlichenDateienInGrenzen) {
    // Three million open elements would take half a gigabyte: the walk ends early.
    std::string tief;
    for (int i = 0; i < 3'000'000; ++i) {
        tief += "<a>";
    }
    const std::string anfang(tief, 0, 300'000);
    EXPECT_LT(lies(tief).size(), tief.size());
    EXPECT_EQ(lies(anfang).size(), anfang.size());
    // A thousand times a thousand times a thousand characters, and half a megabyte repeated ten thousand times.
    const std::string tausend(1000, 'x');
    std::string bombe = "<!DOCTYPE x [<!ENTITY a '" + tausend + "'><!ENTITY b '";
    std::string wiederholt = "<!DOCTYPE x [<!ENTITY a '" + std::string(500'000, 'x') + "'>]><x>";
    for (int i = 0; i < 1000; ++i) {
        bombe += "&a;";
    }
    bombe += "'><!ENTITY c '";
    for (int i = 0; i < 1000; ++i) {
        bombe += "&b;";
    }
    for (int i = 0; i < 10'000; ++i) {
        wiederholt += "&a;";
    }
    bombe += "'>]><x>&c;</x>";
    wiederholt += "</x>";
    constexpr std::size_t grenze = std::size_t{16} << 20U;
    EXPECT_LT(lies(bombe).size(), grenze);
    EXPECT_LT(lies(wiederholt).size(), grenze);
    EXPECT_LT(lies(wiederholt, 100'000).size(), grenze);
    Weghoerer niemand;
    for (const std::string& feindlich : {tief, bombe, wiederholt}) {
        EXPECT_FALSE(XmlLauf::orte(xmlInhalt(feindlich), niemand)) << feindlich.substr(0, 60);
    }
}

}  // namespace spurkiste
