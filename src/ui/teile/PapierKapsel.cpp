#include "ui/teile/PapierKapsel.h"

#include "ui/teile/KistePapier.h"

namespace spurkiste {

PapierKapsel::PapierKapsel(const std::string& symbol, QWidget* eltern) : Knopf(eltern) {
    setzeSymbole(symbol, "chevron.up.chevron.down");
    setzeAufklappend();
    kleide();
}

void PapierKapsel::setzeAktiv(bool aktiv) {
    if (aktiv_ != aktiv) {
        aktiv_ = aktiv;
        kleide();
    }
}

void PapierKapsel::kleide() {
    const auto mit = &KistePapier::mitDeckkraft;
    Aussehen aussehen;
    aussehen.radius = 15;
    aussehen.symbolKasten = 15.5;
    aussehen.schlussKasten = 13;
    aussehen.schlussAbstand = 4;
    aussehen.schlussUeberstand = 2;
    const QColor farbe = aktiv_ ? KistePapier::tinte : KistePapier::tinteLeise;
    aussehen.textFarbe = farbe;
    aussehen.symbolFarbe = farbe;
    aussehen.schlussFarbe = mit(farbe, 0.8);
    aussehen.grund = aktiv_ ? mit(KistePapier::gold, 0.17) : mit(KistePapier::kapsel, 0.72);
    aussehen.rahmen = mit(aktiv_ ? KistePapier::gold : KistePapier::linie, 0.72);
    aussehen.ueberfahren = mit(KistePapier::tinte, 0.028);
    aussehen.gedrueckt = mit(KistePapier::tinte, 0.05);
    setzeAussehen(aussehen);
}

}  // namespace spurkiste
