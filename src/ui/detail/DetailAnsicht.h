#pragma once

#include <QScrollArea>
#include <QStackedWidget>
#include <QWidget>
#include <string>
#include <vector>

#include "track/GpxMetadaten.h"
#include "ui/detail/DetailKarte.h"
#include "ui/detail/Kachel.h"
#include "ui/detail/SkizzenAnsicht.h"
#include "ui/detail/Titelzeile.h"
#include "ui/teile/Knopf.h"
#include "ui/teile/Leerbild.h"
#include "ui/teile/Rollbalken.h"
#include "ui/teile/SportMenue.h"

namespace spurkiste {

/// The pane on the right: everything that is known about one record, or an invitation to select one. It scrolls when it
/// is too low, stays where it is when the same file's record is published anew, and begins at the top for another file.
/// It has no ground of its own. GUI thread.
class DetailAnsicht final : public QWidget {
    Q_OBJECT

  public:
    explicit DetailAnsicht(QWidget* eltern = nullptr);

    /// Shows a record; null shows the invitation. `lesefehler`, empty when there is none, is why its file could not be
    /// read to the end. Cheap when it is what is shown already.
    void zeige(const Eintrag& eintrag, const std::string& lesefehler = {});
    /// Takes texts and fonts anew, after the language changed.
    void kleide();

  Q_SIGNALS:
    /// A sport was chosen for the record shown.
    void sportGewaehlt(const spurkiste::Eintrag& eintrag, spurkiste::GpxSportart art);
    /// The record's file is to be shown in the file manager.
    void zeigenGewuenscht(const spurkiste::Eintrag& eintrag);

  protected:
    void resizeEvent(QResizeEvent* ereignis) override;

  private:
    class Inhalt;

    void ordneAn();
    void fuelle();

    Eintrag eintrag_;
    std::string lesefehler_;
    QStackedWidget* stapel_;
    Leerbild* leer_;
    QScrollArea* rolle_;
    Rollbalken* balken_;
    Inhalt* inhalt_;
    Schild* ueberzeile_;
    Titelzeile* titel_;
    QLabel* datum_;
    SkizzenAnsicht* skizze_;
    std::vector<Kachel*> kacheln_;
    DetailKarte* einordnung_;
    SportMenue* sport_;
    DetailKarte* route_;
    DetailKarte* datei_;
    Knopf* zeigen_;
};

}  // namespace spurkiste
