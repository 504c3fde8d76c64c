#include "ui/tabelle/TabellenModell.h"

#include <QMimeData>
#include <QUrl>
#include <algorithm>
#include <cassert>
#include <cstddef>
#include <memory>
#include <utility>

namespace spurkiste {

namespace {

QString text(std::u16string_view u16) {
    return QString(reinterpret_cast<const QChar*>(u16.data()), static_cast<qsizetype>(u16.size()));
}

}  // namespace

TabellenModell::TabellenModell(QObject* eltern) : QAbstractTableModel(eltern) {}

bool TabellenModell::setzeZeilen(std::vector<std::shared_ptr<const Zeile>> zeilen) {
    if (liste_.istGleich(zeilen)) {
        return false;
    }
    // The old rows live until the last signal has been heard.
    const Zeilenliste alt = std::exchange(liste_, Zeilenliste(std::move(zeilen)));
    const Zeilenabgleich abgleich = Zeilenabgleich::zwischen(alt, liste_);

    // A view does work for each signal, for all its rows as well as for those named. Beyond a few spans it is cheaper
    // to bring all rows into their places at once.
    constexpr std::size_t kHoechstens = 16;
    if (abgleich.umgestellt || abgleich.weg.size() + abgleich.dazu.size() > kHoechstens) {
        gleicheImGanzenAn(abgleich);
    } else {
        gleicheSpannenweiseAn(abgleich);
    }
    melde(abgleich.geaendert);
    return abgleich.umgestellt;
}

void TabellenModell::gleicheSpannenweiseAn(const Zeilenabgleich& abgleich) {
    for (auto spanne = abgleich.weg.rbegin(); spanne != abgleich.weg.rend(); ++spanne) {
        beginRemoveRows({}, spanne->von, spanne->von + spanne->anzahl - 1);
        const auto von = gezeigt_.begin() + spanne->von;
        gezeigt_.erase(von, von + spanne->anzahl);
        endRemoveRows();
    }
    for (const Spanne& spanne : abgleich.dazu) {
        beginInsertRows({}, spanne.von, spanne.von + spanne.anzahl - 1);
        auto ziel = gezeigt_.insert(gezeigt_.begin() + spanne.von, static_cast<std::size_t>(spanne.anzahl),
                                    static_cast<const Zeile*>(nullptr));
        for (int i = 0; i < spanne.anzahl; ++i) {
            *ziel++ = &liste_.zeile(spanne.von + i);
        }
        endInsertRows();
    }
}

void TabellenModell::gleicheImGanzenAn(const Zeilenabgleich& abgleich) {
    // What comes is put at the end, what goes is taken from the end: two signals, however scattered the rows are.
    haengeAn(abgleich.dazu);
    stelleUm(abgleich.weg);
    kuerzeAuf(static_cast<std::size_t>(liste_.anzahl()));
}

void TabellenModell::haengeAn(const std::vector<Spanne>& dazu) {
    std::vector<const Zeile*> neue;
    for (const Spanne& spanne : dazu) {
        for (int i = 0; i < spanne.anzahl; ++i) {
            neue.push_back(&liste_.zeile(spanne.von + i));
        }
    }
    if (!neue.empty()) {
        beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(neue.size()) - 1);
        gezeigt_.insert(gezeigt_.end(), neue.begin(), neue.end());
        endInsertRows();
    }
}

/// Brings the rows of the new list into its order, and those that go behind them.
void TabellenModell::stelleUm(const std::vector<Spanne>& weg) {
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    // Views make their persistent indexes when they hear the signal, so they are asked for after it.
    const QModelIndexList bisher = persistentIndexList();
    const int bleiben = liste_.anzahl();
    std::vector<const Zeile*> geordnet;
    geordnet.reserve(gezeigt_.size());
    for (int stelle = 0; stelle < bleiben; ++stelle) {
        geordnet.push_back(&liste_.zeile(stelle));
    }
    std::vector<int> wegStellen;
    for (const Spanne& spanne : weg) {
        for (int i = 0; i < spanne.anzahl; ++i) {
            wegStellen.push_back(spanne.von + i);
            geordnet.push_back(gezeigt_[static_cast<std::size_t>(spanne.von + i)]);
        }
    }
    QModelIndexList nachher;
    nachher.reserve(bisher.size());
    for (const QModelIndex& index : bisher) {
        int ziel = liste_.stelleVon(zeile(index.row()).kennung());
        if (ziel == Zeilenliste::kKeine) {
            const auto rang = std::lower_bound(wegStellen.begin(), wegStellen.end(), index.row());
            ziel = bleiben + static_cast<int>(rang - wegStellen.begin());
        }
        nachher.push_back(createIndex(ziel, index.column()));
    }
    gezeigt_ = std::move(geordnet);
    changePersistentIndexList(bisher, nachher);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}

void TabellenModell::kuerzeAuf(std::size_t anzahl) {
    if (gezeigt_.size() > anzahl) {
        beginRemoveRows({}, static_cast<int>(anzahl), rowCount() - 1);
        gezeigt_.resize(anzahl);
        endRemoveRows();
    }
}

void TabellenModell::melde(const std::vector<Spanne>& geaendert) {
    for (const Spanne& spanne : geaendert) {
        for (int stelle = spanne.von; stelle < spanne.von + spanne.anzahl; ++stelle) {
            gezeigt_[static_cast<std::size_t>(stelle)] = &liste_.zeile(stelle);
        }
    }
    const auto sage = [&](int von, int bis) { Q_EMIT dataChanged(index(von, 0), index(bis, columnCount() - 1)); };
    // A view repaints what it can see of a span, so one span too long costs less than many.
    constexpr std::size_t kHoechstens = 64;
    if (geaendert.size() > kHoechstens) {
        sage(geaendert.front().von, geaendert.back().von + geaendert.back().anzahl - 1);
    } else {
        for (const Spanne& spanne : geaendert) {
            sage(spanne.von, spanne.von + spanne.anzahl - 1);
        }
    }
}

void TabellenModell::setzeTitel(const QStringList& titel) {
    assert(titel.size() == columnCount());
    titel_ = titel;
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void TabellenModell::setzeSortierung(const std::optional<Vergleich>& vergleich) {
    if (sortierung_ != vergleich) {
        sortierung_ = vergleich;
        Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    }
}

QByteArray TabellenModell::dateiUrl(std::string_view pfad) {
    return "file://" + QByteArray(pfad.data(), static_cast<qsizetype>(pfad.size())).toPercentEncoding("/");
}

int TabellenModell::rowCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : static_cast<int>(gezeigt_.size());
}

int TabellenModell::columnCount(const QModelIndex& eltern) const {
    return eltern.isValid() ? 0 : static_cast<int>(kSpalten.size());
}

QVariant TabellenModell::data(const QModelIndex& index, int rolle) const {
    if (!index.isValid()) {
        return {};
    }
    const Spalte spalte = kSpalten[static_cast<std::size_t>(index.column())].spalte;
    switch (rolle) {
        case Qt::DisplayRole:
            return text(zeile(index.row()).text(spalte));
        case Qt::ToolTipRole:
            return text(zeile(index.row()).tooltip(spalte));
        case Qt::AccessibleTextRole:
            return text(zeile(index.row()).vorleseText(spalte));
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(ausrichtung(spalte));
        default:
            return {};
    }
}

QVariant TabellenModell::headerData(int stelle, Qt::Orientation richtung, int rolle) const {
    if (richtung != Qt::Horizontal || stelle < 0 || stelle >= columnCount()) {
        return QAbstractTableModel::headerData(stelle, richtung, rolle);
    }
    const Spalte spalte = kSpalten[static_cast<std::size_t>(stelle)].spalte;
    switch (rolle) {
        case Qt::DisplayRole:
            return titel_.value(stelle);
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(ausrichtung(spalte));
        case Qt::AccessibleDescriptionRole:
            if (sortierung_ && sortierung_->spalte == spalte) {
                return sortierung_->absteigend ? QStringLiteral("absteigend sortiert")
                                               : QStringLiteral("aufsteigend sortiert");
            }
            return {};
        default:
            return {};
    }
}

Qt::ItemFlags TabellenModell::flags(const QModelIndex& index) const {
    constexpr auto kZeile = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    return index.isValid() ? kZeile : Qt::NoItemFlags;
}

QStringList TabellenModell::mimeTypes() const {
    return {QStringLiteral("text/uri-list")};
}

QMimeData* TabellenModell::mimeData(const QModelIndexList& indexe) const {
    std::vector<int> reihen;
    reihen.reserve(static_cast<std::size_t>(indexe.size()));
    for (const QModelIndex& index : indexe) {
        reihen.push_back(index.row());
    }
    std::sort(reihen.begin(), reihen.end());
    reihen.erase(std::unique(reihen.begin(), reihen.end()), reihen.end());
    if (reihen.empty()) {
        return nullptr;
    }
    QList<QUrl> adressen;
    adressen.reserve(static_cast<qsizetype>(reihen.size()));
    for (const int reihe : reihen) {
        adressen.push_back(QUrl::fromEncoded(dateiUrl(zeile(reihe).eintrag()->pfad), QUrl::StrictMode));
    }
    auto daten = std::make_unique<QMimeData>();
    daten->setUrls(adressen);
    return daten.release();
}

}  // namespace spurkiste
