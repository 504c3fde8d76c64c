#include <algorithm>
#include <chrono>
#include <filesystem>
#include <limits>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/Dateien.h"
#include "hilfe/BeispielEintrag.h"
#include "hilfe/TempOrdner.h"
#include "library/Cache.h"
#include "library/JsonStuecke.h"
#include "track/GpxMetadatenJson.h"

namespace spurkiste {
namespace {

namespace fs = std::filesystem;

Eintrag teile(GpxMetadaten eintrag) {
    return std::make_shared<const GpxMetadaten>(std::move(eintrag));
}

std::string recordJson(const std::string& pfad) {
    std::string json;
    EXPECT_EQ(GpxMetadatenJson::haengeAn(json, vollerEintrag(pfad)), GpxMetadatenJson::Ergebnis::geschrieben);
    return json;
}

TEST(Cache, ReadsBackWhatWasWrittenTheLastOfEachPath) {
    const TempOrdner ordner;
    std::vector<Eintrag> liste;
    const auto fuegeHinzu = [&](const std::string& name) -> GpxMetadaten& {
        auto eintrag = std::make_shared<GpxMetadaten>(vollerEintrag(ordner.in(name)));
        eintrag->punkte = static_cast<std::int64_t>(liste.size());
        liste.push_back(eintrag);
        return *eintrag;
    };
    // Files with such names are read every time; the others must be cached all the same, first and last in the list.
    fuegeHinzu("\xe4.gpx");
    for (int i = 0; i < 300; ++i) {
        fuegeHinzu("Tour " + std::to_string(i % 250) + " \"Ö\\\n{\u2028.gpx");
    }
    Skizze::Bau gross;  // many times the portion in which the file is written and read
    gross.beginneLinie();
    for (int i = 0; i < 40000; ++i) {
        gross.haengeAn({i / 7.0, -i / 3.0});
    }
    fuegeHinzu("lang.gpx").skizze = std::move(gross).fertig();
    fuegeHinzu("b\xff.gpx");

    ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
    const Cache gelesen = Cache::liesAus(ordner.pfad());
    EXPECT_EQ(gelesen.eintraege.size(), 251u);
    for (const Eintrag& erwartet : std::span(liste).subspan(51, 251)) {  // the last of every path
        ASSERT_EQ(gelesen.eintraege.count(erwartet->pfad), 1u) << erwartet->pfad;
        EXPECT_EQ(*gelesen.eintraege.at(erwartet->pfad), *erwartet);
    }

    ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), {}));
    EXPECT_EQ(ordner.lies(Cache::kDateiname), R"({"version":3,"eintraege":{}})");
}

TEST(Cache, TakesOnlyWholeAndValidTexts) {
    const std::string a = R"("/a":)" + recordJson("/a");
    const std::string b = R"("/b":)" + recordJson("/b");
    const std::string vorn = R"({"version":3,"eintraege":{)";
    const std::string leer = vorn + "}";
    const std::vector<std::pair<std::string, std::size_t>> gute = {
        {leer + "}", 0},
        {vorn + a + "," + b + "}}", 2},
        {" {\r\n\"eintraege\"\t: {" + a + " ,\n" + b + " } , \"version\" : 3 } \n", 2},
        {R"({"x":[{"y":"}\"]"}],"version":3,"z":null,"eintraege":{)" + a + R"(},"version2":"4"})", 1},
        {R"({"\u0076ersion":3,"eintraege":{"\/a":)" + recordJson("/a") + "}}", 1},
        {R"({"version":2,"eintraege":{)" + a + "}}", 1},
        {R"({"version":2,"version":3,"eintraege":{)" + a + R"(},"eintraege":{)" + b + "," + b + "}}", 1}};
    for (const auto& [text, anzahl] : gute) {
        const auto cache = Cache::ausJson(text);
        ASSERT_TRUE(cache) << text;
        EXPECT_EQ(cache->eintraege.size(), anzahl) << text;
    }
    std::vector<std::string> schlechte = {"\xef\xbb\xbf" + leer + "}", leer + std::string("}\0", 2)};
    for (const char* text : {"", " ", "null", "[]", "{}", R"({"version":3})", R"({"eintraege":{}})",
                             R"({"version":3,"eintraege":null})", R"({"version":3,"eintraege":[]})"}) {
        schlechte.emplace_back(text);
    }
    for (const char* version : {"3.0", "\"3\"", "null", "99999999999999999999", R"("x","version":3)"}) {
        schlechte.push_back(R"({"version":)" + std::string(version) + R"(,"eintraege":{}})");
    }
    for (const std::string& eintraege :
         {std::string(R"("/a":null}})"), std::string(R"("/a":{}}})"), std::string(R"("/a"}})"), "," + a + "}}",
          a + R"(,"/c":{"pfad":"/c"}}})", a + R"(,"/a":null}})", a + ",}}", a + " " + b + "}}", a + "}", a,
          a.substr(0, a.size() - 1)}) {
        schlechte.push_back(vorn + eintraege);
    }
    for (const char* rest :
         {"},", "}}", "} {}", R"(,"x":[1,]})", R"(,"x":[}})", R"(,"x":"\ud8"})", R"(,"x":})", ",x:1}", R"(,"x"1})",
          R"(,"x":1 2})", R"(,"x":tru})", ",\"\xff\":1}", R"(,"x":)", R"(,"x":")"}) {
        schlechte.push_back(leer + rest);
    }
    const std::string tief(1000000, '[');
    schlechte.push_back(leer + R"(,"x":)" + tief);
    schlechte.push_back(leer + R"(,"x":)" + tief + std::string(tief.size(), ']') + "}");
    for (const std::string& text : schlechte) {
        EXPECT_FALSE(Cache::ausJson(text)) << text.substr(0, 200);
    }
}

TEST(Cache, MayBeOfAnySizeButNoValueInIt) {
    const std::string viel(JsonStuecke::kHoechstens / 2, 'x');
    const std::string vorn = R"({"version":3,"eintraege":{},"x":")" + viel;
    EXPECT_TRUE(Cache::ausJson(vorn + R"(","y":")" + viel + R"(","z":")" + viel + "\"}"));
    EXPECT_FALSE(Cache::ausJson(vorn + viel + "\"}"));
    EXPECT_FALSE(Cache::ausJson(vorn + viel + viel));
}

TEST(Cache, IsEmptyWhenTheFileIsOfNoUse) {
    const TempOrdner ordner;
    EXPECT_TRUE(Cache::liesAus(ordner.pfad()).eintraege.empty());
    EXPECT_TRUE(Cache::liesAus("/nirgends").eintraege.empty());
    const std::string eintraege = R"(,"eintraege":{"/a":)" + recordJson("/a") + "}}";
    for (const auto& [version, anzahl] : {std::pair("2", 0u), std::pair("3", 1u), std::pair("4", 0u)}) {
        ordner.schreibe(Cache::kDateiname, R"({"version":)" + std::string(version) + eintraege);
        const Cache cache = Cache::liesAus(ordner.pfad());
        EXPECT_EQ(cache.eintraege.size(), anzahl) << version;
        EXPECT_EQ(cache.version, Cache::kVersion);
    }
    fs::remove(ordner.in(Cache::kDateiname));
    fs::create_directory(ordner.in(Cache::kDateiname));
    EXPECT_TRUE(Cache::liesAus(ordner.pfad()).eintraege.empty());
}

TEST(Cache, MatchesBySizeAndDateOfTheFile) {
    const TempOrdner ordner;
    GpxMetadaten eintrag = vollerEintrag(ordner.schreibe("a.gpx", "12345"));
    eintrag.dateiGroesse = 5;
    eintrag.dateiDatum = dateien::angaben(eintrag.pfad)->geaendert;
    const fs::file_time_type datum = fs::last_write_time(eintrag.pfad);
    Cache cache;
    cache.eintraege[eintrag.pfad] = teile(eintrag);

    using std::chrono::milliseconds;
    for (const auto& [verschiebung, passt] : {std::pair(0, true), std::pair(500, true), std::pair(-500, true),
                                              std::pair(999, true), std::pair(1000, false), std::pair(-1000, false)}) {
        fs::last_write_time(eintrag.pfad, datum + milliseconds(verschiebung));
        EXPECT_EQ(cache.passend(eintrag.pfad) == cache.eintraege.at(eintrag.pfad), passt) << verschiebung;
    }
    fs::last_write_time(eintrag.pfad, datum);
    EXPECT_TRUE(cache.passend(eintrag.pfad));
    EXPECT_FALSE(cache.passend(ordner.in("b.gpx")));

    cache.eintraege[ordner.in("b.gpx")] = teile(eintrag);
    fs::copy_file(eintrag.pfad, ordner.in("b.gpx"));
    fs::last_write_time(ordner.in("b.gpx"), datum);
    EXPECT_FALSE(cache.passend(ordner.in("b.gpx"))) << "the record is another file's";

    ordner.schreibe("a.gpx", "123456");
    fs::last_write_time(eintrag.pfad, datum);
    EXPECT_FALSE(cache.passend(eintrag.pfad)) << "another size";
    fs::remove(eintrag.pfad);
    EXPECT_FALSE(cache.passend(eintrag.pfad)) << "the file is gone";
    fs::create_directory(eintrag.pfad);
    EXPECT_FALSE(cache.passend(eintrag.pfad)) << "a folder is no file";
}

TEST(Cache, KeepsTheOldFileWhenTheNewOneCannotBeWritten) {
    const TempOrdner ordner;
    ordner.schreibe(Cache::kDateiname, "old");
    GpxMetadaten kaputt = vollerEintrag("/b");
    kaputt.anstiegMeter = std::numeric_limits<double>::quiet_NaN();
    const std::vector<Eintrag> liste = {teile(vollerEintrag("/a")), teile(kaputt)};
    EXPECT_FALSE(Cache::schreibeNach(ordner.pfad(), liste));
    EXPECT_EQ(ordner.lies(Cache::kDateiname), "old");
    EXPECT_THAT(dateien::liste(ordner.pfad()), testing::ElementsAre(Cache::kDateiname)) << "nothing may be left over";

    const std::span gute(liste.data(), 1);
    for (const std::string& ort : {ordner.in("nirgends"), ordner.in(Cache::kDateiname), std::string("/proc")}) {
        EXPECT_FALSE(Cache::schreibeNach(ort, gute)) << ort;
    }
    fs::create_directories(ordner.in("x") + "/" + std::string(Cache::kDateiname) + "/y");
    EXPECT_FALSE(Cache::schreibeNach(ordner.in("x"), gute)) << "a folder is in the way";
    EXPECT_EQ(dateien::liste(ordner.in("x")).size(), 1u);
}

TEST(Cache, IsNoWayOutOfTheFolderAndForThoseAloneWhoMayChangeIt) {
    const TempOrdner ordner;
    const std::string datei = ordner.in(Cache::kDateiname);
    const std::vector<Eintrag> liste{teile(vollerEintrag(ordner.in("a.gpx")))};
    ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
    const std::string inhalt = ordner.lies(Cache::kDateiname);
    const auto rechte = [&] { return static_cast<unsigned>(fs::symlink_status(datei).permissions()); };
    EXPECT_EQ(rechte(), 0600U);

    const TempOrdner anderswo;
    fs::rename(datei, anderswo.in("notizen"));
    fs::create_symlink(anderswo.in("notizen"), datei);
    EXPECT_TRUE(Cache::liesAus(ordner.pfad()).eintraege.empty());
    for (const std::string_view notizen : {std::string_view(inhalt), std::string_view("meine")}) {
        anderswo.schreibe("notizen", notizen);
        fs::remove(datei);
        fs::create_symlink(anderswo.in("notizen"), datei);
        ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
        EXPECT_EQ(anderswo.lies("notizen"), notizen);
        EXPECT_FALSE(fs::is_symlink(datei));
        EXPECT_EQ(Cache::liesAus(ordner.pfad()).eintraege.size(), 1U);
    }

    fs::permissions(datei, static_cast<fs::perms>(0644));  // of an older program, and otherwise as it would be written
    ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
    EXPECT_EQ(rechte(), 0600U);
    fs::remove(datei);
    fs::permissions(ordner.pfad(), static_cast<fs::perms>(0775));
    ASSERT_TRUE(Cache::schreibeNach(ordner.pfad(), liste));
    EXPECT_EQ(rechte(), 0664U);
}

TEST(JsonStuecke, CutAlikeHoweverTheTextArrives) {
    const std::string text = R"( {"a\"}\\":[1,{"b":"]"}],"c" :-1.5e3 , "\\":true} 12)";
    for (std::size_t portion = 1; portion <= text.size(); ++portion) {
        std::string_view rest = text;
        JsonStuecke stuecke(
            [&](std::span<char> puffer) {
                const std::size_t anzahl = rest.copy(puffer.data(), std::min(portion, puffer.size()));
                rest.remove_prefix(anzahl);
                return anzahl;
            },
            8);
        std::string gesehen;
        const auto wert = [&] { gesehen += "<" + std::string(stuecke.wert().value_or("-")) + ">"; };
        EXPECT_FALSE(stuecke.nimm('['));
        EXPECT_TRUE(stuecke.nimm('{'));
        for (int i = 0; i < 3; ++i) {
            wert();
            EXPECT_TRUE(stuecke.nimm(':'));
            wert();
            EXPECT_EQ(stuecke.nimm(','), i < 2);
        }
        wert();
        EXPECT_TRUE(stuecke.nimm('}'));
        EXPECT_FALSE(stuecke.amEnde());
        wert();
        EXPECT_TRUE(stuecke.amEnde());
        wert();
        EXPECT_EQ(gesehen, R"(<"a\"}\\"><[1,{"b":"]"}]><"c"><-1.5e3><"\\"><true><-><12><->)") << portion;
    }
}

}  // namespace
}  // namespace spurkiste
