#pragma once

#include <QSignalSpy>
#include <QTest>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ui/tabelle/TabellenAnsicht.h"
#include "ui/tabelle/Zeilenbau.h"

namespace spurkiste {

/// A table as large as in the usual window, and what it reports.
class Tabellenbuehne {
  public:
    Tabellenbuehne() {
        tabelle.resize(1055, 638);
        tabelle.setzeTitel(
            {"Name", "Datum", "Sport", "Länge", "Zeit", "Anstieg", "Punkte", "Ghost", "Art", "Start", "Ziel"});
        tabelle.show();
        tabelle.activateWindow();
        QObject::connect(&tabelle, &TabellenAnsicht::auswahlGeaendert,
                         [this](const TabellenAnsicht::Auswahl& auswahl) { gemeldet.push_back(sortiert(auswahl)); });
    }

    using Pfade = std::set<std::string>;
    static Pfade sortiert(const TabellenAnsicht::Auswahl& auswahl) { return {auswahl.begin(), auswahl.end()}; }
    static Pfade pfade(const std::vector<std::uint32_t>& kennungen) {
        Pfade ergebnis;
        for (const std::uint32_t kennung : kennungen) {
            ergebnis.insert(pfad(kennung));
        }
        return ergebnis;
    }

    /// The middle of a cell of the row that stands at a position.
    [[nodiscard]] QPoint mitte(int reihe, Spalte spalte = Spalte::laenge) const {
        return tabelle.visualRect(tabelle.model()->index(reihe, static_cast<int>(spalte))).center();
    }
    void klicke(int reihe, Qt::KeyboardModifiers tasten = {}, Qt::MouseButton knopf = Qt::LeftButton) {
        QTest::mouseClick(tabelle.viewport(), knopf, tasten, mitte(reihe));
    }
    void taste(Qt::Key taste, Qt::KeyboardModifiers tasten = {}) { QTest::keyClick(&tabelle, taste, tasten); }

    /// The positions that the toolkit shows as selected.
    [[nodiscard]] std::vector<int> markiert() const {
        std::vector<int> reihen;
        for (const QModelIndex& index : tabelle.selectionModel()->selectedRows()) {
            reihen.push_back(index.row());
        }
        std::sort(reihen.begin(), reihen.end());
        return reihen;
    }
    /// The number of the row with the keyboard.
    [[nodiscard]] std::optional<std::uint32_t> aktuelle() const {
        const int reihe = tabelle.currentIndex().row();
        return reihe < 0 ? std::nullopt : std::optional(tabelle.modell().zeile(reihe).kennung());
    }

    TabellenAnsicht tabelle;
    std::vector<Pfade> gemeldet;  ///< the selections reported, in order
};

}  // namespace spurkiste
