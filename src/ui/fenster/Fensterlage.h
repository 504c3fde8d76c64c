#pragma once

#include <QByteArray>
#include <QSize>
#include <QWidget>

namespace spurkiste {

/// Size and place of a main window on its screen. GUI thread.
class Fensterlage {
  public:
    /// Gives a window that is not shown yet its place. The first of its class gets what `gemerkt` says (what
    /// QWidget::saveGeometry gave; empty or unreadable is nothing), else the size `wunsch` in points, both no larger
    /// than the room that the screen leaves. Every further one is as large as the one in use and stands a little below
    /// and beside it, so that both can be seen.
    static void stelle(QWidget& fenster, QSize wunsch, const QByteArray& gemerkt);
};

}  // namespace spurkiste
