#pragma once

#include <QWidget>

namespace spurkiste {

/// The veil over the window's content while files are dragged over it: it says that they can be dropped. It only shows;
/// the window takes the drop. GUI thread.
class Dateiablage final : public QWidget {
    Q_OBJECT

  public:
    explicit Dateiablage(QWidget* eltern);

    /// Covers this part of its parent, above everything else.
    void zeigeUeber(const QRect& flaeche);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
};

}  // namespace spurkiste
