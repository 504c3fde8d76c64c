#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hilfe/Ansichtsbau.h"
#include "sicht/Zeile.h"

namespace spurkiste {

namespace {

using Farbe = Schriftfarbe;

std::shared_ptr<const Zeile> zeileVon(const Eintrag& eintrag) {
    return bildVon({eintrag}, {}).zeilen.front();
}

}  // namespace

TEST(ZeileTest, EineVolleUndEineLeereZeile) {
    const auto voll = zeileVon(eintragMit("Überführung Außerfern", [](GpxMetadaten& e) {
        e.datum = Zeitpunkt::ausIso8601("2024-10-03T12:00:00Z");
        e.sportRoh = "motorcycling";
        e.streckeMeter = 187345.0;
        e.dauerSekunden = 15153.0;
        e.anstiegMeter = 2310.9;
        e.punkte = 9984;
        e.hatZeitstempel = true;
        e.rundkurs = true;
        e.start = e.ende = Koordinate{47.5, 9.75};
        e.startOrt = "Bregenz";
        e.zielOrt = "47.50000, 9.75000";
    }));
    const auto leer = zeileVon(eintragMit("leer", [](GpxMetadaten& e) {
        e.dateiDatum = *Zeitpunkt::ausIso8601("2024-07-29T12:00:00Z");
        e.ende = Koordinate{-47.123456, 0.0};
    }));
    const struct {
        Spalte spalte;
        std::u16string voll;
        Farbe farbeVoll;
        std::u16string tooltipVoll;
        std::u16string leer;
        Farbe farbeLeer;
        std::u16string tooltipLeer;
    } zellen[] = {
        {Spalte::name, u"Überführung Außerfern", Farbe::tinte, u"", u"leer", Farbe::tinte, u""},
        {Spalte::datum, u"03.10.24", Farbe::tinte, u"Erster Zeitstempel der Spur", u"29.07.24", Farbe::tinteLeise,
         u"Kein Zeitstempel — Dateidatum"},
        {Spalte::sport, u"Motorrad", Farbe::tinte, u"Sportart aus der GPX-Datei — wählen, um <type> zu ändern", u"–",
         Farbe::tinteLeise, u"Automatischer Vorschlag — wählen, um <type> dauerhaft in die GPX-Datei zu schreiben"},
        {Spalte::laenge, u"187,3 km", Farbe::tinte, u"", u"0 m", Farbe::tinte, u""},
        {Spalte::zeit, u"4:12:33", Farbe::tinte, u"", u"–", Farbe::tinte, u""},
        {Spalte::anstieg, u"2310 m", Farbe::tinte, u"", u"–", Farbe::tinte, u""},
        {Spalte::punkte, u"9984", Farbe::tinte, u"", u"0", Farbe::tinte, u""},
        {Spalte::ghost, u"✓", Farbe::gruen, u"Zeitstempel vorhanden — Ghost-tauglich", u"–", Farbe::tinteLeise,
         u"Keine Zeitstempel"},
        {Spalte::art, u"⟲ Rundkurs", Farbe::tinteLeise, u"", u"→ Strecke", Farbe::tinteLeise, u""},
        {Spalte::start, u"Bregenz", Farbe::tinte, u"47.50000, 9.75000", u"–", Farbe::tinteLeise, u"–"},
        {Spalte::ziel, u"47.50000, 9.75000", Farbe::tinte, u"47.50000, 9.75000", u"-47.12346, 0.00000",
         Farbe::tinteLeise, u"-47.12346, 0.00000"},
    };
    ASSERT_EQ(std::size(zellen), kSpalten.size());
    for (const auto& zelle : zellen) {
        SCOPED_TRACE(static_cast<int>(zelle.spalte));
        EXPECT_EQ(voll->text(zelle.spalte), zelle.voll);
        EXPECT_EQ(voll->farbe(zelle.spalte), zelle.farbeVoll);
        EXPECT_EQ(voll->tooltip(zelle.spalte), zelle.tooltipVoll);
        EXPECT_EQ(leer->text(zelle.spalte), zelle.leer);
        EXPECT_EQ(leer->farbe(zelle.spalte), zelle.farbeLeer);
        EXPECT_EQ(leer->tooltip(zelle.spalte), zelle.tooltipLeer);
    }
    EXPECT_EQ(voll->vorleseText(Spalte::ghost), u"Zeitstempel vorhanden — Ghost-tauglich");
    EXPECT_EQ(voll->vorleseText(Spalte::sport), u"Sportart Motorrad");
    EXPECT_EQ(voll->vorleseText(Spalte::laenge), u"187,3 km");
}

TEST(ZeileTest, DerSportKommtAusDerDateiOderAlsVorschlag) {
    constexpr std::string_view route = "point.topleft.down.curvedto.point.bottomright.up";
    const struct {
        std::optional<std::string> roh;
        double meter;
        std::u16string text;
        std::optional<GpxSportart> sport;
        bool ausDatei;
        std::string_view symbol;
    } faelle[] = {
        {" Running ", 0.0, u"Laufen", GpxSportart::laufen, true, "figure.run"},
        {"paragliding", 10000.0, u"paragliding", std::nullopt, true, route},
        {std::nullopt, 10000.0, u"Laufen", GpxSportart::laufen, false, route},
        {"", 24000.0, u"Rad", GpxSportart::rad, false, route},
        {std::nullopt, 1e300, u"–", std::nullopt, false, route},
    };
    for (const auto& [roh, meter, text, sport, ausDatei, symbol] : faelle) {
        const auto zeile = zeileVon(eintragMit("a", [&, r = roh, m = meter](GpxMetadaten& e) {
            e.sportRoh = r;
            e.streckeMeter = m;
            e.dauerSekunden = 3600.0;
        }));
        EXPECT_EQ(zeile->text(Spalte::sport), text);
        EXPECT_EQ(zeile->sport() == sport, true);
        EXPECT_EQ(zeile->sportAusDatei(), ausDatei);
        EXPECT_EQ(zeile->symbol(), symbol);
    }
}

TEST(ZeileTest, SeltsamesBleibtAufEinerKurzenZeile) {
    constexpr double unendlich = std::numeric_limits<double>::infinity();
    const double keine = std::numeric_limits<double>::quiet_NaN();
    for (const double wert : {keine, unendlich, -unendlich, 1e300, -1e300}) {
        const auto bild = bildVon({eintragMit("a",
                                              [&](GpxMetadaten& e) {
                                                  e.streckeMeter = e.dauerSekunden = e.anstiegMeter = wert;
                                                  e.start = Koordinate{wert, 9999.0};
                                                  e.datum = Zeitpunkt{std::isfinite(wert) ? wert : 0.0};
                                              }),
                                   eintragMit("b", [](GpxMetadaten& e) { e.streckeMeter = 1e308; }),
                                   eintragMit("c", [](GpxMetadaten& e) { e.streckeMeter = 1.7e308; })},
                                  {});
        EXPECT_TRUE(std::isfinite(bild.summeMeter));
        for (const Spaltenangaben& spalte : kSpalten) {
            EXPECT_FALSE(bild.zeilen.front()->text(spalte.spalte).empty());
        }
    }
    std::string lang;
    for (int i = 0; i < 100'000; ++i) {
        lang += "ü";
    }
    const auto zeile = zeileVon(eintragMit("eins\nzwei\t\xe2\x80\xae drei \xff 🚵",
                                           [&](GpxMetadaten& e) { e.sportRoh = e.startOrt = "x" + lang; }));
    EXPECT_EQ(zeile->text(Spalte::name), u"eins zwei   drei \ufffd 🚵");
    EXPECT_EQ(zeile->text(Spalte::start), u"x" + std::u16string(499, u'ü'));
    EXPECT_EQ(zeile->text(Spalte::sport), zeile->text(Spalte::start));
    EXPECT_EQ(zeile->text(Spalte::ziel), u"–");
}

TEST(ZahlentexteTest, KeepOneFigureOfEachLengthThatIsThere) {
    const auto strecke = [](const char* name, double meter) {
        return eintragMit(name, [=](GpxMetadaten& e) { e.streckeMeter = meter; });
    };
    const std::vector<Eintrag> alle{strecke("a", 850), strecke("b", 12'345), strecke("c", 1'234'567),
                                    strecke("d", 54'321)};
    Zeilenspeicher speicher;
    const auto zahlen = [&](const std::vector<Eintrag>& eintraege, Spalte spalte) {
        speicher.gleicheAb(eintraege, texteIn("de"));
        return speicher.zahlen().beispiele(spalte);
    };
    EXPECT_THAT(zahlen(alle, Spalte::laenge), testing::ElementsAre(u"850 m", u"12,3 km", u"1234,6 km"));
    EXPECT_THAT(zahlen(alle, Spalte::name), testing::IsEmpty());
    EXPECT_THAT(zahlen({alle[0], alle[3]}, Spalte::laenge), testing::SizeIs(2));
    speicher = Zeilenspeicher::neuGebaut(speicher.erbe(), alle, texteIn("de"), {}, nullptr, 0);
    EXPECT_THAT(zahlen(alle, Spalte::laenge), testing::SizeIs(3));
    EXPECT_THAT(zahlen({}, Spalte::laenge), testing::IsEmpty());
}

}  // namespace spurkiste
