#include "sicht/Zeilenabgleich.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace spurkiste {

namespace {

/// Adds a position, which is above all before it.
void haengeAn(std::vector<Spanne>& spannen, int stelle) {
    if (!spannen.empty() && spannen.back().von + spannen.back().anzahl == stelle) {
        ++spannen.back().anzahl;
    } else {
        spannen.push_back({stelle, 1});
    }
}

}  // namespace

Zeilenliste::Zeilenliste(std::vector<std::shared_ptr<const Zeile>> zeilen) : zeilen_(std::move(zeilen)) {
    kennungen_.reserve(zeilen_.size());
    std::uint32_t groesste = 0;
    for (const auto& zeile : zeilen_) {
        kennungen_.push_back(zeile->kennung());
        groesste = std::max(groesste, kennungen_.back());
    }
    stellen_.assign(zeilen_.empty() ? 0 : std::size_t{groesste} + 1, kKeine);
    for (int stelle = 0; stelle < anzahl(); ++stelle) {
        int& platz = stellen_[kennung(stelle)];
        assert(platz == kKeine);
        platz = stelle;
    }
}

Zeilenabgleich Zeilenabgleich::zwischen(const Zeilenliste& alt, const Zeilenliste& neu) {
    Zeilenabgleich ergebnis;
    int letzte = -1;
    for (int stelle = 0; stelle < alt.anzahl(); ++stelle) {
        const int ziel = neu.stelleVon(alt.kennung(stelle));
        if (ziel == Zeilenliste::kKeine) {
            haengeAn(ergebnis.weg, stelle);
        } else {
            ergebnis.umgestellt = ergebnis.umgestellt || ziel < letzte;
            letzte = ziel;
        }
    }
    for (int stelle = 0; stelle < neu.anzahl(); ++stelle) {
        const int vorher = alt.stelleVon(neu.kennung(stelle));
        if (vorher == Zeilenliste::kKeine) {
            haengeAn(ergebnis.dazu, stelle);
        } else if (&alt.zeile(vorher) != &neu.zeile(stelle)) {
            haengeAn(ergebnis.geaendert, stelle);
        }
    }
    return ergebnis;
}

}  // namespace spurkiste
