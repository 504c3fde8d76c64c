#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>
#include <optional>
#include <vector>

namespace spurkiste {

/// What the window itself does at a key.
enum class Fenstertat {
    suchen,
    sucheLeeren,
    importieren,
    einfuegen,
    neuLaden,
    umbenennen,
    wegwerfen,
    rueckgaengig,
    wiederholen,
    kopieren,
    zeilenmenue,
    neuesFenster,
    schliessen,
    beenden,
    tastenZeigen,
};

/// Where a key does it.
enum class Tastenort {
    fenster,
    panel,  ///< in the panel; the table, which has rows to think of, binds the same key by itself
};

/// One thing to be done by keys.
struct Taste {
    QString wozu;
    std::optional<Fenstertat> tat;  ///< absent: other parts of the window see to it
    QList<QKeySequence> folgen;     ///< any of which does it
    QList<QKeySequence> weitere{};  ///< that do it, too, where other parts see to it
    Tastenort ort = Tastenort::fenster;
};

/// Things that belong together, under a title.
struct Tastengruppe {
    QString titel;
    std::vector<Taste> tasten;
};

/// All that can be done by keys: the list that the user is shown, and what the window binds. GUI thread.
[[nodiscard]] const std::vector<Tastengruppe>& tasten();

}  // namespace spurkiste
