#pragma once

#include <QWidget>

#include "ui/detail/Schild.h"

namespace spurkiste {

/// The header above the table: the application's name on the left, the number and the length of the shown routes on
/// the right.
class Kopf final : public QWidget {
    Q_OBJECT

  public:
    explicit Kopf(QWidget* eltern = nullptr);

    /// The caption ("7 / 41 ROUTEN") and the total ("74,2 km").
    void zeige(const QString& zahl, const QString& summe);

    /// Takes the fonts anew, after the language changed.
    void kleide();

  private:
    Schild* oben_;
    Schild* titel_;
    Schild* zahl_;
    Schild* summe_;
};

}  // namespace spurkiste
