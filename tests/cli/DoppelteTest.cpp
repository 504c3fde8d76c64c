#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cli/Dateiauswahl.h"
#include "cli/Doppelte.h"
#include "hilfe/TempOrdner.h"

namespace spurkiste {
namespace {

std::string spur(const std::vector<std::string>& orte, const std::string& sonst = "") {
    std::string text = "<gpx>" + sonst + "<trk><trkseg>";
    for (const std::string& ort : orte) {
        text += "<trkpt " + ort + "/>";
    }
    return text + "</trkseg></trk></gpx>";
}

TEST(Doppelte, findsSameTracksWhateverTheBytes) {
    const TempOrdner ordner;
    const std::string a = "lat='47.1' lon='8.2'";
    const std::string b = "lat='47.2' lon='8.2'";
    const auto schreibe = [&](const std::string& name, const std::string& inhalt) {
        return ordner.schreibe(name, inhalt);
    };
    const auto eins = schreibe("a.gpx", spur({a, b}));
    const auto zwei = schreibe("b.GPX", spur({"lon='+8.20' lat='47.100'", b}, "<metadata><name>x</name></metadata>"));
    schreibe("andersherum.gpx", spur({b, a}));
    schreibe("kuerzer.gpx", spur({a}));
    schreibe("leer1.gpx", spur({}));
    schreibe("leer2.gpx", spur({}));
    schreibe("kaputt.gpx", "nichts");
    schreibe("c.txt", spur({a, b}));
    const auto drei = schreibe("z.gpx", "<gpx><rte><rtept " + a + "/><rtept " + b + "/></rte></gpx>");
    const auto null = schreibe("null1.gpx", spur({"lat='0' lon='0'"}));
    const auto minusNull = schreibe("null2.gpx", spur({"lat='-0' lon='0'"}));

    const auto gruppen = findeDoppelte(dateiauswahl::imOrdner(ordner.pfad())).gruppen;
    EXPECT_EQ(gruppen, (std::vector<std::vector<std::string>>{{eins, zwei, drei}, {null, minusNull}}));
}

TEST(Doppelte, aFolderThatCannotBeListedIsAnError) {
    const TempOrdner ordner;
    EXPECT_EQ(doppelte(ordner.pfad() + "/fehlt", Textform::sicher), 1);
    EXPECT_EQ(doppelte(ordner.schreibe("a.gpx", spur({})), Textform::sicher), 1);
}

}  // namespace
}  // namespace spurkiste
