#include "cli/Pruefe.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <system_error>

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
    return "ab hier kein XML";
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
            return "kein Punkt";
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

bool istAuffaellig(const Pruefergebnis& ergebnis) {
    return !ergebnis.befunde || !ergebnis.befunde->empty();
}

}  // namespace

std::string alsText(const std::vector<Pruefergebnis>& ergebnisse) {
    std::string text;
    for (const Pruefergebnis& ergebnis : ergebnisse) {
        if (!ergebnis.befunde) {
            text.append(ergebnis.datei).append(": nicht lesbar\n");
            continue;
        }
        for (const GpxBefund& befund : *ergebnis.befunde) {
            text.append(ergebnis.datei).append(": ").append(satz(befund)).append("\n");
        }
    }
    const auto auffaellige = std::count_if(ergebnisse.begin(), ergebnisse.end(), istAuffaellig);
    return text.append(std::to_string(ergebnisse.size()) + " Dateien geprüft, " + std::to_string(auffaellige) +
                       " mit Befund\n");
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
    return json.append("\n]\n");
}

int pruefe(const std::vector<std::string>& worte, bool json) {
    std::vector<Pruefergebnis> ergebnisse;
    try {
        for (std::string& pfad : dateiauswahl::sammle(worte)) {
            ergebnisse.push_back({std::move(pfad), std::nullopt});
        }
    } catch (const std::system_error& fehler) {
        (void)std::fputs(("Ordner nicht lesbar: " + fehler.code().message() + "\n").c_str(), stderr);
        return 1;
    }
    dateiauswahl::fuerAlle(ergebnisse.size(),
                           [&](std::size_t i) { ergebnisse[i].befunde = GpxLeser::befunde(ergebnisse[i].datei); });
    (void)std::fputs((json ? alsJson(ergebnisse) : alsText(ergebnisse)).c_str(), stdout);
    const bool alleGelesen = std::all_of(ergebnisse.begin(), ergebnisse.end(),
                                         [](const Pruefergebnis& ergebnis) { return ergebnis.befunde.has_value(); });
    return std::fflush(stdout) == 0 && alleGelesen ? 0 : 1;
}

}  // namespace spurkiste
