#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/fenster/UmbenennenDialog.h"
#include "ui/teile/Knopf.h"

namespace spurkiste {
namespace {

using testing::IsEmpty;

class UmbenennenDialogTest : public testing::Test {
  protected:
    UmbenennenDialogTest() {
        fenster.resize(900, 600);
        fenster.show();
        fenster.activateWindow();
    }

    /// Opens the sheet for a file of this name.
    void oeffne(const std::string& name = "Morgenrunde") {
        GpxMetadaten eintrag;
        eintrag.pfad = "/bibliothek/" + name + ".gpx";
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
    oeffne("Fr\xfch");  // bytes that are no UTF-8
    EXPECT_EQ(feld->text(), QString::fromUtf8("Fr\ufffdh"));
}

TEST_F(UmbenennenDialogTest, handsOverWhatWasTyped) {
    struct Fall {
        const char* getippt;
        std::optional<std::string> name;  // absent: nothing happens, and the sheet stays
        bool mitKnopf = false;
    };
    for (const Fall& fall : std::vector<Fall>{
             {" Abendrunde ", " Abendrunde "},
             {"Abend", "Abend", true},
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
        if (fall.mitKnopf) {
            QTest::mouseClick(knopf("Umbenennen"), Qt::LeftButton);
        } else {
            taste(Qt::Key_Return);
        }
        EXPECT_EQ(istZu(), fall.name.has_value()) << fall.getippt;
        EXPECT_EQ(namen, fall.name ? std::vector{*fall.name} : std::vector<std::string>()) << fall.getippt;
        if (blatt) {
            taste(Qt::Key_Escape);
            EXPECT_TRUE(istZu());
        }
    }
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

}  // namespace
}  // namespace spurkiste
