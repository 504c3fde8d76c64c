// What the kit makes of the toolkit's own pieces: menus of texts, tooltips, words.

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QTextDocument>
#include <QTextEdit>
#include <QToolTip>
#include <memory>

#include <gtest/gtest.h>

#include "hilfe/SpeicherEinstellungen.h"
#include "i18n/AppSprache.h"
#include "ui/teile/Baukastensprache.h"
#include "ui/teile/PapierMenue.h"
#include "ui/teile/Suchfeld.h"
#include "ui/teile/Textmenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {
namespace {

class Textmenue : public testing::Test {
  protected:
    SpeicherEinstellungen einstellungen;
    FesteUmgebung umgebung;

    Textmenue() { AppSprache::richteEin(&einstellungen, &umgebung); }
    ~Textmenue() override { AppSprache::richteEin(nullptr, nullptr); }

    /// The items of the widget's menu, those that are possible, one of which is taken; the menu is closed again.
    static QStringList menue(QWidget& element, const QString& nimm = {}) {
        QContextMenuEvent bitte(QContextMenuEvent::Keyboard, QPoint(5, 5), QPoint(5, 5));
        QApplication::sendEvent(&element, &bitte);
        const std::unique_ptr<PapierMenue> offen(element.findChild<PapierMenue*>());
        QStringList texte;
        for (QAction* wahl : offen ? offen->actions() : QList<QAction*>()) {
            if (!wahl->isSeparator() && wahl->isEnabled()) {
                texte << wahl->text();
            }
            if (wahl->text() == nimm) {
                wahl->trigger();
            }
        }
        return texte;
    }
};

TEST_F(Textmenue, offersAFieldWhatIsPossibleInItInTheCurrentLanguage) {
    Suchfeld feld;
    QApplication::clipboard()->clear();
    einstellungen.schreibe("appLanguage", "sv");
    EXPECT_EQ(menue(feld), QStringList());
    feld.insert(QStringLiteral("Rhein"));
    EXPECT_EQ(menue(feld, QStringLiteral("Markera allt")), (QStringList{"Ångra", "Markera allt"}));
    EXPECT_EQ(feld.selectedText(), QStringLiteral("Rhein"));
    EXPECT_EQ(menue(feld, QStringLiteral("Klipp ut")), (QStringList{"Ångra", "Klipp ut", "Kopiera", "Ta bort"}));
    EXPECT_EQ(feld.text(), QString());
    einstellungen.schreibe("appLanguage", "nb");
    EXPECT_EQ(menue(feld, QStringLiteral("Lim inn")), (QStringList{"Angre", "Lim inn"}));
    EXPECT_EQ(feld.text(), QStringLiteral("Rhein"));
    feld.setReadOnly(true);
    feld.selectAll();
    EXPECT_EQ(menue(feld), QStringList{"Kopier"});
}

TEST_F(Textmenue, offersWhatCanBeMarkedToBeCopied) {
    const std::unique_ptr<QLabel> schild(neueTextzeile(Qt::black, nullptr));
    QTextEdit absatz(QStringLiteral("Ufer"));
    textmenue::kleide(absatz);
    schild->setText(QStringLiteral("See"));
    const auto kopiere = [](QWidget& element) {
        EXPECT_EQ(menue(element, QStringLiteral("Alles auswählen")), QStringList{"Alles auswählen"});
        EXPECT_EQ(menue(element, QStringLiteral("Kopieren")), (QStringList{"Kopieren", "Alles auswählen"}));
        return QApplication::clipboard()->text();
    };
    EXPECT_EQ(kopiere(*schild), QStringLiteral("See"));
    EXPECT_EQ(kopiere(absatz), QStringLiteral("Ufer"));
}

TEST(Kurzhilfe, isPlainTextInLinesOfReadableLength) {
    const QString pfad = QStringLiteral("<b>/home/ich & du/") + QString(300, QLatin1Char('x'));
    QTextDocument dokument;
    dokument.setDefaultFont(QToolTip::font());
    dokument.setHtml(alsKurzhilfe(pfad));
    EXPECT_EQ(dokument.toPlainText().remove(QChar::LineSeparator).remove(QLatin1Char('\n')), pfad);
    EXPECT_LT(dokument.idealWidth(), 440);
    dokument.setHtml(alsKurzhilfe(QStringLiteral("Start grün, Ziel rot, und dazwischen der Weg")));
    EXPECT_EQ(dokument.lineCount(), 1);
}

TEST(Baukastensprache, givesTheToolkitTheWordsThatTheSystemHas) {
    const auto abbrechen = [] { return QCoreApplication::translate("QPlatformTheme", "Cancel"); };
    {
        Baukastensprache sprache;
        for (const auto& [code, wort] : {std::pair("de", "Abbrechen"), std::pair("pt", "Cancel"),
                                         std::pair("zh-Hant", "取消"), std::pair("nb", "Cancel")}) {
            sprache.sprich(code);
            EXPECT_EQ(abbrechen(), QString::fromUtf8(wort)) << code;
        }
        sprache.sprich("de");
    }
    EXPECT_EQ(abbrechen(), QStringLiteral("Cancel"));
}

}  // namespace
}  // namespace spurkiste
