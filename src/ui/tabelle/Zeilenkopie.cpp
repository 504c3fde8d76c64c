#include "ui/tabelle/Zeilenkopie.h"

#include <QStringList>

namespace spurkiste::zeilenkopie {

namespace {

/// What separates cells and lines cannot stand in a cell.
QString alsZelle(QString text) {
    for (QChar& zeichen : text) {
        if (zeichen == QLatin1Char('\t') || zeichen == QLatin1Char('\n') || zeichen == QLatin1Char('\r')) {
            zeichen = QLatin1Char(' ');
        }
    }
    return text;
}

}  // namespace

std::unique_ptr<QMimeData> mach(const TabellenModell& modell, const std::vector<int>& reihen) {
    const auto zeile = [&](const auto& zelle) {
        QStringList zellen;
        for (int spalte = 0; spalte < modell.columnCount(); ++spalte) {
            zellen << alsZelle(zelle(spalte).toString());
        }
        return zellen.join(QLatin1Char('\t')) + QLatin1Char('\n');
    };
    QModelIndexList indexe;
    QString text = zeile([&](int spalte) { return modell.headerData(spalte, Qt::Horizontal, Qt::DisplayRole); });
    QByteArray kopieren = "copy";  // not to be moved
    for (const int reihe : reihen) {
        indexe.push_back(modell.index(reihe, 0));
        text += zeile([&](int spalte) { return modell.data(modell.index(reihe, spalte), Qt::DisplayRole); });
        kopieren += '\n' + TabellenModell::dateiUrl(modell.zeile(reihe).eintrag()->pfad);
    }
    std::unique_ptr<QMimeData> daten(modell.mimeData(indexe));
    daten->setData(QLatin1String(kDateimanager), kopieren);
    daten->setText(text);
    return daten;
}

}  // namespace spurkiste::zeilenkopie
