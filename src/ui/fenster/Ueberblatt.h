#pragma once

#include "ui/fenster/Blatt.h"

namespace spurkiste {

/// The sheet that says what the program is: its version, and under which licences it, what it contains and what it uses
/// may be passed on. GUI thread.
class Ueberblatt final : public Blatt {
    Q_OBJECT

  public:
    explicit Ueberblatt(QWidget* eltern);
};

}  // namespace spurkiste
