#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hilfe/BeispielEintrag.h"
#include "track/GpxMetadatenJson.h"

namespace spurkiste {
namespace {

using Ergebnis = GpxMetadatenJson::Ergebnis;
using Fremdbytes = GpxMetadatenJson::Fremdbytes;

std::string alsJson(const GpxMetadaten& eintrag) {
    std::string text;
    EXPECT_EQ(GpxMetadatenJson::haengeAn(text, eintrag), Ergebnis::geschrieben);
    return text;
}

Eintrag ausJson(const std::string& json) {
    GpxMetadatenJson::Leser leser;
    const std::string gepolstert = json + std::string(GpxMetadatenJson::Leser::kPolster, '}');
    return leser.eintrag(std::string_view(gepolstert).substr(0, json.size()));
}

/// One member: its name, what kind of value it takes, whether it must be there, and its value in the full record.
struct Mitglied {
    std::string name;
    char art;  // as in kWerte
    bool pflicht;
    std::string wert;
};

const std::vector<Mitglied>& mitglieder() {
    static const std::vector<Mitglied> liste = {
        {"pfad", 's', true, R"("/g/Tour.gpx")"},
        {"dateiName", 's', true, R"("Tour")"},
        {"spurName", 's', false, R"("Rund um den See")"},
        {"datum", 'd', false, "700000000.25"},
        {"dateiDatum", 'd', true, "700100000.5"},
        {"dateiGroesse", 'i', true, "123456"},
        {"streckeMeter", 'd', true, "12345.678"},
        {"dauerSekunden", 'd', true, "3600"},
        {"anstiegMeter", 'd', true, "250.5"},
        {"punkte", 'i', true, "4"},
        {"start", 'k', false, R"({"breite":47.5,"laenge":11.25})"},
        {"ende", 'k', false, R"({"breite":-33.8567844,"laenge":151.2152967})"},
        {"rundkurs", 'b', true, "true"},
        {"hatZeitstempel", 'b', true, "true"},
        {"sportRoh", 's', false, R"("cycling")"},
        {"startOrt", 's', false, R"("Seefeld")"},
        {"zielOrt", 's', false, R"("Sydney")"},
        {"skizze", 'a', true,
         R"([[{"breite":47.5,"laenge":11.25},{"breite":1e+300,"laenge":0}],[],[{"breite":-33.8567844,"laenge":151.2152967}]])"},
        {"wetter", 'w', false,
         R"({"temperaturCelsius":-3.5,"luftfeuchteProzent":80,"windKmh":12.25,"windrichtung":"NW","lage":"Schnee","messpunkte":3})"},
    };
    return liste;
}

using Teile = std::vector<std::pair<std::string, std::string>>;

std::string objekt(const Teile& teile) {
    std::string text;
    for (const auto& [name, wert] : teile) {
        text += (text.empty() ? "{\"" : ",\"") + name + "\":" + wert;
    }
    return text + "}";
}

Teile alleTeile() {
    Teile teile;
    for (const Mitglied& mitglied : mitglieder()) {
        teile.emplace_back(mitglied.name, mitglied.wert);
    }
    return teile;
}

TEST(GpxMetadatenJson, WritesMembersInOrderAndOnlyThosePresent) {
    EXPECT_EQ(alsJson(vollerEintrag("/g/Tour.gpx")), objekt(alleTeile()));
    EXPECT_EQ(alsJson(GpxMetadaten{}),
              R"({"pfad":"","dateiName":"","dateiDatum":0,"dateiGroesse":0,"streckeMeter":0,"dauerSekunden":0,)"
              R"("anstiegMeter":0,"punkte":0,"rundkurs":false,"hatZeitstempel":false,"skizze":[]})");
    GpxMetadaten nurProben;
    nurProben.wetter = GpxWetter{};
    nurProben.wetter->messpunkte = 1;
    EXPECT_THAT(alsJson(nurProben), testing::EndsWith(R"("skizze":[],"wetter":{"messpunkte":1}})"));
}

TEST(GpxMetadatenJson, ReadsBackEveryTextAndNumberAsItWas) {
    const std::string mitNull("a\0b", 3);
    for (const std::string& text : {std::string("\"\\/\b\f\n\r\t\x1f\x7f"), mitNull, std::string("\u2028\u2029\uffff"),
                                    std::string("😀 Ä A\u0308"), std::string("\\u0041{\"}[]\":,"), std::string()}) {
        GpxMetadaten eintrag = vollerEintrag(text);
        eintrag.dateiName = eintrag.wetter->lage.emplace() = text;
        const Eintrag gelesen = ausJson(alsJson(eintrag));
        ASSERT_TRUE(gelesen) << text;
        EXPECT_EQ(*gelesen, eintrag) << text;
    }
    using Grenzen = std::numeric_limits<double>;
    for (const double zahl : {0.1, -0.0, 1e22, 123456789012345678901.0, -98765432109876543210.0, 18446744073709551616.0,
                              Grenzen::max(), Grenzen::min(), Grenzen::denorm_min(), 47.480598073452711}) {
        GpxMetadaten eintrag = vollerEintrag("/z");
        eintrag.streckeMeter = eintrag.start->laenge = eintrag.dateiDatum.sekunden = zahl;
        eintrag.dateiGroesse = std::numeric_limits<std::int64_t>::max();
        eintrag.punkte = std::numeric_limits<std::int64_t>::min();
        const Eintrag gelesen = ausJson(alsJson(eintrag));
        ASSERT_TRUE(gelesen) << zahl;
        EXPECT_EQ(*gelesen, eintrag) << zahl;
        EXPECT_EQ(std::signbit(gelesen->streckeMeter), std::signbit(zahl)) << zahl;
    }
}

TEST(GpxMetadatenJson, AnIntegerThatIsWrittenFitsInto64Bits) {
    const std::vector<std::pair<double, std::string>> faelle = {
        {9223372036854774784.0, "9223372036854774784"},  // the last one below the limit
        {9223372036854775808.0, "9.223372036854776e+18"},
        {-9223372036854775808.0, "-9.223372036854776e+18"},
        {18446744073709551616.0, "1.8446744073709552e+19"},
        {123456789012345678901.0, "1.2345678901234568e+20"},
        {1e22, "1e+22"},
        {-1.7976931348623157e308, "-1.7976931348623157e+308"}};
    for (const auto& [zahl, text] : faelle) {
        GpxMetadaten eintrag;
        eintrag.streckeMeter = zahl;
        EXPECT_THAT(alsJson(eintrag), testing::HasSubstr("\"streckeMeter\":" + text + ","));
    }
}

TEST(GpxMetadatenJson, EveryMemberMustHaveItsTypeAndMayBeAbsentOnlyWhenOptional) {
    // The kinds of members, and values that just these take.
    const std::vector<std::pair<std::string, std::vector<std::string>>> werte = {
        {"s", {R"("x")", R"("\ud83d\ude00")"}},
        {"di", {"12", "-9223372036854775808"}},
        {"d", {"1.5", "-3e2", "7.0", "9223372036854775808", "123456789012345678901234567890"}},
        {"b", {"true"}},
        {"a", {"[]", "[[]]"}},
        {"k", {R"({"breite":1,"laenge":2})"}},
        {"w", {R"({"messpunkte":2})", R"({"messpunkte":1,"windKmh":null,"lage":null})"}},
        {"", {"{}", "[1]", "[[1]]", "[[{}]]", "[[[]]]", R"([[{"breite":1}]])", R"({"breite":1,"laenge":null})"}},
        {"", {R"({"messpunkte":2.5})", R"({"windKmh":1})", R"({"messpunkte":1,"lage":1})"}},
        {"", {"1e999", R"("\ud800")", R"("\udc00x")", R"("\ud800\ud800")"}}};
    for (std::size_t i = 0; i < mitglieder().size(); ++i) {
        const Mitglied& mitglied = mitglieder()[i];
        Teile ohne = alleTeile();
        ohne.erase(ohne.begin() + static_cast<std::ptrdiff_t>(i));
        EXPECT_EQ(ausJson(objekt(ohne)) == nullptr, mitglied.pflicht) << mitglied.name << " missing";
        Teile mit = alleTeile();
        mit[i].second = "null";
        const Eintrag mitNull = ausJson(objekt(mit));
        ASSERT_EQ(mitNull == nullptr, mitglied.pflicht) << mitglied.name << " null";
        EXPECT_TRUE(!mitNull || *mitNull == *ausJson(objekt(ohne))) << mitglied.name;
        for (const auto& [arten, beispiele] : werte) {
            for (const std::string& beispiel : beispiele) {
                mit[i].second = beispiel;
                EXPECT_EQ(ausJson(objekt(mit)) != nullptr, arten.find(mitglied.art) != std::string::npos)
                    << mitglied.name << ' ' << beispiel;
            }
        }
    }
}

TEST(GpxMetadatenJson, MembersMayComeInAnyOrderWithStrangersAndTwice) {
    GpxMetadaten erwartet = vollerEintrag("/g/Tour.gpx");
    erwartet.sportRoh.reset();
    Teile teile = alleTeile();
    std::reverse(teile.begin(), teile.end());
    teile.insert(teile.begin() + 3, {"fremd", R"({"a":[1,{"b":null}],"b":123456789012345678901234567890})"});
    teile.insert(teile.begin(), {"punkte", "99"});
    teile.insert(teile.begin(), {"spurName", "null"});
    teile.insert(teile.begin(), {"dateiName", R"("alt")"});
    teile.back().first = R"(pf\u0061d)";
    teile.emplace_back("sportRoh", "null");
    const Eintrag gelesen = ausJson(objekt(teile));
    ASSERT_TRUE(gelesen);
    EXPECT_EQ(*gelesen, erwartet);
    std::string mitLeerraum = "{\n\t \"pfad\" :\r" + objekt(alleTeile()).substr(8);
    EXPECT_TRUE(ausJson(mitLeerraum));
}

TEST(GpxMetadatenJson, ErrorsCountEvenInMembersThatAreIgnored) {
    for (const std::string fremd : {"", "[1,]", "01", "1e999", "\"\xff\""}) {
        Teile teile = alleTeile();
        teile.insert(teile.begin() + 5, {"fremd", fremd});
        EXPECT_FALSE(ausJson(objekt(teile))) << fremd;
    }
    for (const std::string text : {"", "null", "[]", "{"}) {
        EXPECT_FALSE(ausJson(text)) << text;
    }
    for (const auto& [tiefe, lesbar] : {std::pair(1000, true), std::pair(1000000, false)}) {
        Teile teile = alleTeile();
        const auto anzahl = static_cast<std::size_t>(tiefe);
        teile.emplace_back("fremd", std::string(anzahl, '[') + std::string(anzahl, ']'));
        EXPECT_EQ(ausJson(objekt(teile)) != nullptr, lesbar) << tiefe;
    }
}

TEST(GpxMetadatenJson, RefusesWhatHasNoPlaceInJsonAndLeavesTheTargetAlone) {
    std::vector<std::pair<GpxMetadaten, Ergebnis>> faelle(9, {vollerEintrag("/x"), Ergebnis::nichtEndlich});
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    faelle[0].first.streckeMeter = std::nan("");
    faelle[1].first.datum->sekunden = unendlich;
    faelle[2].first.ende->breite = -unendlich;
    faelle[3].first.wetter->windKmh = unendlich;
    Skizze::Bau bau;
    bau.beginneLinie();
    bau.haengeAn({0.0, std::nan("")});
    faelle[4].first.skizze = std::move(bau).fertig();
    faelle[5] = {vollerEintrag("/\xff"), Ergebnis::keinUtf8};
    faelle[5].first.anstiegMeter = unendlich;
    faelle[6] = {vollerEintrag("/x"), Ergebnis::keinUtf8};
    faelle[6].first.zielOrt = "abgeschnitten \xc3";
    faelle[7] = {vollerEintrag("/x"), Ergebnis::keinUtf8};
    faelle[7].first.wetter->lage = "\xed\xa0\x80";
    faelle[8].first.dauerSekunden = unendlich;
    for (const auto& [eintrag, ergebnis] : faelle) {
        std::string ziel = "[";
        EXPECT_EQ(GpxMetadatenJson::haengeAn(ziel, eintrag), ergebnis);
        EXPECT_EQ(ziel, "[");
    }
    GpxMetadaten fremd = vollerEintrag("/\xff\xc3\xa4\xc3.gpx");
    std::string ziel;
    EXPECT_EQ(GpxMetadatenJson::haengeAn(ziel, fremd, Fremdbytes::ersetze), Ergebnis::geschrieben);
    fremd.pfad = "/\ufffdä\ufffd.gpx";
    EXPECT_EQ(*ausJson(ziel), fremd);
    EXPECT_EQ(GpxMetadatenJson::haengeAn(ziel, faelle[0].first, Fremdbytes::ersetze), Ergebnis::nichtEndlich);
}

}  // namespace
}  // namespace spurkiste
