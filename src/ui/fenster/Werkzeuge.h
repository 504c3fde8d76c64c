#pragma once

#include <QWidget>
#include <string>

#include "platform/Einstellungen.h"
#include "ui/teile/Knopf.h"
#include "ui/teile/Schild.h"
#include "ui/teile/Suchfeld.h"

namespace spurkiste {

/// The row at the top of the window: title, the folder's name, the four actions, the search field.
class Werkzeuge final : public QWidget {
    Q_OBJECT

  public:
    /// `einstellungen` says which language is chosen; must outlive the row.
    explicit Werkzeuge(const Einstellungen& einstellungen, QWidget* eltern = nullptr);

    [[nodiscard]] Suchfeld& suchfeld() const { return *suchfeld_; }

    /// The library folder's full path; its last component is shown.
    void zeigeOrdner(const std::string& pfad);
    /// Takes texts and fonts anew, after the language changed.
    void kleide();
    /// The width of the column under the search field, which keeps to it.
    void richteSpalteAus(int breite);

  Q_SIGNALS:
    void importGewuenscht();
    void ordnerwechselGewuenscht();
    void neuladenGewuenscht();
    /// A language was chosen in the menu: its code, or "system".
    void spracheGewaehlt(const QString& code);
    /// The list of shortcuts is wanted.
    void tastenGewuenscht();
    /// The user wants to know what the program is.
    void ueberGewuenscht();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;

  private:
    void oeffneSprachmenue();

    const Einstellungen& einstellungen_;
    Schild* titel_;
    Schild* ordner_;
    Knopf* import_;
    Knopf* ordnerwechsel_;
    Knopf* neuladen_;
    Knopf* sprache_;
    Suchfeld* suchfeld_;
};

}  // namespace spurkiste
