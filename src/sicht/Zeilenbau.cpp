#include "sicht/Zeilenbau.h"

#include <utility>

namespace spurkiste {

Zeilenbau::Zeilenbau(const Werkstatt& werkstatt, std::function<void()> neue)
    : werkstatt_(werkstatt), neue_(std::move(neue)) {
    if (werkstatt.hier != nullptr && werkstatt.dort != nullptr) {
        rueckweg_.emplace(*werkstatt.hier);
    }
}

void Zeilenbau::gleicheAb(const std::vector<Eintrag>& eintraege, const Ansichtstexte& texte,
                          const Sortierung& sortierung) {
    if (baut_) {
        return;  // what has changed meanwhile is looked at when it is done
    }
    if (!rueckweg_ || !speicher_->wirdLangsam(eintraege, texte)) {
        speicher_->gleicheAb(eintraege, texte);
        return;
    }
    baut_ = true;
    // What the task holds is taken apart where it ran.
    const auto erbe = std::make_shared<Zeilenspeicher::Erbe>(speicher_->erbe());
    const auto liste = std::make_shared<std::vector<Eintrag>>(eintraege);
    rueckweg_->hinUndZurueck(
        *werkstatt_.dort,
        [erbe, liste, texte, sortierung, helfer = werkstatt_.helfer, anzahl = werkstatt_.anzahlHelfer] {
            return std::make_shared<Zeilenspeicher>(Zeilenspeicher::neuGebaut(
                std::exchange(*erbe, {}), std::exchange(*liste, {}), texte, sortierung, helfer, anzahl));
        },
        [this](const std::shared_ptr<Zeilenspeicher>& neuer) { lande(neuer); });
}

void Zeilenbau::lande(const std::shared_ptr<Zeilenspeicher>& neuer) {
    alter_ = std::exchange(speicher_, neuer);
    baut_ = false;
    neue_();
}

void Zeilenbau::raeumeAuf() {
    if (alter_) {
        werkstatt_.dort->fuehreAus([altes = std::exchange(alter_, nullptr)] {});
    }
}

}  // namespace spurkiste
