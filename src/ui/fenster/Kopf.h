#pragma once

#include <QWidget>

#include "ui/teile/Schild.h"
#include "ui/teile/SportMenue.h"

namespace spurkiste {

/// The header above the table: the application's name on the left, the number and the length of the shown routes on
/// the right.
class Kopf final : public QWidget {
    Q_OBJECT

  public:
    explicit Kopf(QWidget* eltern = nullptr);

    /// The caption ("7 / 41 ROUTEN") and the total ("74,2 km").
    void zeige(const QString& zahl, const QString& summe);

    /// Shows the sport of the one selected record, to be changed; null shows nothing.
    void zeigeSport(const Eintrag& eintrag);

    /// Takes texts and fonts anew, after the language changed.
    void kleide();

  Q_SIGNALS:
    /// A sport was chosen for the record shown.
    void sportGewaehlt(const spurkiste::Eintrag& eintrag, spurkiste::GpxSportart art);

  private:
    Schild* oben_;
    Schild* titel_;
    SportMenue* sport_;
    Eintrag eintrag_;
    Schild* zahl_;
    Schild* summe_;
};

}  // namespace spurkiste
