#pragma once

#include <string>
#include <vector>

#include "base/Ausfuehrer.h"
#include "platform/Papierkorb.h"

namespace spurkiste {

/// The trash that all freedesktop.org desktops share, by way of GIO: file managers show what lies in it and can put it
/// back. Some file systems have none, which then is the error.
class GioPapierkorb final : public Papierkorb {
  public:
    /// A request is one task for `arbeiter`, which must outlive this object.
    explicit GioPapierkorb(Ausfuehrer& arbeiter) : arbeiter_(arbeiter) {}

    /// Moves the files one after the other; of several errors the first one's description is told.
    void verschiebe(std::vector<std::string> pfade, Fertig fertig) override;

    void holeZurueck(const Fund& fund) const override;

  private:
    Ausfuehrer& arbeiter_;
};

}  // namespace spurkiste
