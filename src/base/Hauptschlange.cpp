#include "base/Hauptschlange.h"

#include <utility>

namespace spurkiste {

void Hauptschlange::fuehreAus(Aufgabe aufgabe) {
    schlange_.stelleEin(std::move(aufgabe));
}

void Hauptschlange::laufe() {
    while (const auto aufgabe = schlange_.nimm()) {
        (*aufgabe)();
    }
}

void Hauptschlange::beende() {
    schlange_.schliesse();
}

}  // namespace spurkiste
