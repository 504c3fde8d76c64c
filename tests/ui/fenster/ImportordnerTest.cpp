#include <QFile>
#include <QStandardPaths>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "hilfe/SpeicherEinstellungen.h"
#include "hilfe/TempOrdner.h"
#include "ui/fenster/Importordner.h"

namespace spurkiste {
namespace {

TEST(ImportordnerTest, theChooserBeginsWhereTheLastImportCameFromAsLongAsThatIsThere) {
    SpeicherEinstellungen einstellungen;
    const std::string anfangs = importordner::lies(einstellungen).toStdString();
    EXPECT_TRUE(std::filesystem::is_directory(anfangs)) << anfangs;

    const TempOrdner stick;
    const std::string fern = stick.in(
        "Spuren \xC3\xBC"
        "ber Land");
    std::filesystem::create_directory(fern);
    importordner::merke(einstellungen, {QFile::decodeName((fern + "/a.gpx").c_str()), "/anderswo/b.gpx"});
    importordner::merke(einstellungen, {});  // nothing was chosen
    EXPECT_EQ(QFile::encodeName(importordner::lies(einstellungen)).toStdString(), fern);

    std::filesystem::remove(fern);  // the stick was pulled
    EXPECT_EQ(importordner::lies(einstellungen).toStdString(), anfangs);
}

}  // namespace
}  // namespace spurkiste
