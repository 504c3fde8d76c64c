#pragma once

#include <QMenu>
#include <string_view>

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

    /// Adds an item that shows this icon (a name of static lifetime) behind its text, at the right edge; empty
    /// for none. One item of a menu may have one: the current choice.
    QAction* fuegeMitZeichenHinzu(const QString& text, std::string_view symbol);

    /// Opens the menu below a control, its left edge on the control's, without waiting for it to close.
    void oeffneUnter(const QWidget& element);

  protected:
    void keyPressEvent(QKeyEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    QAction* gezeichnet_ = nullptr;  ///< the item with an icon behind its text
    std::string_view symbol_;
};

}  // namespace spurkiste
