#pragma once

#include <QAbstractTableModel>
#include <QByteArray>
#include <QStringList>
#include <QVariant>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "sicht/Sortierung.h"
#include "sicht/Zeile.h"
#include "sicht/Zeilenabgleich.h"

namespace spurkiste {

/// The rows of the table as the toolkit's views and screen readers want them. It is never reset: a new list of rows
/// arrives as rows that go, move, come and change, so that whatever a view remembers of a file stays with the file.
class TabellenModell final : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit TabellenModell(QObject* eltern = nullptr);

    /// Shows these rows, in this order; none null, no file twice. Says nothing when they are the rows shown already.
    /// Answers whether rows that stay changed their order.
    bool setzeZeilen(std::vector<std::shared_ptr<const Zeile>> zeilen);
    /// Sets the column titles, as many as there are columns.
    void setzeTitel(const QStringList& titel);
    /// Sets the weightiest comparator, for those who cannot see the mark in the header.
    void setzeSortierung(const std::optional<Vergleich>& vergleich);

    /// The rows shown. While rows come and go it already is the new list.
    [[nodiscard]] const Zeilenliste& liste() const { return liste_; }
    /// The row at a position, without a detour through texts and variants.
    [[nodiscard]] const Zeile& zeile(int reihe) const { return *gezeigt_[static_cast<std::size_t>(reihe)]; }

    /// The file URL of a path: every byte that a URL cannot hold percent-encoded as it is, so that names that are not
    /// UTF-8 lead to their files too.
    [[nodiscard]] static QByteArray dateiUrl(std::string_view pfad);

    [[nodiscard]] int rowCount(const QModelIndex& eltern = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& eltern = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int rolle) const override;
    [[nodiscard]] QVariant headerData(int stelle, Qt::Orientation richtung, int rolle) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] QStringList mimeTypes() const override;
    /// The files of the rows, each once, in the order of the table.
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexe) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::IgnoreAction; }

  private:
    void gleicheSpannenweiseAn(const Zeilenabgleich& abgleich);
    void gleicheImGanzenAn(const Zeilenabgleich& abgleich);
    void haengeAn(const std::vector<Spanne>& dazu);
    void stelleUm(const std::vector<Spanne>& weg);
    void kuerzeAuf(std::size_t anzahl);
    void melde(const std::vector<Spanne>& geaendert);

    Zeilenliste liste_;
    std::vector<const Zeile*> gezeigt_;  // what views see; between two signals neither the old list nor the new one
    QStringList titel_;
    std::optional<Vergleich> sortierung_;
};

/// How a column's texts are aligned, and its title with them.
[[nodiscard]] constexpr Qt::Alignment ausrichtung(Spalte spalte) {
    switch (angaben(spalte).seite) {
        case Seite::mitte:
            return Qt::AlignCenter;
        case Seite::rechts:
            return Qt::AlignRight | Qt::AlignVCenter;
        case Seite::links:
            break;
    }
    return Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace spurkiste
