// Tests of widgets need fonts and an application, but no screen.
#include <QApplication>

#include <gtest/gtest.h>

int main(int anzahl, char** werte) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&anzahl, werte);
    const QApplication programm(anzahl, werte);
    return RUN_ALL_TESTS();
}
