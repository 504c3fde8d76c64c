#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "hilfe/TempOrdner.h"
#include "hilfe/Umgebung.h"
#include "platform/Ressourcen.h"

namespace spurkiste {

TEST(RessourcenTest, SuchtDerReiheNach) {
    const TempOrdner gesetzt;
    const TempOrdner genannt;
    const Umgebung umgebung({{"SPURKISTE_RESSOURCEN", genannt.pfad()}});
    gesetzt.schreibe("beide.txt", "");
    genannt.schreibe("beide.txt", "");
    genannt.schreibe("eins.txt", "");
    std::filesystem::create_directory(gesetzt.in("eins.txt"));  // a folder is no resource

    ressourcen::setzeOrdner(gesetzt.pfad());
    EXPECT_EQ(ressourcen::finde("beide", "txt"), gesetzt.in("beide.txt"));
    EXPECT_EQ(ressourcen::finde("eins", "txt"), genannt.in("eins.txt"));
    EXPECT_EQ(ressourcen::finde("fehlt", "txt"), std::nullopt);
    ressourcen::setzeOrdner("");
    EXPECT_EQ(ressourcen::finde("beide", "txt"), genannt.in("beide.txt"));
}

TEST(RessourcenTest, FindetNebenDemProgrammWasDortLiegt) {
    const Umgebung umgebung({{"SPURKISTE_RESSOURCEN", std::nullopt}});
    const auto orte = ressourcen::finde("orte", "tsv");
    ASSERT_TRUE(orte.has_value());
    EXPECT_TRUE(orte->ends_with("/share/spurkiste/orte.tsv")) << *orte;
}

}  // namespace spurkiste
