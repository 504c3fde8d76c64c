#pragma once

#include <QFrame>
#include <QListView>
#include <QPoint>
#include <QStringListModel>
#include <functional>
#include <optional>

#include "ui/teile/Rollbalken.h"
#include "ui/teile/Schwebekarte.h"
#include "ui/teile/Tippsuche.h"

namespace spurkiste {

/// A list of choices that opens below a control and closes with the choice, with Escape or with a click elsewhere.
/// Shows thousands of choices as fast as ten; typing finds one by its beginning. Deletes itself when it closes.
class AuswahlPopup final : public QFrame {
    Q_OBJECT

  public:
    /// `gewaehlt` is the row of the current choice, or -1. `beiWahl` gets the chosen row.
    AuswahlPopup(const QStringList& wahlen, int gewaehlt, std::function<void(int)> beiWahl, QWidget* eltern);

    /// Opens it below the control without waiting for it to close; `name` is what a screen reader calls it.
    void oeffneUnter(const QWidget& element, const QString& name);

  protected:
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void paintEvent(QPaintEvent* ereignis) override;
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    class Zeichner;
    void waehle(const QModelIndex& stelle);
    bool nimmTaste(const QKeyEvent& taste);
    void folgeZeiger(const QModelIndex& stelle);

    Schwebekarte schwebekarte_;
    QStringListModel modell_;
    QListView liste_;
    Rollbalken* balken_;
    Tippsuche tippsuche_;
    std::optional<QPoint> ruhenderZeiger_;  ///< at the last key: what scrolls under it there is not meant
    std::function<void(int)> beiWahl_;
};

}  // namespace spurkiste
