#pragma once

#include <cstddef>

#include "ui/fenster/Blatt.h"
#include "ui/teile/Schild.h"

namespace spurkiste {

/// The sheet over the last window when it is to be closed while files are still being copied. Rejecting it keeps the
/// window open. GUI thread.
class Kopierblatt final : public Blatt {
    Q_OBJECT

  public:
    explicit Kopierblatt(QWidget* eltern);

    /// How many files are still to be copied.
    void zeige(std::size_t anzahl);

  Q_SIGNALS:
    /// The user does not want the rest of the copies.
    void abbruchGewuenscht();

  private:
    Schild* anzahl_;
};

}  // namespace spurkiste
