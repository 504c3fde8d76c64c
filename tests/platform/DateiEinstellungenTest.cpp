#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <sys/syscall.h>

#include "hilfe/Engpass.h"
#include "hilfe/TempOrdner.h"
#include "hilfe/Umgebung.h"
#include "platform/posix/DateiEinstellungen.h"

namespace spurkiste {

TEST(DateiEinstellungenTest, JederWertUebersteht) {
    const TempOrdner ordner;
    const std::string pfad = ordner.in("neu/darin/einstellungen.conf");
    EXPECT_EQ(DateiEinstellungen(pfad).lies("appLanguage"), std::nullopt);
    EXPECT_FALSE(std::filesystem::exists(ordner.in("neu"))) << "reading makes no folder";
    for (const std::string& wert :
         {std::string(), std::string("/a/b"), std::string("\\"), std::string("\\n"), std::string("a\nb\n"),
          std::string("\\\\n\\"), std::string("x=y=z"), std::string("\r\t "), std::string("\0", 1),
          std::string("Z\xFCrich"), std::string(100000, 'x')}) {
        DateiEinstellungen(pfad).schreibe("wert", wert);
        DateiEinstellungen(pfad).schreibe("daneben", "bleibt");
        EXPECT_EQ(DateiEinstellungen(pfad).lies("wert"), wert);
        EXPECT_EQ(DateiEinstellungen(pfad).lies("daneben"), "bleibt");
    }
}

TEST(DateiEinstellungenTest, SindPrivatUndErsetzenNurSichSelbst) {
    namespace fs = std::filesystem;
    const TempOrdner ordner;
    const std::string pfad = ordner.in("e.conf");
    DateiEinstellungen(pfad).schreibe("a", "1");
    EXPECT_EQ(fs::status(pfad).permissions(), static_cast<fs::perms>(0600));
    fs::permissions(pfad, static_cast<fs::perms>(0640));
    DateiEinstellungen(pfad).schreibe("a", "2");
    EXPECT_EQ(fs::status(pfad).permissions(), static_cast<fs::perms>(0640));

    const std::string fremd = ordner.schreibe("fremd", "b=3\n");
    fs::remove(pfad);
    fs::create_symlink(fremd, pfad);
    DateiEinstellungen(pfad).schreibe("a", "4");
    EXPECT_EQ(ordner.lies("fremd"), "b=3\n");
    EXPECT_EQ(ordner.lies("e.conf"), "a=4\nb=3\n");

    // What cannot be read just now may hold what others need.
    EXPECT_TRUE(imKind([&] {
        DateiEinstellungen einstellungen(ordner.in("e.conf"));
        if (!verweigere(SYS_read, EIO)) {
            return false;
        }
        einstellungen.schreibe("a", "5");
        return einstellungen.lies("a") == "5";
    }));
    EXPECT_EQ(ordner.lies("e.conf"), "a=4\nb=3\n");

    std::ofstream(pfad, std::ios::app) << "c=" << std::string(std::size_t{2} << 20U, 'x');
    EXPECT_EQ(DateiEinstellungen(pfad).lies("a"), std::nullopt) << "far too large";
}

TEST(DateiEinstellungenTest, FremdesInDerDateiSchadetNicht) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("e.conf", "\n\nohne\n=leer\na=1\na=2\nb=\\\n\xFF=\xFE\nohne Ende=5\\");
    const DateiEinstellungen einstellungen(pfad);
    EXPECT_EQ(einstellungen.lies("a"), "2");
    EXPECT_EQ(einstellungen.lies("b"), "\\");
    EXPECT_EQ(einstellungen.lies(""), "leer");
    EXPECT_EQ(einstellungen.lies("ohne"), std::nullopt);
    EXPECT_EQ(einstellungen.lies("ohne Ende"), "5\\");
    std::filesystem::create_directory(ordner.in("ordner"));
    EXPECT_EQ(DateiEinstellungen(ordner.in("ordner")).lies("a"), std::nullopt);
}

TEST(DateiEinstellungenTest, ZweiProgrammeVerlierenNichtsVoneinander) {
    const TempOrdner ordner;
    DateiEinstellungen eines(ordner.in("e.conf"));
    DateiEinstellungen anderes(ordner.in("e.conf"));
    eines.schreibe("a", "1");
    anderes.schreibe("b", "2");
    eines.schreibe("c", "3");
    const DateiEinstellungen spaeter(ordner.in("e.conf"));
    EXPECT_EQ(spaeter.lies("a"), "1");
    EXPECT_EQ(spaeter.lies("b"), "2");
    EXPECT_EQ(spaeter.lies("c"), "3");
    EXPECT_EQ(eines.lies("b"), "2");

    anderes.schreibe("a", "spaeter");
    eines.schreibe("c", "4");
    EXPECT_EQ(DateiEinstellungen(ordner.in("e.conf")).lies("a"), "spaeter") << "what was written long ago is not again";
}

TEST(DateiEinstellungenTest, WasNichtGeschriebenWerdenKannGiltFuerDiesenLauf) {
    const TempOrdner ordner;
    ordner.schreibe("e.conf", "a=alt\n");
    DateiEinstellungen einstellungen(ordner.in("e.conf"));
    std::filesystem::rename(ordner.in("e.conf"), ordner.in("beiseite"));
    std::filesystem::create_directory(ordner.in("e.conf"));  // nothing can be written over a folder
    einstellungen.schreibe("a", "neu");
    EXPECT_EQ(einstellungen.lies("a"), "neu");

    std::filesystem::remove(ordner.in("e.conf"));
    std::filesystem::rename(ordner.in("beiseite"), ordner.in("e.conf"));
    einstellungen.schreibe("b", "1");  // reads the old value of a and must not fall back to it
    EXPECT_EQ(einstellungen.lies("a"), "neu");
    EXPECT_EQ(DateiEinstellungen(ordner.in("e.conf")).lies("a"), "neu");
}

TEST(DateiEinstellungenTest, LiegenImOrdnerDerEinstellungen) {
    const auto ort = [](const Umgebung::Wert& xdg, const Umgebung::Wert& heim) {
        const Umgebung umgebung({{"XDG_CONFIG_HOME", xdg}, {"HOME", heim}});
        return DateiEinstellungen::ortDerSuite("suite");
    };
    EXPECT_EQ(ort("/x", "/h"), "/x/suite/einstellungen.conf");
    EXPECT_EQ(ort(std::nullopt, "/h"), "/h/.config/suite/einstellungen.conf");
    EXPECT_EQ(ort("relativ", "/h"), "/h/.config/suite/einstellungen.conf");
    EXPECT_EQ(ort("", std::nullopt), std::nullopt);
    EXPECT_EQ(ort(std::nullopt, ""), std::nullopt);
}

}  // namespace spurkiste
