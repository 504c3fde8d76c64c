#include "cli/Pruefe.h"

#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "cli/Dateiauswahl.h"
#include "track/GpxLeser.h"
#include "track/JsonText.h"

namespace spurkiste {

namespace {

using Art = GpxBefund::Art;

/// For machines: how the kinds are called, which stays.
std::string_view name(Art art) {
    switch (art) {
        case Art::keinPunkt:
            return "keinPunkt";
        case Art::abgebrochen:
            return "abgebrochen";
        case Art::punktVerworfen:
            return "punktVerworfen";
        case Art::punktMitPraefix:
            return "punktMitPraefix";
        case Art::zeitUnlesbar:
            return "zeitUnlesbar";
        case Art::hoeheUnlesbar:
            return "hoeheUnlesbar";
    }
    return {};
}

/// For people: why a file breaks off.
std::string_view grund(XmlFehler fehler) {
    switch (fehler) {
        case XmlFehler::endeFehlt:
            return "das Ende fehlt";
        case XmlFehler::falschesEnde:
            return "ein Element wird nicht oder falsch geschlossen";
        case XmlFehler::unbekannteEntitaet:
            return "eine unbekannte Entität";
        case XmlFehler::rest:
            return "nach dem Ende folgt noch etwas";
        case XmlFehler::zuViel:
            return "das Dokument bläht sich auf";
        case XmlFehler::falschesZeichen:
        case XmlFehler::keiner:
            break;
    }
    return "kein gültiges XML, oft ein einzelnes & oder eine falsche Kodierung";
}

std::string satz(const GpxBefund& befund) {
    const std::string anzahl = std::to_string(befund.anzahl);
    const std::string zeile = std::to_string(befund.zeile);
    const auto gezaehlt = [&](const char* einer, const char* viele) {
        return anzahl + ' ' + (befund.anzahl == 1 ? einer : viele) +
               (befund.anzahl == 1 ? " (Zeile " : " (zuerst in Zeile ") + zeile + ")";
    };
    switch (befund.art) {
        case Art::keinPunkt:
            return "kein Punkt in Track oder Route";
        case Art::abgebrochen:
            return "bricht in Zeile " + zeile + " ab: " + std::string(grund(befund.fehler));
        case Art::punktVerworfen:
            return gezaehlt("Punkt ohne brauchbare Koordinate", "Punkte ohne brauchbare Koordinate");
        case Art::punktMitPraefix:
            return gezaehlt("Punkt mit Präfix, nicht gelesen", "Punkte mit Präfix, nicht gelesen");
        case Art::zeitUnlesbar:
            return gezaehlt("unlesbare Zeit", "unlesbare Zeiten");
        case Art::hoeheUnlesbar:
            return gezaehlt("unlesbare Höhe", "unlesbare Höhen");
    }
    return {};
}

void haengeAn(std::string& json, const GpxBefund& befund) {
    json.append(R"({"art":)");
    JsonText::haengeAn(json, name(befund.art));
    json.append(R"(,"anzahl":)").append(std::to_string(befund.anzahl));
    json.append(R"(,"zeile":)").append(std::to_string(befund.zeile));
    if (befund.art == Art::abgebrochen) {
        json.append(R"(,"grund":)");
        JsonText::haengeAn(json, grund(befund.fehler));
    }
    json.append("}");
}

/// Why a path could not be read as a file.
std::string lesehindernis(const std::error_code& fehler) {
    if (fehler == std::errc::is_a_directory) {
        return "ein Ordner";
    }
    return fehler == std::errc::invalid_argument ? "keine gewöhnliche Datei" : fehler.message();
}

std::string anzahlDateien(std::size_t anzahl) {
    return std::to_string(anzahl) + (anzahl == 1 ? " Datei" : " Dateien");
}

}  // namespace

std::vector<Pruefergebnis> pruefeDateien(const std::vector<std::string>& worte) {
    std::vector<Pruefergebnis> ergebnisse;
    for (auto& [pfad, fehler] : dateiauswahl::sammle(worte)) {
        ergebnisse.push_back({std::move(pfad), std::nullopt, fehler});
    }
    dateiauswahl::fuerAlle(ergebnisse.size(), [&](std::size_t i) {
        Pruefergebnis& ergebnis = ergebnisse[i];
        if (ergebnis.fehler) {
            return;
        }
        ergebnis.befunde = GpxLeser::befunde(ergebnis.datei, ergebnis.fehler);
        if (ergebnis.befunde) {
            const auto angaben = dateien::angaben(ergebnis.datei, ergebnis.fehler);
            ergebnis.leer = angaben && angaben->groesse == 0;
        }
        if (ergebnis.fehler) {
            ergebnis.befunde.reset();
        }
    });
    return ergebnisse;
}

std::string alsText(const std::vector<Pruefergebnis>& ergebnisse, Textform form) {
    std::string zeilen;
    std::size_t auffaellige = 0;
    std::size_t unlesbare = 0;
    for (const Pruefergebnis& ergebnis : ergebnisse) {
        const std::string datei = gezeigt(ergebnis.datei, form);
        if (!ergebnis.befunde) {
            ++unlesbare;
            continue;
        }
        if (ergebnis.befunde->empty()) {
            continue;
        }
        ++auffaellige;
        if (ergebnis.leer) {  // says more than where its end is missing
            zeilen.append(datei).append(": leer\n");
            continue;
        }
        for (const GpxBefund& befund : *ergebnis.befunde) {
            zeilen.append(datei).append(": ").append(satz(befund)).append("\n");
        }
    }
    zeilen.append(anzahlDateien(ergebnisse.size() - unlesbare)).append(" geprüft, ");
    zeilen.append(std::to_string(auffaellige)).append(" mit Befund");
    if (unlesbare > 0) {
        zeilen.append(", ").append(std::to_string(unlesbare)).append(" nicht lesbar");
    }
    return zeilen.append("\n");
}

std::string nichtLesbare(const std::vector<Pruefergebnis>& ergebnisse, Textform form) {
    std::string zeilen;
    for (const Pruefergebnis& ergebnis : ergebnisse) {
        if (!ergebnis.befunde) {
            zeilen.append(gezeigt(ergebnis.datei, form)).append(": nicht lesbar: ");
            zeilen.append(lesehindernis(ergebnis.fehler)).append("\n");
        }
    }
    return zeilen;
}

std::string alsJson(const std::vector<Pruefergebnis>& ergebnisse) {
    std::string json = "[";
    for (const Pruefergebnis& ergebnis : ergebnisse) {
        json.append(json.size() > 1 ? ",\n" : "\n").append(R"({"datei":)");
        JsonText::haengeAn(json, JsonText::inUtf8(ergebnis.datei));
        json.append(R"(,"lesbar":)").append(ergebnis.befunde ? "true" : "false").append(R"(,"befunde":[)");
        bool erster = true;
        for (const GpxBefund& befund : ergebnis.befunde.value_or(std::vector<GpxBefund>{})) {
            json.append(erster ? "" : ",");
            haengeAn(json, befund);
            erster = false;
        }
        json.append("]}");
    }
    return text::jsonGezeigt(json.append("\n]\n"));
}

int pruefe(const std::vector<std::string>& worte, bool json, Textform form) {
    const std::vector<Pruefergebnis> ergebnisse = pruefeDateien(worte);
    const std::string unlesbare = nichtLesbare(ergebnisse, form);
    schreibe(stderr, unlesbare);
    schreibe(stdout, json ? alsJson(ergebnisse) : alsText(ergebnisse, form));
    return schliesseAusgabeAb(unlesbare.empty() ? 0 : 1);
}

}  // namespace spurkiste
