#include "library/Verlaufstexte.h"

#include "base/Text.h"

namespace spurkiste::verlaufstexte {

namespace {

std::string name(const std::string& pfad) {
    return "„" + text::einzeilig(dateien::ohneEndung(dateien::letzterTeil(pfad))) + "“";
}

std::string dateienOder(const std::string& pfad, std::size_t anzahl) {
    return anzahl == 1 ? name(pfad) : std::to_string(anzahl) + " Dateien";
}

/// The sentence about each kind of deed.
struct Satz {
    Richtung richtung;
    std::size_t anzahl;

    std::string operator()(const Umzug& umzug) const {
        return anzahl == 1 ? name(umzug.von) + " heißt wieder " + name(umzug.nach)
                           : std::to_string(anzahl) + " Dateien heißen wieder wie zuvor";
    }
    std::string operator()(const Umschrift& umschrift) const {
        return "Sportart von " + dateienOder(umschrift.pfad, anzahl) +
               (richtung == Richtung::zurueck ? " zurückgenommen" : " wieder gesetzt");
    }
    std::string operator()(const Wegwurf& wegwurf) const {
        return dateienOder(wegwurf.pfad, anzahl) + " in den Papierkorb gelegt";
    }
    std::string operator()(const Rueckholung& holung) const {
        return dateienOder(holung.fund.pfad, anzahl) + " aus dem Papierkorb zurückgeholt";
    }
};

}  // namespace

std::string geaendert() {
    return " hat sich seitdem geändert";
}

std::string verschwunden() {
    return " ist nicht mehr da";
}

std::string gescheitert(const std::string& warum) {
    return ": " + warum;
}

std::string getan(const Tat& eine, Richtung richtung, std::size_t anzahl) {
    return std::visit(Satz{richtung, anzahl}, eine);
}

std::string nichts(Richtung richtung) {
    return richtung == Richtung::zurueck ? "Es gibt nichts zurückzunehmen" : "Es gibt nichts zu wiederholen";
}

std::string nichtGetan(Richtung richtung, const std::vector<Fehlschlag>& fehlschlaege) {
    const std::string anzahl =
        fehlschlaege.size() > 1 ? std::to_string(fehlschlaege.size()) + " Dateien, zuletzt " : "";
    return (richtung == Richtung::zurueck ? "Nicht zurückgenommen: " : "Nicht wiederholt: ") + anzahl +
           name(fehlschlaege.back().pfad) + fehlschlaege.back().grund;
}

}  // namespace spurkiste::verlaufstexte
