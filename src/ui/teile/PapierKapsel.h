#pragma once

#include <string>

#include "ui/teile/Knopf.h"

namespace spurkiste {

/// The capsule of a filter: an icon, the chosen value, a double chevron; gold while its filter is active.
class PapierKapsel final : public Knopf {
    Q_OBJECT

  public:
    explicit PapierKapsel(const std::string& symbol, QWidget* eltern = nullptr);

    /// Whether the filter is set to something other than its neutral value.
    void setzeAktiv(bool aktiv);

    /// Takes the font anew, after the language changed.
    void kleide();

  private:
    bool aktiv_ = false;
};

}  // namespace spurkiste
