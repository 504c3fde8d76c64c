#include "cli/Tabelle.h"

#include <algorithm>
#include <cassert>
#include <limits>
#include <numeric>
#include <string_view>

#include "base/Text.h"

namespace spurkiste {

namespace {

constexpr std::size_t kLuecke = 2;
constexpr std::string_view kAuslassung = "…";

std::size_t gesamtbreite(const std::vector<std::size_t>& breiten) {
    return std::accumulate(breiten.begin(), breiten.end(), (breiten.size() - 1) * kLuecke);
}

std::string kuerze(const std::string& text, std::size_t breite) {
    if (text::spalten(text) <= breite) {
        return text;
    }
    return std::string(text::trimme(text::anfangBis(text, breite - 1))).append(kAuslassung);
}

/// Which columns are shown, and how wide.
struct Aufteilung {
    std::vector<std::size_t> gezeigt;  // positions in Tabelle::spalten
    std::vector<std::size_t> breiten;
};

std::size_t mindestbreite(const Tabelle::Spalte& spalte, std::size_t inhalt) {
    return std::min(spalte.mindestens.value_or(inhalt), inhalt);
}

Aufteilung teileAuf(const std::vector<Tabelle::Spalte>& spalten, const std::vector<std::size_t>& inhalt,
                    std::size_t breite) {
    Aufteilung aufteilung;
    aufteilung.gezeigt.resize(spalten.size());
    std::iota(aufteilung.gezeigt.begin(), aufteilung.gezeigt.end(), std::size_t{0});
    const auto mindestens = [&] {
        std::vector<std::size_t> breiten;
        for (const std::size_t i : aufteilung.gezeigt) {
            breiten.push_back(mindestbreite(spalten[i], inhalt[i]));
        }
        return breiten;
    };
    while (aufteilung.gezeigt.size() > 1 && gesamtbreite(mindestens()) > breite) {
        const auto naechste = [&] {
            const auto rang = [&](std::size_t i) {
                return spalten[i].rang > 0 ? spalten[i].rang : std::numeric_limits<int>::max();
            };
            return std::min_element(aufteilung.gezeigt.begin(), aufteilung.gezeigt.end(),
                                    [&](std::size_t a, std::size_t b) { return rang(a) < rang(b); });
        }();
        aufteilung.gezeigt.erase(naechste);
    }
    // What is left over goes, column by column, to the one that is shortened most.
    aufteilung.breiten = mindestens();
    std::size_t frei = breite - std::min(breite, gesamtbreite(aufteilung.breiten));
    while (frei > 0) {
        std::size_t fehltAmMeisten = 0;
        std::size_t welche = 0;
        for (std::size_t i = 0; i < aufteilung.gezeigt.size(); ++i) {
            const std::size_t fehlt = inhalt[aufteilung.gezeigt[i]] - aufteilung.breiten[i];
            if (fehlt > fehltAmMeisten) {
                fehltAmMeisten = fehlt;
                welche = i;
            }
        }
        if (fehltAmMeisten == 0) {
            break;
        }
        ++aufteilung.breiten[welche];
        --frei;
    }
    if (aufteilung.gezeigt.size() == 1) {
        aufteilung.breiten[0] = std::min(aufteilung.breiten[0], breite);
    }
    return aufteilung;
}

std::string_view farbe(Tabelle::Ton ton) {
    switch (ton) {
        case Tabelle::Ton::leise:
            return "\x1b[2m";
        case Tabelle::Ton::gut:
            return "\x1b[32m";
        case Tabelle::Ton::ruhig:
            break;
    }
    return "";
}

/// Lays out one line; the last column ends with its text when it stands on the left.
class Zeilenbau {
  public:
    Zeilenbau(const std::vector<Tabelle::Spalte>& spalten, const Aufteilung& aufteilung)
        : spalten_(spalten), aufteilung_(aufteilung) {}

    void haengeAn(std::size_t stelle, const std::string& text, std::string_view farbe) {
        const std::size_t breite = aufteilung_.breiten[stelle];
        const std::string gekuerzt = kuerze(text, breite);
        const std::string rand(breite - std::min(breite, text::spalten(gekuerzt)), ' ');
        const bool rechts = spalten_[aufteilung_.gezeigt[stelle]].ausrichtung == Tabelle::Ausrichtung::rechts;
        const bool letzte = stelle + 1 == aufteilung_.gezeigt.size();
        if (stelle > 0) {
            zeile_.append(kLuecke, ' ');
        }
        zeile_ += rechts ? rand : "";
        if (farbe.empty()) {
            zeile_ += gekuerzt;
        } else {
            zeile_.append(farbe).append(gekuerzt).append("\x1b[0m");
        }
        zeile_ += rechts || letzte ? "" : rand;
    }

    [[nodiscard]] std::string fertig() && { return std::move(zeile_.append("\n")); }

  private:
    const std::vector<Tabelle::Spalte>& spalten_;
    const Aufteilung& aufteilung_;
    std::string zeile_;
};

}  // namespace

std::string Tabelle::text(std::optional<std::size_t> breite, bool farben) const {
    assert(!spalten.empty());
    std::vector<std::size_t> inhalt;
    for (const Spalte& spalte : spalten) {
        inhalt.push_back(text::spalten(spalte.titel));
    }
    std::vector<std::vector<std::string>> sicher;
    sicher.reserve(zeilen.size());
    for (const auto& zeile : zeilen) {
        assert(zeile.size() == spalten.size());
        auto& texte = sicher.emplace_back();
        for (std::size_t i = 0; i < zeile.size(); ++i) {
            texte.push_back(text::einzeilig(zeile[i].text));
            inhalt[i] = std::max(inhalt[i], text::spalten(texte.back()));
        }
    }
    const Aufteilung aufteilung =
        teileAuf(spalten, inhalt, std::max<std::size_t>(breite.value_or(std::numeric_limits<int>::max()), 1));
    std::string ergebnis;
    Zeilenbau titel(spalten, aufteilung);
    for (std::size_t i = 0; i < aufteilung.gezeigt.size(); ++i) {
        titel.haengeAn(i, spalten[aufteilung.gezeigt[i]].titel, farben ? "\x1b[1m" : "");
    }
    ergebnis += std::move(titel).fertig();
    for (std::size_t z = 0; z < zeilen.size(); ++z) {
        Zeilenbau zeile(spalten, aufteilung);
        for (std::size_t i = 0; i < aufteilung.gezeigt.size(); ++i) {
            const std::size_t spalte = aufteilung.gezeigt[i];
            zeile.haengeAn(i, sicher[z][spalte], farben ? farbe(zeilen[z][spalte].ton) : "");
        }
        ergebnis += std::move(zeile).fertig();
    }
    return ergebnis;
}

}  // namespace spurkiste
