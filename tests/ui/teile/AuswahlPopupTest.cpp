#include <QListView>
#include <QTest>
#include <QWidget>

#include <gtest/gtest.h>

#include "ui/teile/AuswahlPopup.h"

namespace spurkiste {
namespace {

TEST(AuswahlPopup, takesWhatWasTypedAndNotWhatScrolledUnderTheRestingPointer) {
    QStringList orte;
    for (int i = 0; i < 200; ++i) {
        orte << QStringLiteral("Ort %1").arg(i);
    }
    orte << QStringLiteral("Zell");
    int gewaehlt = -1;
    QWidget knopf;
    knopf.show();
    auto* popup = new AuswahlPopup(
        orte, 0, [&gewaehlt](int zeile) { gewaehlt = zeile; }, &knopf);
    popup->oeffneUnter(knopf, QStringLiteral("Start"));
    auto* liste = popup->findChild<QListView*>();
    const auto unterZeiger = [liste](int y) {
        QTest::mouseMove(liste->viewport(), QPoint(20, y));
        QCoreApplication::processEvents();
        return liste->indexAt(QPoint(20, y)).row();
    };
    ASSERT_GT(unterZeiger(70), 0);
    EXPECT_EQ(liste->currentIndex().row(), unterZeiger(70));
    QTest::keyClick(liste, Qt::Key_Z);
    QCoreApplication::processEvents();
    EXPECT_EQ(liste->currentIndex().row(), 200);
    const int anderswo = unterZeiger(100);
    EXPECT_EQ(liste->currentIndex().row(), anderswo) << "a pointer that moves is followed again";
    EXPECT_NE(anderswo, 200);
    QTest::keyClick(liste, Qt::Key_Z);
    QTest::keyClick(liste, Qt::Key_Return);
    EXPECT_EQ(gewaehlt, 200);
}

TEST(AuswahlPopup, isAsHighAsItsChoicesAre) {
    QWidget knopf;
    knopf.show();
    auto* popup = new AuswahlPopup(
        {"Ghost: alle", "Ghost-tauglich"}, 0, [](int) {}, &knopf);
    popup->oeffneUnter(knopf, QStringLiteral("Ghost"));
    auto* liste = popup->findChild<QListView*>();
    EXPECT_EQ(liste->viewport()->rect().bottom(), liste->visualRect(liste->model()->index(1, 0)).bottom());
}

}  // namespace
}  // namespace spurkiste
