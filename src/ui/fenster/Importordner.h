#pragma once

#include <QString>
#include <QStringList>

#include "platform/Einstellungen.h"

/// Where the chooser of files to import begins. GUI thread.
namespace spurkiste::importordner {

/// The folder of the last import, else that of downloads, else the user's own: the first that is there.
[[nodiscard]] QString lies(const Einstellungen& einstellungen);

/// Remembers the folder of chosen files, the first of which decides; nothing happens without any.
void merke(Einstellungen& einstellungen, const QStringList& dateien);

}  // namespace spurkiste::importordner
