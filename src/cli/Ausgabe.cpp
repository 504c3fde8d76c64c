#include "cli/Ausgabe.h"

#include <cmath>
#include <string>

#include "base/Text.h"
#include "cli/Tabelle.h"
#include "sicht/Formate.h"
#include "sicht/Zeile.h"
#include "track/GpxMetadatenJson.h"

namespace spurkiste::ausgabe {

namespace {

Tabelle::Ton ton(Schriftfarbe farbe) {
    switch (farbe) {
        case Schriftfarbe::tinteLeise:
            return Tabelle::Ton::leise;
        case Schriftfarbe::gruen:
            return Tabelle::Ton::gut;
        case Schriftfarbe::tinte:
            break;
    }
    return Tabelle::Ton::ruhig;
}

Tabelle::Spalte gestalte(Spalte spalte, const std::string& titel) {
    using enum Tabelle::Ausrichtung;
    switch (spalte) {
        case Spalte::name:
            return {titel, links, 14, 0};
        case Spalte::datum:
            return {titel, links, std::nullopt, 9};
        case Spalte::sport:
            return {titel, links, 8, 6};
        case Spalte::laenge:
            return {titel, rechts, std::nullopt, 10};
        case Spalte::zeit:
            return {titel, rechts, std::nullopt, 8};
        case Spalte::anstieg:
            return {titel, rechts, std::nullopt, 7};
        case Spalte::punkte:
            return {titel, rechts, std::nullopt, 1};
        case Spalte::ghost:
            return {titel, links, std::nullopt, 2};
        case Spalte::art:
            return {titel, links, std::nullopt, 3};
        case Spalte::start:
            return {titel, links, 8, 5};
        case Spalte::ziel:
            return {titel, links, 8, 4};
    }
    return {titel, links, std::nullopt, 0};
}

}  // namespace

void alsJson(const Bibliothek::Eintraege& eintraege, const Senke& senke) {
    std::string stueck;
    std::string_view davor = "[";
    for (const Eintrag& eintrag : eintraege) {
        stueck.assign(davor);
        // The reader lets nothing into a record that is not finite, so with odd bytes replaced every record has a form.
        (void)GpxMetadatenJson::haengeAn(stueck, *eintrag, GpxMetadatenJson::Fremdbytes::ersetze);
        senke(stueck);
        davor = ",\n";
    }
    senke(eintraege.empty() ? "[]\n" : "]\n");
}

void alsTabelle(const Bibliothek::Eintraege& eintraege, const Ansichtstexte& texte, std::optional<std::size_t> breite,
                bool farben, const Senke& senke) {
    Tabelle tabelle;
    for (const Spalte spalte : kSpalten) {
        tabelle.spalten.push_back(gestalte(spalte, texte.spalten[static_cast<std::size_t>(spalte)]));
    }
    tabelle.zeilen.reserve(eintraege.size());
    double summe = 0.0;
    for (const Eintrag& eintrag : eintraege) {
        const auto geschrieben = GpxSportart::aus(eintrag->sportRoh);
        const Zeile zeile(eintrag, 0, geschrieben, texte.sportAnzeige(*eintrag, geschrieben));
        auto& zellen = tabelle.zeilen.emplace_back();
        zellen.reserve(kSpalten.size());
        for (const Spalte spalte : kSpalten) {
            zellen.push_back({text::utf8(zeile.text(spalte)), ton(zeile.farbe(spalte))});
        }
        const double weiter = summe + eintrag->streckeMeter;
        summe = std::isfinite(weiter) ? weiter : summe;
    }
    senke(tabelle.text(breite, farben));
    senke("\n" + std::to_string(eintraege.size()) + " " + texte.dateien + "  " + Formate::strecke(summe) + " " +
          texte.gesamt + "\n");
}

}  // namespace spurkiste::ausgabe
