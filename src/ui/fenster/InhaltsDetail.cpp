// What the window shows of the one selected record, and the change of its sport.

#include "ui/fenster/InhaltsAnsicht.h"

namespace spurkiste {

void InhaltsAnsicht::verbindeDetail() {
    const auto setze = [this](const Eintrag& eintrag, GpxSportart art) { bibliothek_.setzeSportart(art, *eintrag); };
    connect(detail_, &DetailAnsicht::sportGewaehlt, this, setze);
    connect(kopf_, &Kopf::sportGewaehlt, this, setze);
    connect(detail_, &DetailAnsicht::zeigenGewuenscht, this,
            [this](const Eintrag& eintrag) { zeigeImDateimanager(eintrag->pfad); });
    connect(tabelle_, &TabellenAnsicht::sportmenueGewuenscht, this,
            [this, setze](const std::string& pfad, const QRect& kapsel) {
                if (const Eintrag eintrag = eintragMit(pfad)) {
                    SportMenue::oeffne(*eintrag, tabelle_, kapsel,
                                       [setze, eintrag](GpxSportart art) { setze(eintrag, art); });
                }
            });
}

}  // namespace spurkiste
