#pragma once

#include <QTimer>
#include <QWidget>

namespace spurkiste {

/// A small ring that turns while something is being loaded. Costs nothing while it is hidden.
class Ladering final : public QWidget {
    Q_OBJECT

  public:
    explicit Ladering(QWidget* eltern = nullptr);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void showEvent(QShowEvent* ereignis) override;
    void hideEvent(QHideEvent* ereignis) override;

  private:
    QTimer takt_;
    int winkel_ = 0;  ///< degrees
};

}  // namespace spurkiste
