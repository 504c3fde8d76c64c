#include "cli/Ausgabe.h"

#include <array>
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

}  // namespace

void alsJson(const Bibliothek::Eintraege& eintraege, const Senke& senke) {
    std::string stueck;
    std::string_view davor = "[";
    for (const Eintrag& eintrag : eintraege) {
        stueck.assign(davor);
        // The reader lets nothing into a record that is not finite, so with odd bytes replaced every record has a form.
        (void)GpxMetadatenJson::haengeAn(stueck, *eintrag, GpxMetadatenJson::Fremdbytes::ersetze);
        senke(text::jsonGezeigt(stueck));
        davor = ",\n";
    }
    senke(eintraege.empty() ? "[]\n" : "]\n");
}

void alsTabelle(const Bibliothek::Eintraege& eintraege, const Ansichtstexte& texte, std::optional<std::size_t> breite,
                bool farben, const Senke& senke) {
    Tabelle tabelle;
    for (const Spaltenangaben& spalte : kSpalten) {
        using enum Tabelle::Ausrichtung;
        tabelle.spalten.push_back({texte.spalten[static_cast<std::size_t>(*spalte.spalte)],
                                   spalte.seite == Seite::rechts ? rechts : links, spalte.terminal->mindestens,
                                   spalte.terminal->rang});
    }
    tabelle.zeilen.reserve(eintraege.size());
    double summe = 0.0;
    for (const Eintrag& eintrag : eintraege) {
        const auto geschrieben = GpxSportart::aus(eintrag->sportRoh);
        const Zeile zeile(eintrag, 0, geschrieben, texte.sportAnzeige(*eintrag, geschrieben));
        auto& zellen = tabelle.zeilen.emplace_back();
        zellen.reserve(kSpalten.size());
        for (const Spaltenangaben& spalte : kSpalten) {
            zellen.push_back({text::utf8(zeile.text(spalte.spalte)), ton(zeile.farbe(spalte.spalte))});
        }
        const double weiter = summe + eintrag->streckeMeter;
        summe = std::isfinite(weiter) ? weiter : summe;
    }
    senke(tabelle.text(breite, farben));
    senke("\n" + std::to_string(eintraege.size()) + " " + texte.dateien + "  " + Formate::strecke(summe) + " " +
          texte.gesamt + "\n");
}

}  // namespace spurkiste::ausgabe
