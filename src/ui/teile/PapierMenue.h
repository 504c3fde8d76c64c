#pragma once

#include <QHash>
#include <QKeySequence>
#include <QMenu>
#include <string_view>

#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Schwebekarte.h"
#include "ui/teile/Tippsuche.h"

namespace spurkiste {

/// A pop-up menu in the style of the application: paper, rounded, gold under the pointer. Letters find an item.
class PapierMenue final : public QMenu {
    Q_OBJECT

  public:
    /// At least `breite` logical pixels wide.
    explicit PapierMenue(int breite, QWidget* eltern = nullptr);

    /// Adds an item.
    QAction* fuegeHinzu(const QString& text);

    /// Adds an item with a check mark in front of it when it is the current one; the texts of all items line up.
    QAction* fuegeWahlHinzu(const QString& text, bool gewaehlt);

    /// Adds an item that takes something away, in red. One per menu.
    QAction* fuegeLoeschenHinzu(const QString& text);

    /// Adds an item that shows this icon (a name of static lifetime) behind its text, at the right edge; empty
    /// for none. One item of a menu may have one: the current choice, if `gewaehlt`, or what is suggested.
    QAction* fuegeMitZeichenHinzu(const QString& text, std::string_view symbol, bool gewaehlt);

    /// Adds an item that says at the right edge which key does the same. The key is only named: whoever owns what the
    /// item does has bound it already.
    QAction* fuegeBefehlHinzu(const QString& text, const QKeySequence& taste);

    /// Opens the menu below a control, its left edge on the control's, without waiting for it to close.
    void oeffneUnter(const QWidget& element);
    /// Opens it below a rectangle on the screen, or above it, at this distance.
    void oeffneUnter(const QRect& anker, int abstand);

  protected:
    void keyPressEvent(QKeyEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;
    void showEvent(QShowEvent* ereignis) override;

  private:
    void gehePerBuchstabe(const QString& text);
    void maleZeile(QPainter& maler, const QAction& zeile, const QRectF& kasten);

    Schwebekarte schwebekarte_;
    Schriftsatz satz_;
    Tippsuche tippsuche_;
    bool hatHaekchen_ = false;       ///< the texts make room for check marks
    QAction* loeschen_ = nullptr;    ///< the item in red
    QAction* gezeichnet_ = nullptr;  ///< the item with an icon behind its text
    std::string_view symbol_;
    QHash<const QAction*, QString> tasten_;  ///< the names of keys, of the items that have one
};

}  // namespace spurkiste
