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

    /// What the left side gets at least, in points, in a window that is as wide as it asks to be. One that was made
    /// narrower all the same, by a small screen or a window manager that tiles, takes what lacks from the left side:
    /// the toolkit would lay both on top of each other.
    void setzeMindestensLinks(int breite);

    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    QSplitterHandle* createHandle() override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    std::function<void(QPainter&)> schatten_;
    int mindestensLinks_ = 0;
};

}  // namespace spurkiste
