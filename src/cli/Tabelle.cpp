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

std::string kuerze(const std::string& text, std::size_t breite) {
    if (text::spalten(text) <= breite) {
        return text;
    }
    return std::string(text::trimme(text::anfangBis(text, breite - 1))).append(kAuslassung);
}

/// Which columns are shown, and how wide.
struct Aufteilung {
    std::vector<std::size_t> gezeigt;  ///< positions in Tabelle::spalten
    std::vector<std::size_t> breiten;  ///< of all columns, by position

    [[nodiscard]] std::size_t gesamtbreite() const {
        return std::accumulate(gezeigt.begin(), gezeigt.end(), (gezeigt.size() - 1) * kLuecke,
                               [this](std::size_t summe, std::size_t i) { return summe + breiten[i]; });
    }
};

/// Every column, as narrow as it may be.
Aufteilung allesEng(const std::vector<Tabelle::Spalte>& spalten, const std::vector<std::size_t>& inhalt) {
    Aufteilung aufteilung;
    for (std::size_t i = 0; i < spalten.size(); ++i) {
        aufteilung.gezeigt.push_back(i);
        aufteilung.breiten.push_back(std::min(spalten[i].mindestens.value_or(inhalt[i]), inhalt[i]));
    }
    return aufteilung;
}

/// Lets columns leave until the rest fits or only one is left.
void lasseGehen(Aufteilung& aufteilung, const std::vector<Tabelle::Spalte>& spalten, std::size_t breite) {
    const auto rang = [&](std::size_t i) {
        return spalten[i].rang > 0 ? spalten[i].rang : std::numeric_limits<int>::max();
    };
    while (aufteilung.gezeigt.size() > 1 && aufteilung.gesamtbreite() > breite) {
        aufteilung.gezeigt.erase(std::min_element(aufteilung.gezeigt.begin(), aufteilung.gezeigt.end(),
                                                  [&](std::size_t a, std::size_t b) { return rang(a) < rang(b); }));
    }
}

/// Gives what is left over, terminal column by terminal column, to the one that is shortened most.
void vergibRest(Aufteilung& aufteilung, const std::vector<std::size_t>& inhalt, std::size_t breite) {
    const auto fehlt = [&](std::size_t i) { return inhalt[i] - aufteilung.breiten[i]; };
    for (std::size_t vergeben = aufteilung.gesamtbreite(); vergeben < breite; ++vergeben) {
        const std::size_t welche = *std::max_element(aufteilung.gezeigt.begin(), aufteilung.gezeigt.end(),
                                                     [&](std::size_t a, std::size_t b) { return fehlt(a) < fehlt(b); });
        if (fehlt(welche) == 0) {
            return;
        }
        ++aufteilung.breiten[welche];
    }
}

Aufteilung teileAuf(const std::vector<Tabelle::Spalte>& spalten, const std::vector<std::size_t>& inhalt,
                    std::size_t breite) {
    Aufteilung aufteilung = allesEng(spalten, inhalt);
    lasseGehen(aufteilung, spalten, breite);
    vergibRest(aufteilung, inhalt, breite);
    if (aufteilung.gezeigt.size() == 1) {
        std::size_t& einzige = aufteilung.breiten[aufteilung.gezeigt.front()];
        einzige = std::min(einzige, breite);
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
        const std::size_t spalte = aufteilung_.gezeigt[stelle];
        const std::size_t breite = aufteilung_.breiten[spalte];
        const std::string gekuerzt = kuerze(text, breite);
        const std::string rand(breite - std::min(breite, text::spalten(gekuerzt)), ' ');
        const bool rechts = spalten_[spalte].ausrichtung == Tabelle::Ausrichtung::rechts;
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
