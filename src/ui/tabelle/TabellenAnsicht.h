#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QTableView>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sicht/Sortierung.h"
#include "sicht/Zahlentexte.h"
#include "ui/tabelle/TabellenAuswahl.h"
#include "ui/tabelle/TabellenModell.h"
#include "ui/tabelle/Tabellenkopf.h"
#include "ui/tabelle/ZellenZeichner.h"
#include "ui/teile/Kartenrahmen.h"
#include "ui/teile/Rollbalken.h"
#include "ui/teile/Tippsuche.h"

namespace spurkiste {

/// The table of the library, as a card: header, rows, the selection, and what the user can do with them. It shows the
/// rows it is given, in their order, and reports gestures; sorting and filtering are done elsewhere. The card is the
/// widget's rectangle; who paints the ground below it paints the card's shadow with Kartenrahmen::zeichneSchatten().
/// GUI thread.
class TabellenAnsicht final : public QTableView {
    Q_OBJECT

  public:
    using Auswahl = TabellenAuswahl::Pfade;

    explicit TabellenAnsicht(QWidget* eltern = nullptr);

    /// Shows these rows, in this order; none null, no file twice. Selection, current row and scroll position stay with
    /// the files: a row that comes back is selected again, and while the order stays, so does what is at the top (at
    /// the very top, that is the beginning of the list). A selected row that was in view stays there, also when it was
    /// hidden in between.
    void setzeZeilen(std::vector<std::shared_ptr<const Zeile>> zeilen);
    /// Selects the rows of these paths, shown or not, without reporting it.
    void setzeAuswahl(const Auswahl& auswahl) { auswahl_->setzePfade(auswahl); }
    [[nodiscard]] const Auswahl& auswahl() const { return auswahl_->pfade(); }
    /// What of it is shown, not hidden by search or filters: nothing is done to files that nobody sees.
    [[nodiscard]] Auswahl gezeigteAuswahl() const;
    /// Scrolls to the row of this path and puts the keyboard there; nothing happens when it is not shown.
    void rolleZu(const std::string& pfad);
    /// Whether the row with the keyboard is selected.
    [[nodiscard]] bool istMarkiert() const;
    /// Selects the row with the keyboard when no row is selected that is shown, and reports it as a gesture. With a
    /// row given, that one.
    void markiere(std::optional<int> reihe = std::nullopt);
    /// Scrolls to the row with the keyboard when it is selected, else puts the keyboard on the first selected one.
    void rolleZurAuswahl();
    /// Marks the column of the weightiest comparator.
    void setzeSortierung(const Sortierung& sortierung);
    /// Sets the figures that its columns must have room for, whatever else gives way.
    void setzeZahlen(const Zahlentexte& zahlen);
    /// Sets the column titles.
    void setzeTitel(const QStringList& titel) { modell_->setzeTitel(titel); }
    /// Takes the fonts anew, after the language changed.
    void kleide();

    /// What the user made of the column widths, as a text to keep.
    [[nodiscard]] QString spaltenbreiten() const;
    /// Restores it; any other text means the initial widths.
    void setzeSpaltenbreiten(const QString& text);

    /// The room of the rows, below the header, in the table's coordinates.
    [[nodiscard]] QRect koerper() const { return viewport()->geometry(); }
    [[nodiscard]] const TabellenModell& modell() const { return *modell_; }

    void keyboardSearch(const QString& suche) override;
    void scrollTo(const QModelIndex& index, ScrollHint wohin = EnsureVisible) override;

  Q_SIGNALS:
    /// A gesture changed the selection.
    void auswahlGeaendert(const TabellenAuswahl::Pfade& auswahl);
    /// A sortable column's title was clicked.
    void kopfGeklickt(Spalte spalte);
    /// A row was double-clicked, or Return or F2 pressed on the only selected one.
    void zeileGeoeffnet(const std::string& pfad);
    /// The menu of the selected rows is wanted at a place on the screen.
    void kontextmenueGewuenscht(const QPoint& wo);
    /// Delete was pressed: the selected files are to go to the trash.
    void loeschenGewuenscht();
    /// The sport menu of a row is wanted; `kapsel` is where its capsule stands on the screen.
    void sportmenueGewuenscht(const std::string& pfad, const QRect& kapsel);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    bool viewportEvent(QEvent* ereignis) override;
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void wheelEvent(QWheelEvent* ereignis) override;
    void mousePressEvent(QMouseEvent* ereignis) override;
    void mouseMoveEvent(QMouseEvent* ereignis) override;
    void mouseReleaseEvent(QMouseEvent* ereignis) override;
    void mouseDoubleClickEvent(QMouseEvent* ereignis) override;
    void contextMenuEvent(QContextMenuEvent* ereignis) override;
    void keyPressEvent(QKeyEvent* ereignis) override;
    void focusInEvent(QFocusEvent* ereignis) override;
    void focusOutEvent(QFocusEvent* ereignis) override;
    void startDrag(Qt::DropActions aktionen) override;
    QModelIndex moveCursor(CursorAction bewegung, Qt::KeyboardModifiers tasten) override;
    int sizeHintForColumn(int spalte) const override;
    void selectionChanged(const QItemSelection& dazu, const QItemSelection& weg) override;
    void currentChanged(const QModelIndex& index, const QModelIndex& vorher) override;

  private:
    struct Blick;

    [[nodiscard]] Blick merkeBlick() const;
    void stelleHer(const Blick& blick, bool umgestellt);
    void setzeAktuelle(const Blick& blick);
    void waehleReihe(const QModelIndex& index);
    void merkeHalt();
    void halte();
    [[nodiscard]] bool istGanzZuSehen(int reihe) const;
    [[nodiscard]] int reiheBei(int y) const;
    [[nodiscard]] QRect reihenRechteck(int reihe) const;
    [[nodiscard]] const std::vector<ZellenZeichner::Lage>& sichtbareSpalten(const QRect& flaeche);
    [[nodiscard]] QRect kapselRechteck(int reihe) const;
    [[nodiscard]] int kapselReihe(const QMouseEvent& ereignis) const;
    void bitteUmSportmenue(int reihe);
    void ueberfahre(const QPoint& wo);
    void zeigeTastatur(bool tastatur);
    [[nodiscard]] QString kurzhilfe(const QModelIndex& index) const;

    TabellenModell* modell_;
    TabellenAuswahl* auswahl_;
    Tabellenkopf* kopf_;
    Kartenrahmen* rahmen_;
    Rollbalken* senkrecht_;
    Rollbalken* waagrecht_;
    // Measuring cells fills its memory; what it answers stays the same.
    std::unique_ptr<ZellenZeichner> zeichner_ = std::make_unique<ZellenZeichner>();
    std::vector<ZellenZeichner::Lage> spalten_;  // those that can be seen, kept for its memory
    std::optional<std::uint32_t> aktuelle_;      // where the user put the keyboard, shown or not; Zeile::kennung()
    /// The selected row that is not to be lost from sight while rows move, and where it stood in the view.
    struct Halt {
        std::uint32_t kennung;
        int hoehe;
    };
    std::optional<Halt> halt_;
    std::optional<QPoint> maus_;  // where it is over the rows
    int ueberfahren_ = -1;        // the row below it
    bool haelt_ = false;          // the rows are changing: nothing is a gesture, nothing scrolls
    bool kapselGedrueckt_ = false;
    int gedrueckt_ = -1;     // the row that the last click began on
    bool tastatur_ = false;  // the keyboard is being used, so show where it is
    Tippsuche tippsuche_;
};

}  // namespace spurkiste
