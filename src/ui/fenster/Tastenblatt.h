#pragma once

#include "ui/fenster/Blatt.h"

namespace spurkiste {

/// The sheet that lists all that can be done by keys. GUI thread.
class Tastenblatt final : public Blatt {
    Q_OBJECT

  public:
    explicit Tastenblatt(QWidget* eltern);

  Q_SIGNALS:
    /// The user wants to know of the program itself; the sheet has closed.
    void ueberGewuenscht();
};

}  // namespace spurkiste
