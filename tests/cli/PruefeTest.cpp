#include <cerrno>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "base/Dateien.h"
#include "cli/Pruefe.h"
#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"

namespace spurkiste {

// How a failed comparison shows one.
static void PrintTo(const GpxBefund& befund, std::ostream* strom) {
    *strom << "{art " << static_cast<int>(befund.art) << ", " << befund.anzahl << " mal, Zeile " << befund.zeile
           << ", fehler " << static_cast<int>(befund.fehler) << "}";
}

namespace {

using Art = GpxBefund::Art;
using Befunde = std::vector<GpxBefund>;

constexpr auto kKeiner = XmlFehler::keiner;

/// A track whose segment holds this, from line 4 on; line 3 is a good point.
std::string spur(std::string_view darin) {
    return "<gpx><trk>\n<trkseg>\n<trkpt lat='47.1' lon='8.2'/>\n" + std::string(darin) + "</trkseg></trk></gpx>\n";
}

struct Fall {
    const char* name;
    std::string inhalt;
    Befunde erwartet;
};

std::vector<Fall> faelle() {
    const std::string gut = "<trkpt lat='1' lon='2'><ele>3</ele><time>2024-01-02T03:04:05Z</time></trkpt>\n";
    return {
        {"nothing is wrong", spur(gut), {}},

        {"no bytes", "", {{Art::keinPunkt, 1, 1, kKeiner}, {Art::abgebrochen, 1, 1, XmlFehler::endeFehlt}}},
        {"no XML",
         "lat,lon\n1,2\n",
         {{Art::keinPunkt, 1, 1, kKeiner}, {Art::abgebrochen, 1, 1, XmlFehler::falschesZeichen}}},
        {"waypoints only", "<gpx>\n<wpt lat='1' lon='2'/>\n</gpx>", {{Art::keinPunkt, 1, 3, kKeiner}}},

        {"cut off between elements", "<gpx><trk><trkseg>\n" + gut, {{Art::abgebrochen, 1, 3, XmlFehler::endeFehlt}}},
        {"not closed",
         "<gpx><trk><trkseg>\n" + gut + "</trk>\n</gpx>",
         {{Art::abgebrochen, 1, 3, XmlFehler::falschesEnde}}},
        {"a lone ampersand",
         "<gpx><trk>\n<name>Auf & ab</name><trkseg>\n" + gut,
         {{Art::keinPunkt, 1, 2, kKeiner}, {Art::abgebrochen, 1, 2, XmlFehler::falschesZeichen}}},
        {"an entity of another language",
         spur(gut + "<name>a&nbsp;b</name>\n"),
         {{Art::abgebrochen, 1, 5, XmlFehler::unbekannteEntitaet}}},
        {"two documents in one file", spur(gut) + spur(gut), {{Art::abgebrochen, 1, 6, XmlFehler::rest}}},

        {"points without coordinates",
         spur(gut + "<trkpt lat='47,1' lon='8,2'/>\n<trkpt lat=' 47.1' lon='8.2'/>\n<trkpt lat='1'/>\n<trkpt\n/>\n"),
         {{Art::punktVerworfen, 4, 5, kKeiner}}},
        {"all points without coordinates",
         "<gpx><trk><trkseg>\n<trkpt lat='nan' lon='inf'/></trkseg></trk></gpx>",
         {{Art::keinPunkt, 1, 2, kKeiner}, {Art::punktVerworfen, 1, 2, kKeiner}}},
        {"points with a prefix",
         "<g:gpx xmlns:g='http://www.topografix.com/GPX/1/1'>\n<g:trk><g:trkseg>\n<g:trkpt lat='1' lon='2'/>\n"
         "<g:trkpt lat='1' lon='2'/>\n</g:trkseg></g:trk></g:gpx>",
         {{Art::keinPunkt, 1, 5, kKeiner}, {Art::punktMitPraefix, 2, 3, kKeiner}}},
        {"unreadable times",
         spur(gut + "<trkpt lat='1' lon='2'><time>2024-01-02 03:04:05</time></trkpt>\n"
                    "<trkpt lat='1' lon='2'><time>2024-01-02</time></trkpt>\n"
                    "<trkpt lat='1' lon='2'><time>2024-02-30T00:00:00Z</time></trkpt>\n"),
         {{Art::zeitUnlesbar, 3, 5, kKeiner}}},
        {"unreadable elevations",
         spur("<trkpt lat='1' lon='2'><ele>400 m</ele></trkpt>\n<trkpt lat='1' lon='2'><ele/></trkpt>\n"),
         {{Art::hoeheUnlesbar, 2, 4, kKeiner}}},
        {"times and elevations elsewhere are nobody's",
         "<gpx><metadata><time>gestern</time></metadata><wpt lat='1' lon='2'><ele>hoch</ele></wpt>" +
             spur(gut).substr(5),
         {}},
        {"everything at once, lines ended as elsewhere",
         "\xEF\xBB\xBF<?xml version='1.0'?>\r\n<gpx><trk><trkseg>\r\n"
         "<trkpt lat='1' lon='2'><ele>x</ele><time>y</time></trkpt>\r\n"
         "<trkpt lat='1'><ele>x</ele></trkpt>\r\n<h:trkpt lat='1' lon='2'/>\r\n",
         {{Art::abgebrochen, 1, 6, XmlFehler::endeFehlt},
          {Art::punktVerworfen, 1, 4, kKeiner},
          {Art::punktMitPraefix, 1, 5, kKeiner},
          {Art::zeitUnlesbar, 1, 3, kKeiner},
          {Art::hoeheUnlesbar, 2, 3, kKeiner}}},
    };
}

TEST(Pruefe, saysWhatHowOftenAndWhereFirst) {
    const TempOrdner ordner;
    std::error_code fehler;
    for (const Fall& fall : faelle()) {
        SCOPED_TRACE(fall.name);
        const auto gefunden = GpxLeser::befunde(ordner.schreibe("a.gpx", fall.inhalt), fehler);
        ASSERT_TRUE(gefunden);
        EXPECT_EQ(*gefunden, fall.erwartet);
    }
}

TEST(Pruefe, countsLinesInFilesThatAreReadInPieces) {
    const TempOrdner ordner;
    std::error_code fehler;
    std::string inhalt = "\n\n<?xml version='1.0'?><gpx><trk><trkseg>\n";
    std::size_t zeile = 4;
    while (inhalt.size() <= XmlLauf::kAmStueck) {
        inhalt += "<trkpt lat='47.123456' lon='8.123456'><time>2024-01-02T03:04:05Z</time></trkpt>\n";
        ++zeile;
    }
    inhalt += "<trkpt lat='47.1' lon='8.1'><time>nie</time></trkpt>\n<trkpt";
    EXPECT_EQ(
        GpxLeser::befunde(ordner.schreibe("a.gpx", inhalt), fehler),
        (Befunde{{Art::abgebrochen, 1, zeile + 1, XmlFehler::endeFehlt}, {Art::zeitUnlesbar, 1, zeile, kKeiner}}));
}

/// The order of a folder, and everything that is no file in it.
class PruefeOrdner : public testing::Test {
  protected:
    PruefeOrdner() {
        ordner_.schreibe("b.gpx", "<gpx><trk><trkseg>\n<trkpt lat='1' lon='2'/>\n<trkpt/>\n");
        ordner_.schreibe("a.GPX", spur(""));
        ordner_.schreibe("leer.gpx", "");
        ordner_.schreibe("ohne.txt", "kein GPX");
        std::filesystem::create_directory(ordner_.in("ordner.gpx"));
        std::filesystem::create_symlink("nirgends", ordner_.in("verweis.gpx"));
        EXPECT_EQ(::mkfifo(ordner_.in("rohr.gpx").c_str(), 0600), 0);
    }

    /// Every name with the state of what it leads to.
    [[nodiscard]] std::map<std::string, std::optional<dateien::Stand>> bestand() const {
        std::map<std::string, std::optional<dateien::Stand>> alles;
        for (const std::string& name : dateien::liste(ordner_.pfad())) {
            alles[name] = dateien::stand(ordner_.in(name));
        }
        return alles;
    }

    TempOrdner ordner_;
};

TEST_F(PruefeOrdner, explainsToPeopleAndChangesNothing) {
    const auto vorher = bestand();
    const auto ergebnisse = pruefeDateien({ordner_.pfad(), ordner_.in("ohne.txt")});
    EXPECT_EQ(bestand(), vorher);
    const std::string& o = ordner_.pfad();
    EXPECT_EQ(alsText(ergebnisse, Textform::sicher),
              o + "/b.gpx: bricht in Zeile 4 ab: das Ende fehlt\n" +              //
                  o + "/b.gpx: 1 Punkt ohne brauchbare Koordinate (Zeile 3)\n" +  //
                  o + "/leer.gpx: leer\n" +                                       //
                  o + "/ohne.txt: kein Punkt in Track oder Route\n" +             //
                  o + "/ohne.txt: bricht in Zeile 1 ab: kein gültiges XML, oft ein einzelnes & oder " +
                  "eine falsche Kodierung\n" +  //
                  "4 Dateien geprüft, 3 mit Befund, 3 nicht lesbar\n");
    EXPECT_EQ(nichtLesbare(ergebnisse, Textform::sicher),
              o + "/ordner.gpx: nicht lesbar: ein Ordner\n" +                 //
                  o + "/rohr.gpx: nicht lesbar: keine gewöhnliche Datei\n" +  //
                  o + "/verweis.gpx: nicht lesbar: No such file or directory\n");
    const auto seltsam = pruefeDateien({ordner_.schreibe("a\"\\\n\x01\xff.gpx", spur("<trkpt/>"))});
    EXPECT_EQ(alsText(seltsam, Textform::sicher),
              o + "/a\"\\  \xEF\xBF\xBD.gpx: 1 Punkt ohne brauchbare Koordinate (Zeile 4)\n" +
                  "1 Datei geprüft, 1 mit Befund\n");
}

TEST_F(PruefeOrdner, takesWhateverIsNamedAndNeverWaits) {
    const std::vector<std::string> worte{ordner_.in("rohr.gpx"),
                                         ordner_.in("verweis.gpx"),
                                         ordner_.in("fehlt"),
                                         "/dev/tty",
                                         "/dev/zero",
                                         ordner_.in("a.GPX"),
                                         ""};
    const auto ergebnisse = pruefeDateien(worte);
    ASSERT_EQ(ergebnisse.size(), worte.size());
    for (const Pruefergebnis& ergebnis : ergebnisse) {
        EXPECT_EQ(ergebnis.befunde.has_value(), ergebnis.datei == ordner_.in("a.GPX")) << ergebnis.datei;
    }
    EXPECT_EQ(alsText(ergebnisse, Textform::sicher), "1 Datei geprüft, 0 mit Befund, 6 nicht lesbar\n");
}

TEST_F(PruefeOrdner, saysWhyAFolderCannotBeListed) {
    const KeineNummern keine;
    EXPECT_EQ(nichtLesbare(pruefeDateien({ordner_.pfad()}), Textform::sicher),
              ordner_.pfad() + ": nicht lesbar: " + std::generic_category().message(EMFILE) + "\n");
}

}  // namespace
}  // namespace spurkiste
