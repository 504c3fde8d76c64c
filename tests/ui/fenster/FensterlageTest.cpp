#include <QApplication>
#include <QScreen>
#include <QTest>
#include <QWidget>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "ui/fenster/Fensterlage.h"

namespace spurkiste {
namespace {

TEST(FensterlageTest, everyWindowLiesOnTheScreenAndNoneHidesAnother) {
    const QRect frei = QGuiApplication::primaryScreen()->availableGeometry();
    std::vector<std::unique_ptr<QWidget>> alle;
    for (int i = 0; i < 15; ++i) {
        auto& fenster = *alle.emplace_back(std::make_unique<QWidget>());
        Fensterlage::stelle(fenster, frei.size() * 2, QByteArray());
        EXPECT_TRUE(frei.contains(QRect(fenster.pos(), fenster.size()))) << i;
        EXPECT_TRUE(i == 0 || fenster.pos() != alle[static_cast<std::size_t>(i) - 1]->pos()) << i;
        fenster.show();
        fenster.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&fenster));
    }
}

TEST(FensterlageTest, whatIsRememberedOfALargerScreenIsMadeToFit) {
    const QRect frei = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget damals;
    damals.setGeometry(5, 5, frei.width() * 3, frei.height() * 3);
    QWidget heute;
    Fensterlage::stelle(heute, QSize(100, 100), damals.saveGeometry());
    EXPECT_TRUE(frei.contains(QRect(heute.pos(), heute.size())));
    EXPECT_GT(heute.width(), frei.width() / 2);
    QWidget unlesbar;
    Fensterlage::stelle(unlesbar, QSize(100, 90), "nonsense");
    EXPECT_EQ(unlesbar.size(), QSize(100, 90));
}

}  // namespace
}  // namespace spurkiste
