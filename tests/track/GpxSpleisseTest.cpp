#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "track/GpxLeser.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {
namespace {

/// The document with the sport in it; absent when it is no XML.
std::optional<std::string> mit(std::string_view inhalt, GpxSportart art) {
    const auto spleisse = GpxSpleisse::berechne(xmlInhalt(inhalt), art);
    std::string neu;
    if (spleisse) {
        spleisse->wendeAn(xmlInhalt(inhalt), [&](std::string_view stueck) { neu += stueck; });
    }
    return spleisse ? std::optional(neu) : std::nullopt;
}

/// The same with the number of tracks and routes behind it.
std::string gezaehlt(std::string_view inhalt, GpxSportart art) {
    const auto neu = mit(inhalt, art);
    return neu ? *neu + "#" + std::to_string(GpxSpleisse::berechne(xmlInhalt(inhalt), art)->ziele) : "no XML";
}

std::string weit(std::string_view text, bool gross) {
    std::string bytes = gross ? "\xFE\xFF" : "\xFF\xFE";
    for (const char zeichen : text) {
        bytes += gross ? std::string{'\0', zeichen} : std::string{zeichen, '\0'};
    }
    return bytes;
}

TEST(GpxSpleisse, putsTheTypeWhereItBelongsAndTouchesNothingElse) {
    struct Fall {
        std::string vorher;
        std::string nachher;
    };
    const std::string viel(3000, '\n');
    const std::vector<Fall> faelle = {
        // Where there is one
        {"<gpx><trk><type>running</type></trk></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type>cycling</type></trk></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type/></trk></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type ></type ></trk></gpx>", "<gpx><trk><type >cycling</type ></trk></gpx>#1"},
        {"<gpx><trk><type a = '/' /></trk></gpx>", "<gpx><trk><type a = '/' >cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type>a<b>c</b><!-- d --><![CDATA[e]]>&amp;</type></trk></gpx>",
         "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type><type>x</type></type></trk></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type>cyclin&#103;</type></trk></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk><type>a</type><type>b</type></trk></gpx>",
         "<gpx><trk><type>cycling</type><type>b</type></trk></gpx>#1"},
        {"<gpx><trk><trkseg/><type>a</type></trk></gpx>", "<gpx><trk><trkseg/><type>cycling</type></trk></gpx>#1"},
        {"<gpx><x:trk><y:type/></x:trk></gpx>", "<gpx><x:trk><y:type>cycling</y:type></x:trk></gpx>#1"},
        // Where there is none
        {"<gpx><trk>\n <name>n</name> <trkseg/>\n<trkseg/></trk></gpx>",
         "<gpx><trk>\n <name>n</name> <type>cycling</type><trkseg/>\n<trkseg/></trk></gpx>#1"},
        {"<gpx><trk><name/><number>1</number>\n</trk></gpx>",
         "<gpx><trk><name/><number>1</number>\n<type>cycling</type></trk></gpx>#1"},
        {"<gpx><trk/></gpx>", "<gpx><trk><type>cycling</type></trk></gpx>#1"},
        {"<gpx><rte a='>' ></rte></gpx>", "<gpx><rte a='>' ><type>cycling</type></rte></gpx>#1"},
        {"<gpx><g:trk><e:extensions><type>x</type></e:extensions></g:trk></gpx>",
         "<gpx><g:trk><g:type>cycling</g:type><e:extensions><type>x</type></e:extensions></g:trk></gpx>#1"},
        {"<gpx><ä:rte><rtept/></ä:rte></gpx>", "<gpx><ä:rte><ä:type>cycling</ä:type><rtept/></ä:rte></gpx>#1"},
        {"<gpx><g:trk/></gpx>", "<gpx><g:trk><g:type>cycling</g:type></g:trk></gpx>#1"},
        // Several, and what is no target
        {"<gpx><trk/><wpt><type>a</type></wpt><rte><type>b</type></rte><trk><trkseg/></trk></gpx>",
         "<gpx><trk><type>cycling</type></trk><wpt><type>a</type></wpt><rte><type>cycling</type></rte>"
         "<trk><type>cycling</type><trkseg/></trk></gpx>#3"},
        {"<gpx><wpt/></gpx>", "<gpx><wpt/></gpx>#0"},
        {"<trk><type>a</type></trk>", "<trk><type>a</type></trk>#0"},
        {"<gpx><extensions><trk/></extensions></gpx>", "<gpx><extensions><trk/></extensions></gpx>#0"},
        // What is around it
        {"\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!DOCTYPE gpx [<!ENTITY e \"<trk/>\"> <!-- <trk> -->]>\r\n"
         "<gpx>&e;<!-- <trk> --><![CDATA[<trk>]]><?p <trk> ?><trk\n/>\r\n</gpx>\r\n",
         "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<!DOCTYPE gpx [<!ENTITY e \"<trk/>\"> <!-- <trk> -->]>\r\n"
         "<gpx>&e;<!-- <trk> --><![CDATA[<trk>]]><?p <trk> ?><trk\n><type>cycling</type></trk>\r\n</gpx>\r\n#1"},
        {"<!DOCTYPE g [<!ENTITY e '<type>x</type>'>]><g><trk>&e;<trkseg/></trk></g>",
         "<!DOCTYPE g [<!ENTITY e '<type>x</type>'>]><g><trk>&e;<type>cycling</type><trkseg/></trk></g>#1"},
        {"<!DOCTYPE g [<!ENTITY e 'x'>]><g><trk><type>&e;</type></trk></g>",
         "<!DOCTYPE g [<!ENTITY e 'x'>]><g><trk><type>cycling</type></trk></g>#1"},
        {"<!DOCTYPE g SYSTEM 'file:///etc/passwd'><g><trk/></g>",
         "<!DOCTYPE g SYSTEM 'file:///etc/passwd'><g><trk><type>cycling</type></trk></g>#1"},
        {"<?xml version='1.0' encoding='windows-1252'?><gpx><trk><name>\x80\xFC</name></trk></gpx>",
         "<?xml version='1.0' "
         "encoding='windows-1252'?><gpx><trk><name>\x80\xFC</name><type>cycling</type></trk></gpx>#1"},
        {"<?xml version='1.0' encoding='ISO-8859-1'?><gpx><\xFC:trk/></gpx>",
         "<?xml version='1.0' encoding='ISO-8859-1'?><gpx><\xFC:trk><\xFC:type>cycling</\xFC:type></\xFC:trk></gpx>#1"},
        // White space before the declaration, more than is looked at in one go, and behind a mark
        {"\r\n\t <?xml version='1.0'?><gpx><trk/></gpx>",
         "\r\n\t <?xml version='1.0'?><gpx><trk><type>cycling</type></trk></gpx>#1"},
        {viel + "<?xml version='1.0' encoding='ISO-8859-1'?><gpx><\xFC:trk>\xFC</\xFC:trk></gpx>\n",
         viel + "<?xml version='1.0' "
                "encoding='ISO-8859-1'?><gpx><\xFC:trk>\xFC<\xFC:type>cycling</\xFC:type></\xFC:trk></gpx>"
                "\n#1"},
        {"\xEF\xBB\xBF\n<?xml version='1.0'?><gpx><trk><type>a</type></trk></gpx>",
         "\xEF\xBB\xBF\n<?xml version='1.0'?><gpx><trk><type>cycling</type></trk></gpx>#1"},
        // No XML
        {"", "no XML"},
        {"Hallo", "no XML"},
        {"<gpx><trk>", "no XML"},
        {"<gpx><trk/></gpx><x/>", "no XML"},
        {"<gpx><trk></rte></gpx>", "no XML"},
        {"<gpx><trk/>&x;</gpx>", "no XML"},
        {"\n\xEF\xBB\xBF<?xml version='1.0'?><gpx><trk/></gpx>", "no XML"},
        {"x\n<?xml version='1.0'?><gpx><trk/></gpx>", "no XML"},
        {viel, "no XML"},
        {"<gpx><trk/>\xFF</gpx>", "no XML"},
        {"\xEF\xBB\xBF" + weit("<gpx><trk/></gpx>", false), "no XML"},
        {weit("\xEF\xBB\xBF<gpx><trk/></gpx>", true), "no XML"},
    };
    for (const Fall& fall : faelle) {
        EXPECT_EQ(gezaehlt(fall.vorher, GpxSportart::rad), fall.nachher) << fall.vorher;
    }
}

TEST(GpxSpleisse, writesInTheEncodingOfTheFile) {
    const std::string kopf = "\n<?xml version='1.0' encoding='UTF-16'?>";
    const std::string vorher = kopf + "<gpx><g:trk/><rte><type>x</type></rte></gpx>";
    const std::string nachher =
        kopf + "<gpx><g:trk><g:type>e_bike</g:type></g:trk><rte><type>e_bike</type></rte></gpx>";
    for (const bool gross : {false, true}) {
        EXPECT_EQ(gezaehlt(weit(vorher, gross), GpxSportart::eBike), weit(nachher, gross) + "#2");
    }
}

/// Well-formed documents of every kind of detail that an editor could lose.
class Dichter {
  public:
    explicit Dichter(unsigned saat) : zufall_(saat) {}

    std::string dokument() {
        std::string text = eines({"", "\xEF\xBB\xBF"}) + eines({"", "<?xml version=\"1.0\"?>\r\n"});
        text += eines({"", "<!-- > -->", "<!DOCTYPE gpx [<!ENTITY e '<b>f</b>'>]>"});
        const bool entitaet = text.find("ENTITY") != std::string::npos;
        text += "<gpx" + attribute() + ">";
        for (int i = ganz(4); i > 0; --i) {
            text += zwischen(entitaet) + ziel(entitaet);
        }
        return text + zwischen(entitaet) + "</gpx" + eines({"", " ", "\n"}) + ">" + eines({"", "\n", "<!-- -->"});
    }

  private:
    int ganz(int grenze) { return static_cast<int>(zufall_() % static_cast<unsigned>(grenze)); }
    std::string eines(std::initializer_list<const char*> wahl) {
        return *(wahl.begin() + ganz(static_cast<int>(wahl.size())));
    }
    std::string attribute() { return eines({"", " a='>'", "\n b=\"/\" ", " c='&quot;'"}); }
    std::string zwischen(bool entitaet) {
        return eines({"", "\n  ", "<!-- </trk> -->", "<?p </trk>?>", "<![CDATA[<trk>]]>", entitaet ? "&e;" : "&#65;",
                      "<wpt lat='1' lon='2'><type>y</type></wpt>"});
    }
    std::string element(const std::string& name, const std::string& inhalt) {
        if (inhalt.empty() && ganz(2) == 0) {
            return "<" + name + attribute() + "/>";
        }
        return "<" + name + attribute() + ">" + inhalt + "</" + name + eines({"", " "}) + ">";
    }
    std::string ziel(bool entitaet) {
        const std::string praefix = eines({"", "", "g:"});
        const bool spur = ganz(2) == 0;
        std::string inhalt;
        for (int i = ganz(4); i > 0; --i) {
            inhalt += zwischen(entitaet) + element(eines({"name", "desc", "number", "type", "g:type"}),
                                                   eines({"", "running", " x ", "<b>c</b>", "<![CDATA[d]]>"}));
        }
        for (int i = ganz(3); i > 0; --i) {
            const std::string punkt = "<trkpt lat='47." + std::to_string(ganz(100)) + "' lon='8'/>";
            inhalt += zwischen(entitaet) + (spur ? element("trkseg", punkt) : "<rtept lat='1' lon='2'/>");
        }
        return element(praefix + (spur ? "trk" : "rte"), inhalt);
    }

    std::mt19937 zufall_;
};

TEST(GpxSpleisse, largeFilesHaveTheirPlaceFoundInPieces) {
    constexpr std::size_t mebi = std::size_t{1} << 20U;
    const auto vorher = [](std::size_t leerraum) {
        return "<gpx><trk>" + std::string(leerraum, ' ') + "<type a=\"/>\"/></trk></gpx>";
    };
    const auto pruefe = [&](std::size_t leerraum) {
        const std::string inhalt = vorher(leerraum);
        const auto spleisse = GpxSpleisse::berechne(xmlInhalt(inhalt), GpxSportart::laufen);
        ASSERT_TRUE(spleisse.has_value()) << leerraum;
        const std::size_t schildende = 10 + leerraum + 14;
        const std::vector<GpxSpleisse::Spleiss> erwartet = {{{schildende - 2, schildende}, ">running</type>"}};
        EXPECT_EQ(spleisse->spleisse, erwartet) << leerraum;
    };
    pruefe(130 * mebi);
    for (const std::size_t naht : {10U, 16U, 23U}) {  // where the pieces part: before the tag, in it, before its end
        pruefe(16 * mebi - naht);
    }
}

TEST(GpxSpleisse, moreTracksThanAreKeptAreFoundAgain) {
    constexpr std::size_t viele = 200'000;
    std::string vorher = "<gpx>";
    std::string nachher = vorher;
    for (std::size_t i = 0; i < viele; ++i) {
        vorher += "<trk/>";
        nachher += "<trk><type>cycling</type></trk>";
    }
    const auto spleisse = GpxSpleisse::berechne(xmlInhalt(vorher + "</gpx>"), GpxSportart::rad);
    ASSERT_TRUE(spleisse.has_value());
    EXPECT_FALSE(spleisse->alle);
    EXPECT_LT(spleisse->spleisse.size() * sizeof(GpxSpleisse::Spleiss), GpxSpleisse::kHoechstens);
    EXPECT_EQ(spleisse->ziele, viele);
    EXPECT_TRUE(mit(vorher + "</gpx>", GpxSportart::rad) == nachher + "</gpx>");
}

/// Whether the bytes that would go are only the content of a <type>, or the end of a tag that has to be opened.
bool istErlaubt(const std::string& inhalt, const XmlBereich& weg) {
    const std::string_view bytes = std::string_view(inhalt).substr(weg.von, weg.bis - weg.von);
    const std::string_view danach = std::string_view(inhalt).substr(weg.bis);
    return bytes.empty() || bytes == "/>" ||
           (inhalt[weg.von - 1] == '>' && (danach.starts_with("</type") || danach.starts_with("</g:type")));
}

TEST(GpxSpleisse, whateverTheDocumentOnlyTypesChange) {
    for (unsigned saat = 0; saat < 3000; ++saat) {
        const std::string vorher = Dichter(saat).dokument();
        SCOPED_TRACE(vorher);
        const std::string rad = mit(vorher, GpxSportart::rad).value();
        ASSERT_EQ(mit(rad, GpxSportart::rad), rad);
        ASSERT_EQ(mit(mit(rad, GpxSportart::ski).value(), GpxSportart::rad), rad);
        const auto spleisse = GpxSpleisse::berechne(xmlInhalt(vorher), GpxSportart::rad);
        for (const auto& spleiss : spleisse->spleisse) {
            ASSERT_TRUE(istErlaubt(vorher, spleiss.stelle));
        }
        const GpxMetadaten alt = GpxLeser::ausInhalt(vorher);
        const GpxMetadaten neu = GpxLeser::ausInhalt(rad);
        ASSERT_EQ(neu.punkte, alt.punkte);
        ASSERT_EQ(neu.skizze, alt.skizze);
        ASSERT_EQ(neu.spurName, alt.spurName);
    }
}

}  // namespace
}  // namespace spurkiste
