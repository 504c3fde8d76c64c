#pragma once

#include <QColor>
#include <QScrollArea>
#include <QWidget>

namespace spurkiste {

/// Lets what scrolls sideways without a scroll bar fade into its ground at each end that hides something, so that it
/// can be seen that there is more. It lies over the scroll area and lets everything through. GUI thread.
class Randblende final : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kBreite = 28;  ///< logical pixels at each end

    /// `hoehe` is that of the strip that fades, in the middle of the area.
    Randblende(QScrollArea& rolle, const QColor& grund, int hoehe);

  protected:
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    void legeAn();

    QScrollArea& rolle_;
    QColor grund_;
    int hoehe_;
};

}  // namespace spurkiste
