#include "sicht/Zahlentexte.h"

namespace spurkiste {

void Zahlentexte::nimm(const Zeile& zeile) {
    for (const Spaltenangaben& spalte : kSpalten) {
        if (istZahl(spalte.spalte)) {
            const auto text = zeile.text(spalte.spalte);
            auto& laengen = laengen_[static_cast<std::size_t>(*spalte.spalte)];
            if (laengen.size() <= text.size()) {
                laengen.resize(text.size() + 1);
            }
            Laenge& laenge = laengen[text.size()];
            if (laenge.anzahl++ == 0) {
                laenge.beispiel = text;
            }
        }
    }
}

void Zahlentexte::lasse(const Zeile& zeile) {
    for (const Spaltenangaben& spalte : kSpalten) {
        if (istZahl(spalte.spalte)) {
            --laengen_[static_cast<std::size_t>(*spalte.spalte)][zeile.text(spalte.spalte).size()].anzahl;
        }
    }
}

std::vector<std::u16string> Zahlentexte::beispiele(Spalte spalte) const {
    std::vector<std::u16string> ergebnis;
    for (const Laenge& laenge : laengen_[static_cast<std::size_t>(spalte)]) {
        if (laenge.anzahl > 0) {
            ergebnis.push_back(laenge.beispiel);
        }
    }
    return ergebnis;
}

}  // namespace spurkiste
