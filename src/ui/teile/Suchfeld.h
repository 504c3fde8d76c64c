#pragma once

#include <QLineEdit>

namespace spurkiste {

/// The search field of the window: a line edit in a rounded shape with a magnifying glass and, while it holds text, a
/// button that empties it. Escape empties it too. Keeps papier::kRingRand free for the focus ring.
class Suchfeld final : public QLineEdit {
    Q_OBJECT

  public:
    explicit Suchfeld(QWidget* eltern = nullptr);

  Q_SIGNALS:
    /// Return or Arrow Down: the keyboard is to go to what was found.
    void verlassen();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    class Leeren;
    Leeren* leeren_;
};

}  // namespace spurkiste
