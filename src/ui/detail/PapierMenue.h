#pragma once

#include <QMenu>

namespace spurkiste {

/// A pop-up menu in the style of the application: paper, rounded, gold under the pointer.
class PapierMenue final : public QMenu {
    Q_OBJECT

  public:
    explicit PapierMenue(QWidget* eltern = nullptr);

    /// Adds an item with a check mark in front of it when it is the current one; the texts of all items line up.
    QAction* fuegeWahlHinzu(const QString& text, bool gewaehlt);

    /// Adds an item that takes something away, in red. One per menu.
    QAction* fuegeLoeschenHinzu(const QString& text);

    /// Opens the menu below a control, its left edge on the control's, without waiting for it to close.
    void oeffneUnter(const QWidget& element, int abstand = 4);

  protected:
    void resizeEvent(QResizeEvent* ereignis) override;
};

}  // namespace spurkiste
