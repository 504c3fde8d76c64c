#pragma once

#include <QItemSelectionModel>
#include <cstdint>
#include <vector>

#include "sicht/Pfadmenge.h"
#include "ui/tabelle/TabellenModell.h"

namespace spurkiste {

/// Which rows are selected, by the files' paths. The truth is a set of paths, in which rows that are not shown stay;
/// the toolkit's selection of positions only mirrors what of it can be seen. Gestures come in through select(): one
/// that clears replaces the whole set, hidden rows included, as a plain click in any table does; one that extends or
/// toggles leaves hidden rows alone.
class TabellenAuswahl final : public QItemSelectionModel {
    Q_OBJECT

  public:
    using Pfade = Pfadmenge;

    TabellenAuswahl(TabellenModell& modell, QObject* eltern);

    [[nodiscard]] const Pfade& pfade() const { return pfade_; }
    /// Whether a row is selected. Fast, however many are.
    [[nodiscard]] bool istGewaehlt(const Zeile& zeile) const;

    /// Selects these paths, without telling anybody.
    void setzePfade(const Pfade& pfade);

    /// To be called before the rows change: takes the positions out of the way, which would otherwise be carried one
    /// by one through every change. Then zeige() once they have.
    void verbirg();
    /// Mirrors the set again, in the rows that are there.
    void zeige();
    /// Whether the positions are changing by one of the above, not by a gesture.
    [[nodiscard]] bool istStill() const { return still_; }

    using QItemSelectionModel::select;
    void select(const QItemSelection& auswahl, QItemSelectionModel::SelectionFlags befehl) override;

  Q_SIGNALS:
    /// A gesture changed the set.
    void pfadeGeaendert();

  private:
    enum class Marke : std::uint8_t { unbekannt, nein, ja };

    void uebernimm(const QItemSelection& dazu, const QItemSelection& weg);
    void setzeMarke(std::uint32_t kennung, Marke marke) const;

    TabellenModell& modell_;
    Pfade pfade_;
    mutable std::vector<Marke> marken_;  // by Zeile::kennung(): what looking up the path gave
    bool still_ = false;
    bool ersetzt_ = false;    // the gesture under way replaces the whole set
    bool geaendert_ = false;  // and changes what can be seen of it
};

}  // namespace spurkiste
