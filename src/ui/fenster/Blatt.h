#pragma once

#include <QDialog>
#include <QFont>
#include <vector>

#include "ui/teile/Knopf.h"

class QVBoxLayout;

namespace spurkiste {

/// A sheet over a window: a card with a title. A child of the window, not a window of its own: it lays itself over the
/// whole of it and keeps keyboard and mouse from what is below. Deletes itself when it is closed; the parent must be
/// shown. GUI thread.
class Blatt : public QDialog {
    Q_OBJECT

  public:
    Blatt(const QString& titel, QWidget* eltern);

  protected:
    static constexpr int kFeldHoehe = 32;  ///< of fields and buttons

    /// Lays out title, pieces and buttons, in this order, on a card of that width in logical pixels; the focus goes
    /// round among those of them that take it.
    void legeAus(const std::vector<QWidget*>& stuecke, const std::vector<Knopf*>& knoepfe, int breite = 408);
    /// Comes up, with the focus on the widget.
    void zeigeMit(QWidget* fokus);

    [[nodiscard]] static Knopf* leiserKnopf(const QString& text);
    [[nodiscard]] static Knopf* wichtigerKnopf(const QString& text);

    void paintEvent(QPaintEvent* ereignis) override;
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    bool focusNextPrevChild(bool weiter) override;

  private:
    QWidget* blatt_;
    std::vector<QWidget*> reihe_;
};

}  // namespace spurkiste
