#pragma once

#include <QPainter>
#include <QSplitter>
#include <functional>

namespace spurkiste {

/// The window's main area: the table on the left, the panel on the right, and between them a line that is seen only
/// under the pointer. It paints the ground of both, so that the shadow of a card in the one may fall on the other. GUI
/// thread.
class Hauptteiler final : public QSplitter {
    Q_OBJECT

  public:
    /// `schatten` paints what the cards cast on the ground, in this widget's coordinates.
    Hauptteiler(std::function<void(QPainter&)> schatten, QWidget* eltern);

  protected:
    QSplitterHandle* createHandle() override;
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    std::function<void(QPainter&)> schatten_;
};

}  // namespace spurkiste
