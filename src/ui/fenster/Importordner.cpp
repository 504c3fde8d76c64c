#include "ui/fenster/Importordner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

namespace spurkiste::importordner {

namespace {

constexpr std::string_view kImportOrdner = "importOrdner";

}  // namespace

QString lies(const Einstellungen& einstellungen) {
    const QString letzter = QFile::decodeName(einstellungen.lies(kImportOrdner).value_or("").c_str());
    for (const QString& ordner : {letzter, QStandardPaths::writableLocation(QStandardPaths::DownloadLocation)}) {
        if (!ordner.isEmpty() && QFileInfo(ordner).isDir()) {
            return ordner;
        }
    }
    return QDir::homePath();
}

void merke(Einstellungen& einstellungen, const QStringList& dateien) {
    if (!dateien.isEmpty()) {
        const QString ordner = QFileInfo(dateien.constFirst()).absolutePath();
        einstellungen.schreibe(kImportOrdner, QFile::encodeName(ordner).toStdString());
    }
}

}  // namespace spurkiste::importordner
