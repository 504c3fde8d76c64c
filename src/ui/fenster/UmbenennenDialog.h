#pragma once

#include <QLineEdit>
#include <QString>
#include <functional>

#include "track/GpxMetadaten.h"
#include "ui/fenster/Blatt.h"

namespace spurkiste {

/// The sheet in which a file gets another name. It knows no rules for names but that a blank one is none. GUI thread.
class UmbenennenDialog final : public Blatt {
    Q_OBJECT

  public:
    /// `aktion` receives the name as it was typed.
    UmbenennenDialog(const Eintrag& eintrag, std::function<void(const QString&)> aktion, QWidget* eltern);

  private:
    void bestaetige();
    [[nodiscard]] bool istBenannt() const;

    std::function<void(const QString&)> aktion_;
    QLineEdit* name_;
    Knopf* umbenennen_;
};

}  // namespace spurkiste
