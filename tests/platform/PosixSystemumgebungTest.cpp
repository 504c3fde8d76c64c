#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "hilfe/TempOrdner.h"
#include "hilfe/Umgebung.h"
#include "platform/posix/PosixSystemumgebung.h"

namespace spurkiste {

TEST(PosixSystemumgebungTest, SprachenStehenInDerUmgebung) {
    using Wert = Umgebung::Wert;
    struct Fall {
        Wert language;
        Wert alle;
        Wert meldungen;
        Wert lang;
        std::vector<std::string> sprachen;
    };
    const std::vector<Fall> faelle = {
        {{}, {}, {}, {}, {}},
        {{}, {}, {}, "", {}},
        {{}, {}, {}, "C", {}},
        {{}, {}, {}, "C.UTF-8", {}},
        {{}, {}, {}, "POSIX", {}},
        {"de:en", {}, {}, "C.UTF-8", {}},  // LANGUAGE counts only beside a real locale
        {"de:en", {}, {}, {}, {}},
        {{}, {}, {}, "de_CH.UTF-8", {"de-CH"}},
        {{}, {}, {}, "de_DE@euro", {"de-DE"}},
        {{}, {}, {}, "zh_TW.Big5", {"zh-TW"}},
        {{}, {}, "fr_FR.UTF-8", "de_DE.UTF-8", {"fr-FR"}},
        {{}, "it", "fr_FR.UTF-8", "de_DE.UTF-8", {"it"}},
        {{}, "", "", "de_DE.UTF-8", {"de-DE"}},
        {{}, "C", {}, "de_DE.UTF-8", {}},
        {"sv_SE:nb", {}, {}, "de_DE.UTF-8", {"sv-SE", "nb", "de-DE"}},
        {":C::sv:", {}, {}, "de_DE.UTF-8", {"sv", "de-DE"}},
        {"", {}, {}, "de_DE.UTF-8", {"de-DE"}},
        {{}, {}, {}, ".UTF-8", {}},
    };
    for (const auto& fall : faelle) {
        const Umgebung umgebung(
            {{"LANGUAGE", fall.language}, {"LC_ALL", fall.alle}, {"LC_MESSAGES", fall.meldungen}, {"LANG", fall.lang}});
        EXPECT_EQ(PosixSystemumgebung().bevorzugteSprachen(), fall.sprachen)
            << fall.language.value_or("-") << " " << fall.alle.value_or("-") << " " << fall.lang.value_or("-");
    }
}

TEST(PosixSystemumgebungTest, DokumenteOrdnerStehtInUserDirs) {
    const TempOrdner heim;
    const TempOrdner ablage;
    std::filesystem::create_directory(heim.in(".config"));
    const std::vector<std::pair<std::string, std::string>> faelle = {
        {"", heim.in("Documents")},
        {"# XDG_DOCUMENTS_DIR=\"/x\"\n", heim.in("Documents")},
        {"XDG_MUSIC_DIR=\"$HOME/Musik\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n", heim.in("Dokumente")},
        {"  XDG_DOCUMENTS_DIR=\"$HOME/Meine Dokumente/\"", heim.in("Meine Dokumente")},
        {"XDG_DOCUMENTS_DIR=\"/daten/ä\"\r\n", "/daten/ä"},
        {"XDG_DOCUMENTS_DIR=\"/a\"\nXDG_DOCUMENTS_DIR=\"/b\"\n", "/b"},
        {"XDG_DOCUMENTS_DIR=\"$HOME/5 \\$ \\\"x\\\" \\\\\"\n", heim.in("5 $ \"x\" \\")},
        {"XDG_DOCUMENTS_DIR=\"$HOME/\"\n", heim.pfad()},  // the way to say: none but the home
        {"XDG_DOCUMENTS_DIR=\"$HOMER\"\n", heim.in("Documents")},
        {"XDG_DOCUMENTS_DIR=\"relativ\"\n", heim.in("Documents")},
        {"XDG_DOCUMENTS_DIR=\"\"\n", heim.in("Documents")},
        {"XDG_DOCUMENTS_DIR=\"\n", heim.in("Documents")},
        {"XDG_DOCUMENTS_DIR=/ohne\n", heim.in("Documents")},
    };
    for (const auto& [inhalt, ordner] : faelle) {
        heim.schreibe(".config/user-dirs.dirs", inhalt);
        const Umgebung umgebung({{"HOME", heim.pfad()}, {"XDG_CONFIG_HOME", std::nullopt}});
        EXPECT_EQ(PosixSystemumgebung().dokumenteOrdner(), ordner) << inhalt;
    }
    ablage.schreibe("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/anderswo\"\n");
    {
        const Umgebung umgebung({{"HOME", heim.pfad()}, {"XDG_CONFIG_HOME", ablage.pfad()}});
        EXPECT_EQ(PosixSystemumgebung().dokumenteOrdner(), "/anderswo");
    }
    for (const auto& ohne : std::vector<Umgebung::Wert>{std::nullopt, "", "relativ"}) {
        const Umgebung umgebung({{"HOME", ohne}});
        EXPECT_EQ(PosixSystemumgebung().dokumenteOrdner(), std::nullopt);
    }
}

}  // namespace spurkiste
