#pragma once

#include <QRect>
#include <QScrollBar>
#include <QWidget>

namespace spurkiste {

/// A slim scroll bar that lies over the content: a rounded handle without track or arrows, which is there only when
/// there is something to scroll. It stands for a scroll bar of the toolkit that is itself not shown, and follows it.
class Rollbalken final : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kDicke = 5;  ///< logical pixels

    /// `balken` must outlive it.
    Rollbalken(QScrollBar& balken, QWidget* eltern);

    /// Where the handle travels: a strip kDicke wide (or high), in the parent's coordinates.
    void setzeBahn(const QRect& bahn);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseMoveEvent(QMouseEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void enterEvent(QEnterEvent* ereignis) override;
    void leaveEvent(QEvent* ereignis) override;

  private:
    [[nodiscard]] bool senkrecht() const { return balken_.orientation() == Qt::Vertical; }
    [[nodiscard]] int griffLaenge() const;
    [[nodiscard]] int spielraum() const;
    [[nodiscard]] int entlang(const QPointF& punkt) const;
    void ordneAn();

    QScrollBar& balken_;
    QRect bahn_;
    int gegriffen_ = 0;  // how far along the handle the mouse took it
};

}  // namespace spurkiste
