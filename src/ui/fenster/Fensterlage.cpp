#include "ui/fenster/Fensterlage.h"

#include <QApplication>
#include <QScreen>
#include <QStyle>
#include <algorithm>

namespace spurkiste {

namespace {

constexpr QPoint kVersatz(28, 28);

/// The shown window of the same class that is used now; null when there is none.
const QWidget* nachbarVon(const QWidget& fenster) {
    const QWidget* nachbar = nullptr;
    for (const QWidget* anderes : QApplication::topLevelWidgets()) {
        const bool gleichartig = anderes != &fenster && anderes->metaObject() == fenster.metaObject();
        if (gleichartig && anderes->isVisible() && (nachbar == nullptr || anderes->isActiveWindow())) {
            nachbar = anderes;
        }
    }
    return nachbar;
}

bool stehtSchonEines(const QWidget& fenster, const QPoint& wo) {
    for (const QWidget* anderes : QApplication::topLevelWidgets()) {
        if (anderes != &fenster && anderes->metaObject() == fenster.metaObject() && anderes->isVisible() &&
            (anderes->pos() - wo).manhattanLength() < kVersatz.manhattanLength()) {
            return true;
        }
    }
    return false;
}

/// Makes a window that has its place fit onto the screen that it is on.
void holeHerein(QWidget& fenster, const QSize& rahmen) {
    const QRect frei = fenster.screen()->availableGeometry();
    fenster.resize(fenster.size().boundedTo(frei.size() - rahmen));
    const QPoint letzter = frei.bottomRight() - QPoint(fenster.width(), fenster.height());
    fenster.move(std::clamp(fenster.x(), frei.left(), std::max(frei.left(), letzter.x())),
                 std::clamp(fenster.y(), frei.top(), std::max(frei.top(), letzter.y())));
}

}  // namespace

void Fensterlage::stelle(QWidget& fenster, QSize wunsch, const QByteArray& gemerkt) {
    const QWidget* nachbar = nachbarVon(fenster);
    const QRect frei = (nachbar != nullptr ? nachbar : &fenster)->screen()->availableGeometry();
    if (nachbar == nullptr) {
        // The frame is the window manager's and not known before the window is shown; its title bar is about the
        // style's.
        const QSize rahmen(2, fenster.style()->pixelMetric(QStyle::PM_TitleBarHeight) + 2);
        fenster.resize(wunsch.boundedTo(frei.size() - rahmen));
        if (fenster.restoreGeometry(gemerkt) && !fenster.isMaximized() && !fenster.isFullScreen()) {
            holeHerein(fenster, rahmen);
        }
        return;
    }
    const QRect oberesDrittel(frei.topLeft(), frei.size() / 3);
    QPoint wo = nachbar->pos() + kVersatz;
    while (stehtSchonEines(fenster, wo) && oberesDrittel.contains(wo)) {
        wo += kVersatz;
    }
    if (!oberesDrittel.contains(wo)) {  // full: another one may be hidden, but not the one in use
        wo = oberesDrittel.contains(nachbar->pos() + kVersatz) ? nachbar->pos() + kVersatz : frei.topLeft();
    }
    const QSize rahmen = nachbar->frameGeometry().size() - nachbar->size();
    const QPoint platz = frei.bottomRight() - wo;
    fenster.resize(nachbar->normalGeometry().size().boundedTo(QSize(platz.x(), platz.y()) - rahmen));
    fenster.move(wo);
}

}  // namespace spurkiste
