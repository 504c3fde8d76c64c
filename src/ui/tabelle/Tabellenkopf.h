#pragma once

#include <QHeaderView>
#include <optional>
#include <vector>

#include "sicht/Sortierung.h"
#include "sicht/Spaltenbreiten.h"
#include "ui/teile/Bildvorrat.h"
#include "ui/teile/Schriftsatz.h"

namespace spurkiste {

/// The header of the table: the columns' titles, the mark of the one that sorts, and the borders that the user pulls.
/// It decides how wide the columns are. By keyboard: Tab reaches it, arrows choose a column, Space or Return clicks it;
/// with Shift arrows make it narrower or wider, and Space or Return fit it to its texts, as a double click on its
/// border does. A click is QHeaderView's sectionClicked().
class Tabellenkopf final : public QHeaderView {
    Q_OBJECT

  public:
    static constexpr int kHoehe = 30;  ///< logical pixels

    explicit Tabellenkopf(QWidget* eltern = nullptr);

    /// Sets the column that sorts, and which way.
    void setzeSortierung(const std::optional<Vergleich>& vergleich);
    /// Sets what the user made of the widths, and fits it into the room.
    void setzeBreiten(const Spaltenbreiten& breiten);
    [[nodiscard]] const Spaltenbreiten& breiten() const { return breiten_; }
    /// Fits the columns into a room of this width.
    void passeAn(int platz);
    /// Sets the least widths of the columns: what figures need; none below Spaltenbreiten::kMindestens.
    void setzeBedarf(const Spaltenbreiten::Breiten& bedarf);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  Q_SIGNALS:
    /// The keyboard is on a column that should be brought into view.
    void spalteGewaehlt(int spalte);

  protected:
    [[nodiscard]] QSize sectionSizeFromContents(int stelle) const override;
    void paintEvent(QPaintEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void focusInEvent(QFocusEvent* ereignis) override;
    void focusOutEvent(QFocusEvent* ereignis) override;

  private:
    void zeichneTitel(QPainter& maler, const QRectF& zelle, Spalte spalte);
    void zeichneMarke(QPainter& maler, const QRectF& kasten, bool absteigend);
    void folgeDemZug(int spalte, int breite);
    bool dehneMitTaste(int taste);
    void wendeAn();
    void waehle(int spalte);
    void sageAn();

    mutable Schriftsatz satz_;  // measuring fills its memory; what it answers stays the same
    Bildvorrat bilder_;
    std::optional<Vergleich> sortierung_;
    Spaltenbreiten breiten_;
    Spaltenbreiten::Breiten bedarf_ = Spaltenbreiten::kMindestens;
    Spaltenbreiten::Breiten angewandt_{};
    std::optional<Spaltenbreiten::Breiten> vorDemZug_;  // while the mouse pulls a border
    int platz_ = 0;
    int gewaehlt_ = 0;       // the column that the keyboard is on
    bool wendetAn_ = false;  // the widths change, but not by the user
};

}  // namespace spurkiste
