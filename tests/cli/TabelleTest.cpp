#include <sstream>

#include <gtest/gtest.h>

#include "base/Text.h"
#include "cli/Tabelle.h"

namespace spurkiste {
namespace {

using Ausrichtung = Tabelle::Ausrichtung;
using Ton = Tabelle::Ton;

Tabelle beispiel() {
    return {
        {{"Name", Ausrichtung::links, 6, 0},
         {"Länge", Ausrichtung::rechts, std::nullopt, 2},
         {"Ghost", Ausrichtung::links, std::nullopt, 1},
         {"Ziel", Ausrichtung::links, 4, 3}},
        {{{"Überführung Außerfern", Ton::ruhig}, {"187,3 km", Ton::ruhig}, {"✓", Ton::gut}, {"Bregenz", Ton::ruhig}},
         {{"富士山\nOst", Ton::ruhig}, {"850 m", Ton::ruhig}, {"–", Ton::leise}, {"Tokyo", Ton::ruhig}}}};
}

TEST(Tabelle, alignsByColumnsAndShortensWhatMayShrink) {
    EXPECT_EQ(beispiel().text(std::nullopt, false),
              "Name                      Länge  Ghost  Ziel\n"
              "Überführung Außerfern  187,3 km  ✓      Bregenz\n"
              "富士山 Ost                850 m  –      Tokyo\n");
    EXPECT_EQ(beispiel().text(34, false),
              "Name            Länge  Ghost  Ziel\n"
              "Überführun…  187,3 km  ✓      Bre…\n"
              "富士山 Ost      850 m  –      Tok…\n");
}

TEST(Tabelle, dropsColumnsByRankRatherThanWrapping) {
    EXPECT_EQ(beispiel().text(24, false),
              "Name         Länge  Ziel\n"
              "Überfüh…  187,3 km  Bre…\n"
              "富士山…      850 m  Tok…\n");
    EXPECT_EQ(beispiel().text(8, false), "Name\nÜberfüh…\n富士山…\n");
}

TEST(Tabelle, fitsEveryWidthAndColoursNothingButItsText) {
    const Tabelle tabelle = beispiel();
    for (std::size_t breite = 1; breite < 80; ++breite) {
        std::istringstream zeilen(tabelle.text(breite, false));
        for (std::string zeile; std::getline(zeilen, zeile);) {
            EXPECT_LE(text::spalten(zeile), breite) << zeile;
        }
    }
    const std::string bunt = tabelle.text(std::nullopt, true);
    EXPECT_NE(bunt.find("\x1b[1mName\x1b[0m"), std::string::npos);
    EXPECT_NE(bunt.find("\x1b[32m✓\x1b[0m"), std::string::npos);
    EXPECT_NE(bunt.find("\x1b[2m–\x1b[0m"), std::string::npos);
}

}  // namespace
}  // namespace spurkiste
