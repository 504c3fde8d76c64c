#pragma once

#include <QMimeData>
#include <memory>
#include <vector>

#include "ui/tabelle/TabellenModell.h"

namespace spurkiste::zeilenkopie {

/// How file managers call copied files: a word on the first line, then an address a line.
inline constexpr auto kDateimanager = "x-special/gnome-copied-files";

/// Rows of the table as other programs take them from the clipboard: for a file manager their files, for a spreadsheet
/// or a text the columns as they are shown, separated by tabs, a line for the titles and one for each row. `reihen` are
/// positions in the model, at least one. GUI thread.
[[nodiscard]] std::unique_ptr<QMimeData> mach(const TabellenModell& modell, const std::vector<int>& reihen);

}  // namespace spurkiste::zeilenkopie
