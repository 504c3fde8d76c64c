#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "hilfe/TempOrdner.h"
#include "ui/fenster/UmbenennenDialog.h"
#include "ui/teile/Knopf.h"

namespace spurkiste {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class UmbenennenDialogTest : public testing::Test {
  protected:
    UmbenennenDialogTest() {
        fenster.resize(900, 600);
        fenster.show();
        fenster.activateWindow();
    }

    /// Opens the sheet for a file of this name.
    void oeffne(const std::string& name = "Morgenrunde", const std::string& pfad = "/bibliothek/Morgenrunde.gpx") {
        GpxMetadaten eintrag;
        eintrag.pfad = pfad;
        eintrag.dateiName = name;
        blatt = new UmbenennenDialog(
            std::make_shared<const GpxMetadaten>(std::move(eintrag)),
            [this](const QString& neu) { namen.push_back(neu.toStdString()); }, &fenster);
        feld = blatt->findChild<QLineEdit*>();
        ASSERT_NE(feld, nullptr);
    }

    Knopf* knopf(const QString& text) {
        for (Knopf* jeder : blatt->findChildren<Knopf*>()) {
            if (jeder->text() == text) {
                return jeder;
            }
        }
        ADD_FAILURE() << "no button " << text.toStdString();
        return nullptr;
    }

    /// Whether the sheet has gone, after what was put off has been done.
    bool istZu() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return blatt.isNull();
    }

    void tippe(const QString& text) { QTest::keyClicks(fenster.focusWidget(), text); }
    void taste(Qt::Key taste, Qt::KeyboardModifiers dazu = {}) { QTest::keyClick(fenster.focusWidget(), taste, dazu); }

    QWidget fenster;
    QPointer<UmbenennenDialog> blatt;
    QLineEdit* feld = nullptr;
    std::vector<std::string> namen;  ///< what the action was called with
};

TEST_F(UmbenennenDialogTest, opensOverTheWholeWindowWithTheNameMarked) {
    oeffne();
    EXPECT_EQ(blatt->geometry(), fenster.rect());
    EXPECT_EQ(feld->text(), "Morgenrunde");
    EXPECT_EQ(feld->selectedText(), "Morgenrunde");
    EXPECT_EQ(fenster.focusWidget(), feld);
    fenster.resize(1000, 700);
    EXPECT_EQ(blatt->geometry(), fenster.rect());
    tippe("Abend");
    EXPECT_EQ(feld->text(), "Abend");
}

TEST_F(UmbenennenDialogTest, handsOverWhatWasTyped) {
    struct Fall {
        const char* getippt;
        std::optional<std::string> name;  // absent: nothing happens, and the sheet stays
    };
    for (const Fall& fall : std::vector<Fall>{
             {" Abendrunde ", " Abendrunde "},
             {"Morgenrunde", "Morgenrunde"},  // whether it is another name, the library knows
             {"a/b", "a/b"},
             {"", std::nullopt},
             {"   ", std::nullopt},
             {"\u2003\u00a0", std::nullopt},
         }) {
        namen.clear();
        oeffne();
        feld->setText(QString::fromUtf8(fall.getippt));
        EXPECT_EQ(knopf("Umbenennen")->isEnabled(), fall.name.has_value()) << fall.getippt;
        taste(Qt::Key_Return);
        EXPECT_EQ(istZu(), fall.name.has_value()) << fall.getippt;
        EXPECT_EQ(namen, fall.name ? std::vector{*fall.name} : std::vector<std::string>()) << fall.getippt;
        if (blatt) {
            taste(Qt::Key_Escape);
            EXPECT_TRUE(istZu());
        }
    }
}

TEST_F(UmbenennenDialogTest, theButtonRenamesOnceTheSheetIsGone) {
    oeffne();
    bool offen = true;
    blatt->disconnect();
    QObject::connect(blatt, &QDialog::accepted, [&offen] { offen = false; });
    QTest::mouseClick(knopf("Umbenennen"), Qt::LeftButton);
    EXPECT_THAT(namen, ElementsAre("Morgenrunde"));
    EXPECT_FALSE(offen);
    EXPECT_TRUE(istZu());
}

TEST_F(UmbenennenDialogTest, cancellingChangesNothing) {
    for (const bool taste : {true, false}) {
        oeffne();
        tippe("Abend");
        const QSignalSpy abgelehnt(blatt, &QDialog::rejected);
        if (taste) {
            this->taste(Qt::Key_Escape);
        } else {
            QTest::mouseClick(knopf("Abbrechen"), Qt::LeftButton);
        }
        EXPECT_EQ(abgelehnt.count(), 1);
        EXPECT_TRUE(istZu());
    }
    EXPECT_THAT(namen, IsEmpty());
    oeffne();
    EXPECT_EQ(feld->text(), "Morgenrunde");
}

TEST_F(UmbenennenDialogTest, theKeyboardStaysInTheSheet) {
    QLineEdit darunter(&fenster);
    darunter.show();
    oeffne();
    Knopf* const abbrechen = knopf("Abbrechen");
    Knopf* const umbenennen = knopf("Umbenennen");
    for (const QWidget* naechstes : std::vector<const QWidget*>{abbrechen, umbenennen, feld}) {
        taste(Qt::Key_Tab);
        EXPECT_EQ(fenster.focusWidget(), naechstes);
    }
    for (const QWidget* naechstes : std::vector<const QWidget*>{umbenennen, abbrechen, feld}) {
        taste(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(fenster.focusWidget(), naechstes);
    }
    feld->clear();  // the disabled button is passed over
    taste(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(fenster.focusWidget(), abbrechen);
    taste(Qt::Key_Space);  // on a button: presses it
    EXPECT_TRUE(istZu());
    EXPECT_THAT(namen, IsEmpty());
}

TEST_F(UmbenennenDialogTest, neitherAFileThatHasGoneNorAnOddNameDoesHarm) {
    const TempOrdner ordner;
    const std::string pfad = ordner.schreibe("Weg.gpx", "<gpx/>");
    oeffne("Weg", pfad);
    std::filesystem::remove(pfad);
    taste(Qt::Key_Return);
    EXPECT_TRUE(istZu());
    EXPECT_THAT(namen, ElementsAre("Weg"));
    EXPECT_FALSE(std::filesystem::exists(pfad));

    oeffne("Fr\xfch");  // bytes that are no UTF-8
    EXPECT_EQ(feld->text(), QString::fromUtf8("Fr\ufffdh"));
    oeffne(std::string(4000, 'x'));
    EXPECT_EQ(feld->text().size(), 4000);
}

}  // namespace
}  // namespace spurkiste
