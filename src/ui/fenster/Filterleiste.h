#pragma once

#include <QAbstractScrollArea>
#include <QScrollArea>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

#include "sicht/Ansichtsbild.h"
#include "sicht/Ansichtstexte.h"
#include "sicht/Ansichtszustand.h"
#include "ui/teile/PapierKapsel.h"

namespace spurkiste {

/// The bar of the filters: a capsule each, with the choices that lead somewhere, and the button that takes all of
/// them back. Where it is too narrow the capsules scroll sideways, with the wheel and with the keyboard focus, and fade
/// where there are more; the button is always in sight.
class Filterleiste final : public QWidget {
    Q_OBJECT

  public:
    /// A change of the view state that the user asked for.
    using Aenderung = std::function<void(Ansichtszustand&)>;

    /// `aendere` carries a change out and shows what comes of it.
    explicit Filterleiste(std::function<void(const Aenderung&)> aendere, QWidget* eltern = nullptr);

    /// Shows the choices of the picture and the values of the state.
    void zeige(const Ansichtsbild& bild, const Ansichtszustand& zustand, const Ansichtstexte& texte);
    /// Takes the fonts anew, after the language changed.
    void kleide();

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;

  private:
    /// What one capsule offers: everything, or one of the options; and which of them is chosen, from 0.
    struct Angebot {
        std::string alle;
        std::vector<std::string> optionen;
        int gewaehlt = 0;

        [[nodiscard]] QStringList texte() const;
    };

    void oeffne(const Filterangaben& filter);
    void beschrifte(const Filterangaben& filter);

    std::function<void(const Aenderung&)> aendere_;
    QScrollArea* rolle_;
    JeFilter<PapierKapsel*> kapseln_;
    JeFilter<Angebot> angebote_;
    Knopf* zurueck_;
};

}  // namespace spurkiste
