#pragma once

#include <QAbstractButton>

namespace spurkiste {

/// What all controls have in common that can be clicked: Space and Return press them, and one that opens a menu opens
/// it with the arrow keys and F4 as well, looks pressed as long as that is open, and tells a screen reader so. GUI
/// thread.
class Drueckbar : public QAbstractButton {
    Q_OBJECT

  public:
    explicit Drueckbar(QWidget* eltern = nullptr);

    /// Clicking it opens a menu or a list of choices.
    void setzeAufklappend() { klapptAuf_ = true; }
    [[nodiscard]] bool klapptAuf() const { return klapptAuf_; }
    /// It has opened this, and has it open until it is gone.
    void zeigeOffen(const QWidget& geoeffnetes);
    [[nodiscard]] bool istOffen() const { return offen_; }

    /// Return does in its sheet what a click on it does, wherever the keyboard is.
    void setzeVorgabe() { vorgabe_ = true; }
    [[nodiscard]] bool istVorgabe() const { return vorgabe_; }

  protected:
    void keyPressEvent(QKeyEvent* ereignis) override;
    void enterEvent(QEnterEvent* ereignis) override;
    void leaveEvent(QEvent* ereignis) override;

  private:
    void setzeOffen(bool offen);

    bool klapptAuf_ = false;
    bool offen_ = false;
    bool vorgabe_ = false;
};

}  // namespace spurkiste
