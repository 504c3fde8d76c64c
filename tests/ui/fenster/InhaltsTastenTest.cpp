// What keys do in a whole window, and what the clipboard gets and gives.

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QSet>
#include <QTest>
#include <functional>
#include <memory>

#include <gmock/gmock.h>

#include "base/Meldestelle.h"
#include "i18n/AppSprache.h"
#include "library/Bibliotheksaufbau.h"
#include "platform/Dateimanager.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/Tastenblatt.h"
#include "ui/fenster/Ueberblatt.h"
#include "ui/fenster/UmbenennenDialog.h"
#include "ui/teile/Absatz.h"
#include "ui/teile/PapierMenue.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;

class KeinDateimanager final : public Dateimanager {
  public:
    void zeige(const std::string& /*pfad*/, std::function<void()> /*vergeblich*/) override {}
};

class InhaltsTasten : public Bibliotheksaufbau {
  protected:
    KeinDateimanager dateimanager;
    Meldestelle sprachwechsel;
    std::unique_ptr<Bibliothek> bibliothek;
    std::unique_ptr<InhaltsAnsicht> fenster;

    InhaltsTasten() { AppSprache::richteEin(&einstellungen, &umgebung); }
    ~InhaltsTasten() override { AppSprache::richteEin(nullptr, nullptr); }

    void SetUp() override {
        einstellungen.schreibe("appLanguage", "de");
        for (const char* name : {"Alpen.gpx", "B\xC3\xA4r = 1.gpx", "Chur.gpx"}) {
            ordner.schreibe(name, gpx(47.0, 8.0, "running"));
        }
        bibliothek = mach();
        fenster = macheFenster();
        bis([&] { return wartende() > 0; });
        bis([&] {
            arbeiteAb();
            return tabelle().modell().rowCount() == 3;
        });
        tabelle().setFocus();
    }

    [[nodiscard]] std::unique_ptr<InhaltsAnsicht> macheFenster() {
        auto neues = std::make_unique<InhaltsAnsicht>(*bibliothek, einstellungen, dateimanager, sprachwechsel);
        neues->show();
        neues->activateWindow();
        return neues;
    }

    template <typename Bedingung>
    static void bis(Bedingung soweit) {
        constexpr int kHoechstensMs = 60'000;  // what never comes fails instead of hanging
        ASSERT_TRUE(QTest::qWaitFor(soweit, kHoechstensMs));
    }

    [[nodiscard]] TabellenAnsicht& tabelle() const { return *fenster->findChild<TabellenAnsicht*>(); }

    void waehle(const std::vector<std::string>& namen) {
        TabellenAnsicht::Auswahl auswahl;
        for (const std::string& name : namen) {
            auswahl.insert(ordner.in(name));
        }
        tabelle().setzeAuswahl(auswahl);
        Q_EMIT tabelle().auswahlGeaendert(auswahl);
        tabelle().rolleZu(ordner.in(namen.front()));
    }

    /// To whatever has the keyboard.
    static void druecke(QKeyCombination taste) {
        QTest::keyClick(QApplication::focusWidget(), taste.key(), taste.keyboardModifiers());
    }

    void lege(const char* form, const std::string& pfad, const char* davor = "") {
        auto daten = std::make_unique<QMimeData>();
        daten->setData(QLatin1String(form), davor + TabellenModell::dateiUrl(pfad) + "\r\n");
        QApplication::clipboard()->setMimeData(daten.release());
    }
};

TEST_F(InhaltsTasten, NoKeyMeansTwoThingsAndEachThingHasAKey) {
    QSet<QString> belegt;
    for (const Tastengruppe& gruppe : tasten()) {
        for (const Taste& taste : gruppe.tasten) {
            EXPECT_EQ(taste.tat.has_value(), !taste.folgen.isEmpty()) << taste.wozu.toStdString();
            for (const QKeySequence& folge : taste.folgen + taste.weitere) {
                EXPECT_FALSE(folge.isEmpty()) << taste.wozu.toStdString();
                EXPECT_FALSE(belegt.contains(folge.toString())) << folge.toString().toStdString();
                belegt.insert(folge.toString());
            }
        }
    }
}

TEST_F(InhaltsTasten, CopiedRowsAreFilesAndATable) {
    waehle({"Chur.gpx", "B\xC3\xA4r = 1.gpx"});
    druecke(Qt::CTRL | Qt::Key_C);
    const QMimeData& daten = *QApplication::clipboard()->mimeData();
    const QByteArray chur = TabellenModell::dateiUrl(ordner.in("Chur.gpx"));
    const QByteArray baer = TabellenModell::dateiUrl(ordner.in("B\xC3\xA4r = 1.gpx"));
    QList<QByteArray> adressen = daten.data(QStringLiteral("text/uri-list")).split('\n');
    for (QByteArray& adresse : adressen) {
        adresse = adresse.trimmed();
    }
    EXPECT_THAT(adressen, UnorderedElementsAre(chur, baer, QByteArray()));
    const QByteArray kopiert = daten.data(QStringLiteral("x-special/gnome-copied-files"));
    EXPECT_TRUE(kopiert.startsWith("copy\nfile://")) << kopiert.toStdString();
    EXPECT_THAT(kopiert.split('\n'), UnorderedElementsAre("copy", chur, baer));

    const QStringList zeilen = daten.text().split(QLatin1Char('\n'));
    ASSERT_EQ(zeilen.size(), 4);
    EXPECT_TRUE(zeilen[0].startsWith(QStringLiteral("Name\tDatum\tSportart\tLänge"))) << zeilen[0].toStdString();
    EXPECT_THAT((QStringList{zeilen[1].section(QLatin1Char('\t'), 0, 0), zeilen[2].section(QLatin1Char('\t'), 0, 0)}),
                UnorderedElementsAre("Chur", "Bär = 1"));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(zeilen[i].count(QLatin1Char('\t')), tabelle().modell().columnCount() - 1) << i;
    }
    // Nothing selected that is shown: what was copied before stays.
    fenster->findChild<Suchfeld*>()->setText(QStringLiteral("Alpen"));
    druecke(Qt::CTRL | Qt::Key_C);
    EXPECT_EQ(QApplication::clipboard()->text(), zeilen.join(QLatin1Char('\n')));
}

TEST_F(InhaltsTasten, PastedFilesAreImportedUnlessTheyAreRowsOfTheLibrary) {
    const TempOrdner fremd;
    fremd.schreibe("Davos.gpx", gpx(46.0, 9.0));
    fremd.schreibe("Engi.gpx", gpx(46.0, 9.0));
    waehle({"Chur.gpx"});
    druecke(Qt::CTRL | Qt::Key_C);
    druecke(Qt::CTRL | Qt::Key_V);
    arbeiteAb();
    EXPECT_EQ(imOrdner().size(), 3U);
    lege("text/uri-list", fremd.in("Davos.gpx"));
    druecke(Qt::CTRL | Qt::Key_V);
    lege("x-special/gnome-copied-files", fremd.in("Engi.gpx"), "copy\n");
    druecke(Qt::CTRL | Qt::Key_V);
    arbeiteAb();
    EXPECT_THAT(imOrdner(),
                UnorderedElementsAre("Alpen.gpx", "B\xC3\xA4r = 1.gpx", "Chur.gpx", "Davos.gpx", "Engi.gpx"));
    // In a field the same keys are the field's own.
    druecke(Qt::CTRL | Qt::Key_F);
    QApplication::clipboard()->setText(QStringLiteral("Chur"));
    druecke(Qt::CTRL | Qt::Key_V);
    EXPECT_EQ(fenster->findChild<Suchfeld*>()->text(), QStringLiteral("Chur"));
}

TEST_F(InhaltsTasten, ThePanelKnowsTheKeysOfTheRows) {
    waehle({"Chur.gpx"});
    bis([&] { return fenster->findChild<SkizzenAnsicht*>()->isVisible(); });
    const auto imPanel = [&] {
        auto* zeigen = fenster->findChild<DetailAnsicht*>()->findChildren<Knopf*>().constLast();
        zeigen->setFocus();
        ASSERT_EQ(QApplication::focusWidget(), zeigen);
    };
    auto* wert = fenster->findChild<Kachel*>()->findChild<Absatz*>();
    wert->setFocus();
    wert->selectAll();
    druecke(Qt::CTRL | Qt::Key_C);  // what is marked comes before the rows
    EXPECT_EQ(QApplication::clipboard()->text(), wert->toPlainText());
    imPanel();
    druecke(Qt::Key_F2);
    ASSERT_NE(fenster->findChild<UmbenennenDialog*>(), nullptr);
    druecke(Qt::Key_Escape);
    imPanel();
    druecke(Qt::Key_Delete);
    ASSERT_EQ(papierkorb.anfragen.size(), 1U);
    EXPECT_THAT(papierkorb.anfragen[0].pfade, ElementsAre(ordner.in("Chur.gpx")));
    EXPECT_EQ(QApplication::focusWidget(), &tabelle());
}

TEST_F(InhaltsTasten, AMenuIsAskedOfWhateverHasTheKeyboard) {
    const auto menue = [&] {
        druecke(Qt::SHIFT | Qt::Key_F10);
        const std::unique_ptr<PapierMenue> offen(fenster->findChild<PapierMenue*>());
        return offen ? offen->actions().constFirst()->text() : QString();
    };
    waehle({"Chur.gpx"});
    EXPECT_EQ(menue(), QStringLiteral("Umbenennen"));
    druecke(Qt::CTRL | Qt::Key_F);
    EXPECT_EQ(menue(), QStringLiteral("Rückgängig"));
}

TEST_F(InhaltsTasten, TheListOfKeysLeadsToWhatTheProgramIsAndBack) {
    for (const QKeyCombination taste : {QKeyCombination(Qt::Key_F1), Qt::CTRL | Qt::Key_Question}) {
        druecke(taste);
        auto* liste = fenster->findChild<Tastenblatt*>();
        ASSERT_NE(liste, nullptr);
        Q_EMIT liste->ueberGewuenscht();
        QApplication::processEvents();
        EXPECT_EQ(fenster->findChild<Ueberblatt*>(), nullptr) << "one sheet at a time";
        for (Knopf* knopf : liste->findChildren<Knopf*>()) {
            if (knopf->text() == QStringLiteral("Über Spurkiste")) {
                knopf->click();
                break;
            }
        }
        bis([&] { return fenster->findChild<Ueberblatt*>() != nullptr; });
        druecke(Qt::Key_Escape);
        bis([&] { return fenster->findChild<Ueberblatt*>() == nullptr; });
        EXPECT_EQ(QApplication::focusWidget(), &tabelle());
    }
}

TEST_F(InhaltsTasten, QuittingClosesAllWindowsButTheLastWaitsForCopies) {
    const TempOrdner fremd;
    fremd.schreibe("Davos.gpx", gpx(46.0, 9.0));
    const auto zweites = macheFenster();
    bibliothek->importiere({fremd.in("Davos.gpx")});
    bis([&] { return bibliothek->zuKopieren().wert() > 0; });
    druecke(Qt::CTRL | Qt::Key_Q);
    EXPECT_NE(fenster->isVisible(), zweites->isVisible()) << "one stays with the sheet";
    arbeiteAb();
    bis([&] { return !fenster->isVisible() && !zweites->isVisible(); });
    EXPECT_EQ(imOrdner().size(), 4U);
}

}  // namespace
}  // namespace spurkiste
