#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "hilfe/Ansichtsbau.h"
#include "sicht/Ansichtsbild.h"

namespace spurkiste {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(AnsichtsbildTest, DieSucheFindetTeilstueckeOhneAufGrossschreibungZuAchten) {
    const struct {
        std::string text;
        std::string suche;
        bool gefunden;
        std::string sprache = "de";
    } faelle[] = {
        {"Zürich", "ZÜRICH", true},
        {"Zürich", "Zurich", false},
        {"Zürich", "zu", false},
        {"Zu\xcc\x88rich", "zür", true},
        {"Zürich", "ZU\xcc\x88R", true},
        {"Zu\xcc\x88rich", "zu", false},
        {"b\xcc\x88z", "b", false},
        {"b\xcc\x88zb", "b", true},
        {"b\xcc\x88z", "B\xcc\x88", true},
        {"\u03aa\u0301", "\u0390", true},
        {"Am Alp See", "alp see", true},
        {"Alpsee", "alp see", false},
        {"See", "see ", false},
        {"See rund", "see ", true},
        {"Straße", "STRASSE", true},
        {"STRASSE", "straß", true},
        {"ΟΔΟΣ", "οδος", true},
        {"ΟΔΟΣ", "οδός", false},
        {"Isar", "isar", true},
        {"Isar", "ısar", false},
        {"Isar", "isar", false, "tr"},
        {"Isar", "ısar", true, "tr"},
        {"İzmir", "izmir", true, "tr-TR"},
        {"I\xcc\x87zmir", "izmir", true, "tr"},
        {"Москва", "МОСК", true},
        {"富士山", "士山", true},
        {"kaputt \xff", "\xff", true},
        {"❤️ Tour", "❤", true},
    };
    for (const auto& [text, suche, gefunden, sprache] : faelle) {
        SCOPED_TRACE(text + " / " + suche + " / " + sprache);
        const std::optional<std::string> wert = text;
        const std::vector<Eintrag> eintraege = {
            eintragMit(text),
            eintragMit("qq", [&](GpxMetadaten& e) { e.spurName = wert; }),
            eintragMit("qq", [&](GpxMetadaten& e) { e.startOrt = wert; }),
            eintragMit("qq", [&](GpxMetadaten& e) { e.zielOrt = wert; }),
            eintragMit("qq", [&](GpxMetadaten& e) { e.sportRoh = wert; }),
        };
        Ansichtszustand zustand;
        zustand.suche = suche;
        EXPECT_EQ(bildVon(eintraege, zustand, texteIn(sprache)).zeilen.size(), gefunden ? 4U : 0U);
    }
    Ansichtszustand zustand;
    zustand.suche = "seesee";  // no text alone holds it
    const auto zweiTexte = eintragMit("See", [](GpxMetadaten& e) { e.spurName = e.startOrt = e.zielOrt = "See"; });
    EXPECT_THAT(bildVon({zweiTexte}, zustand).zeilen, IsEmpty());
}

TEST(AnsichtsbildTest, OptionenStehenNachZeichenUndDieGewaehlteBleibt) {
    const auto mitStart = [](const char* ort, double meter) {
        return eintragMit(ort, [&](GpxMetadaten& e) {
            e.startOrt = ort;
            e.streckeMeter = meter;
        });
    };
    const std::vector<Eintrag> eintraege = {mitStart("Zürich", 6000.0), mitStart("alp", 6000.0),
                                            mitStart("Zug", 6000.0), mitStart("Ägeri", 20000.0),
                                            mitStart("Zug", 4999.9)};
    Ansichtszustand zustand;
    EXPECT_THAT(bildVon(eintraege, zustand).optionen[FilterFeld::start], ElementsAre("Zug", "Zürich", "alp", "Ägeri"));
    EXPECT_THAT(bildVon(eintraege, zustand).optionen[FilterFeld::sport], IsEmpty());
    EXPECT_THAT(bildVon(eintraege, zustand).optionen[FilterFeld::laenge], ElementsAre("unter 5 km", "5–20 km"));

    zustand.filter[FilterFeld::start] = "alp";
    zustand.filter[FilterFeld::laenge] = "über 20 km";
    const auto bild = bildVon(eintraege, zustand);
    EXPECT_THAT(bild.zeilen, IsEmpty());
    EXPECT_THAT(bild.optionen[FilterFeld::start], ElementsAre("alp"));
    EXPECT_THAT(bild.optionen[FilterFeld::laenge], ElementsAre("5–20 km", "über 20 km"));
}

TEST(AnsichtsbildTest, ZahlenUndTexteSagenWasZuSehenIst) {
    const std::vector<Eintrag> eintraege = {
        eintragMit("Alp", [](GpxMetadaten& e) { e.streckeMeter = 12345.0; }),
        eintragMit("Berg", [](GpxMetadaten& e) { e.streckeMeter = 999.96; }),
    };
    Ansichtstexte texte = texteIn("tr");
    texte.routen = "iz straße";
    const struct {
        std::vector<Eintrag> eintraege;
        std::string suche;
        bool laedt;
        std::string routen;
        std::string summe;
        std::string dateien;
        std::string titel;
    } faelle[] = {
        {eintraege, "", false, "2 İZ STRASSE", "13,3 km", "2 Dateien", ""},
        {eintraege, "berg", false, "1 / 2 İZ STRASSE", "999 m", "1 / 2 Dateien", ""},
        {eintraege, "tal", false, "0 / 2 İZ STRASSE", "0 m", "0 / 2 Dateien", "Nichts gefunden"},
        {eintraege, "tal", true, "0 / 2 İZ STRASSE", "0 m", "0 / 2 Dateien", ""},
        {{}, "", false, "0 İZ STRASSE", "0 m", "0 Dateien", "Keine GPX-Dateien"},
        {{}, " ", false, "0 / 0 İZ STRASSE", "0 m", "0 / 0 Dateien", "Nichts gefunden"},
        {{}, "", true, "0 İZ STRASSE", "0 m", "0 Dateien", ""},
    };
    for (const auto& fall : faelle) {
        Ansichtszustand zustand;
        zustand.suche = fall.suche;
        zustand.laedt = fall.laedt;
        const auto bild = bildVon(fall.eintraege, zustand, texte);
        EXPECT_EQ(bild.filterAktiv, !fall.suche.empty());
        EXPECT_EQ(bild.routenText, fall.routen);
        EXPECT_EQ(bild.summeText, fall.summe);
        EXPECT_EQ(bild.dateienText, fall.dateien);
        EXPECT_EQ(bild.gesamtText, fall.summe + " gesamt");
        EXPECT_EQ(bild.leer ? bild.leer->titel : "", fall.titel);
    }
}

TEST(AnsichtsbildTest, BehauptetNichtsBevorDieBibliothekBekanntIst) {
    using Oeffnung = Ansichtszustand::Oeffnung;
    for (const auto oeffnung : {Oeffnung::still, Oeffnung::dauert}) {
        Ansichtszustand zustand;
        zustand.oeffnung = oeffnung;
        const auto bild = bildVon({}, zustand);
        EXPECT_EQ(bild.routenText + bild.summeText + bild.dateienText + bild.gesamtText, "");
        EXPECT_EQ(bild.leer ? bild.leer->titel : "", oeffnung == Oeffnung::still ? "" : "Bibliothek wird geöffnet");
    }
}

TEST(AnsichtsbildTest, NurEinEinzelnerAusgewaehlterStehtImDetail) {
    const std::vector<Eintrag> eintraege = {eintragMit("a"), eintragMit("b"), eintragMit("b")};
    Ansichtszustand zustand;
    zustand.suche = "nichts davon";
    EXPECT_EQ(bildVon(eintraege, zustand).ausgewaehlt, nullptr);
    zustand.auswahl = {"/bibliothek/b.gpx"};
    EXPECT_EQ(bildVon(eintraege, zustand).ausgewaehlt, eintraege[1]);
    zustand.auswahl = {"/bibliothek/a.gpx", "/bibliothek/b.gpx"};
    EXPECT_EQ(bildVon(eintraege, zustand).ausgewaehlt, nullptr);

    zustand.behalteVorhandene({eintraege[0], eintragMit("c")});
    EXPECT_THAT(zustand.auswahl, ElementsAre("/bibliothek/a.gpx"));
    EXPECT_EQ(bildVon(eintraege, zustand).ausgewaehlt, eintraege[0]);
}

TEST(AnsichtsbildTest, WasGingWirdVergessen) {
    Zeilenspeicher speicher;
    const auto mache = [](const char* ort) {
        return eintragMit("a", [&](GpxMetadaten& e) { e.sportRoh = e.startOrt = e.zielOrt = ort; });
    };
    auto eintrag = mache("Bern");
    const std::weak_ptr<const GpxMetadaten> alter = eintrag;
    auto bild = berechneAnsichtsbild({eintrag}, {}, texteIn("de"), speicher);
    eintrag = mache("Zug");
    bild = berechneAnsichtsbild({eintrag}, {}, texteIn("de"), speicher);
    EXPECT_TRUE(alter.expired());
    for (const FilterFeld feld : {FilterFeld::start, FilterFeld::ziel, FilterFeld::sport}) {
        EXPECT_EQ(speicher.worte(feld).worte().size(), 1U);
        EXPECT_EQ(speicher.worte(feld).suche("Bern"), Wortliste::kUnbekannt);
    }
}

}  // namespace spurkiste
