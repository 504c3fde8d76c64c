#include "sicht/Reihenfolge.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace spurkiste {

namespace {

using Stelle = Reihenfolge::Stelle;

/// Eight bytes of a key from `anfang` on as an integer of the same order; zeros behind its end, as no key has any.
std::uint64_t achtBytes(std::string_view schluessel, std::size_t anfang) {
    std::uint64_t wort = 0;
    for (std::size_t byte = anfang; byte < anfang + 8; ++byte) {
        wort = wort << 8U | (byte < schluessel.size() ? static_cast<unsigned char>(schluessel[byte]) : 0U);
    }
    return wort;
}

bool hatArt(const Vergleich& vergleich, Ordnung::Art art) {
    return angaben(vergleich.spalte).ordnung->art == art;
}

/// Sorts by integers: what a comparator compares is a row of words, one for numbers, for names as many as the key
/// fills. Equal runs are sorted again by the next word, then by the next comparator.
class Sortierer {
  public:
    Sortierer(const Sortierung& sortierung, const Reihenfolge::Bestand& bestand)
        : vergleiche_(sortierung.vergleiche()), merkmale_(bestand.merkmale) {
        const auto nachSport = [](Vergleich vergleich) { return hatArt(vergleich, Ordnung::Art::sport); };
        if (std::any_of(vergleiche_.begin(), vergleiche_.end(), nachSport)) {
            bestimmeSportraenge(bestand);
        }
    }

    void sortiere(std::vector<Stelle>& stellen) const {
        std::vector<Paar> paare;
        paare.reserve(stellen.size());
        for (const Stelle stelle : stellen) {
            paare.push_back({0, stelle});
        }
        std::vector<Lauf> offen{{0, paare.size(), 0, 0}};
        while (!offen.empty()) {
            const Lauf lauf = offen.back();
            offen.pop_back();
            ordne(paare, lauf, offen);
        }
        std::transform(paare.begin(), paare.end(), stellen.begin(), [](const Paar& paar) { return paar.stelle; });
    }

    [[nodiscard]] bool steht(Stelle a, Stelle vor) const {
        for (const Vergleich& vergleich : vergleiche_) {
            if (hatArt(vergleich, Ordnung::Art::dateiname)) {
                const int folge = merkmale_[a].namensschluessel.compare(merkmale_[vor].namensschluessel);
                if (folge != 0) {
                    return (folge < 0) != vergleich.absteigend;
                }
            } else if (const auto x = wort(vergleich, 0, a), y = wort(vergleich, 0, vor); x != y) {
                return x < y;
            }
        }
        return a < vor;
    }

    /// Puts few into many, both sorted: each looks for its place by halves, which compares less than walking along.
    [[nodiscard]] std::vector<Stelle> mische(const std::vector<Stelle>& viele,
                                             const std::vector<Stelle>& wenige) const {
        std::vector<Stelle> ergebnis;
        ergebnis.reserve(viele.size() + wenige.size());
        auto rest = viele.begin();
        for (const Stelle stelle : wenige) {
            const auto hier =
                std::upper_bound(rest, viele.end(), stelle, [this](Stelle a, Stelle b) { return steht(a, b); });
            ergebnis.insert(ergebnis.end(), rest, hier);
            ergebnis.push_back(stelle);
            rest = hier;
        }
        ergebnis.insert(ergebnis.end(), rest, viele.end());
        return ergebnis;
    }

  private:
    struct Paar {
        std::uint64_t wort;
        Stelle stelle;
    };
    /// Places that are equal up to a word of a comparator.
    struct Lauf {
        std::size_t von;
        std::size_t bis;
        std::size_t vergleich;
        std::size_t stufe;
    };

    void ordne(std::vector<Paar>& paare, const Lauf& lauf, std::vector<Lauf>& offen) const {
        if (lauf.vergleich == vergleiche_.size()) {
            return;
        }
        const Vergleich& vergleich = vergleiche_[lauf.vergleich];
        const std::span<Paar> bereich(paare.data() + lauf.von, lauf.bis - lauf.von);
        for (Paar& paar : bereich) {
            paar.wort = wort(vergleich, lauf.stufe, paar.stelle);
        }
        std::sort(bereich.begin(), bereich.end(), [](const Paar& a, const Paar& b) {
            return a.wort != b.wort ? a.wort < b.wort : a.stelle < b.stelle;
        });
        for (std::size_t von = 0, bis = 0; von < bereich.size(); von = bis) {
            bool ausgeschoepft = true;
            for (bis = von; bis < bereich.size() && bereich[bis].wort == bereich[von].wort; ++bis) {
                ausgeschoepft = ausgeschoepft && !hatNoch(vergleich, lauf.stufe, bereich[bis].stelle);
            }
            if (bis - von > 1) {
                offen.push_back({lauf.von + von, lauf.von + bis, lauf.vergleich + (ausgeschoepft ? 1 : 0),
                                 ausgeschoepft ? 0 : lauf.stufe + 1});
            }
        }
    }

    /// Whether words follow that of the step.
    [[nodiscard]] bool hatNoch(const Vergleich& vergleich, std::size_t stufe, Stelle stelle) const {
        return hatArt(vergleich, Ordnung::Art::dateiname) &&
               merkmale_[stelle].namensschluessel.size() > 8 * (stufe + 1);
    }

    [[nodiscard]] std::uint64_t wort(const Vergleich& vergleich, std::size_t stufe, Stelle stelle) const {
        const auto aufsteigend = [&]() -> std::uint64_t {
            const Merkmale& merkmale = merkmale_[stelle];
            const Ordnung& ordnung = angaben(vergleich.spalte).ordnung;
            switch (ordnung.art) {
                case Ordnung::Art::dateiname:
                    return achtBytes(merkmale.namensschluessel, 8 * stufe);
                case Ordnung::Art::sport:
                    return sportrang_[merkmale.filterwerte[FilterFeld::sport]];
                case Ordnung::Art::zahl:
                    return ordnung.wort(*merkmale.zeile->eintrag());
                case Ordnung::Art::keine:
                    break;
            }
            return 0;
        }();
        return vergleich.absteigend ? ~aufsteigend : aufsteigend;
    }

    void bestimmeSportraenge(const Reihenfolge::Bestand& bestand) {
        std::vector<std::pair<std::string, Wortliste::Nummer>> schluessel;
        for (const auto& [wort, nummer] : bestand.sportarten.worte()) {
            schluessel.emplace_back(bestand.namensordnung.schluessel(wort), nummer);
        }
        std::sort(schluessel.begin(), schluessel.end());
        sportrang_.resize(bestand.sportarten.umfang());
        std::uint64_t rang = 0;
        for (std::size_t i = 0; i < schluessel.size(); ++i) {
            rang += i > 0 && schluessel[i].first != schluessel[i - 1].first ? 1U : 0U;
            sportrang_[schluessel[i].second] = rang;
        }
    }

    const std::vector<Vergleich>& vergleiche_;
    const std::vector<Merkmale>& merkmale_;
    std::vector<std::uint64_t> sportrang_;  // by number
};

/// The positions that nothing moved to, ascending. Nothing when those that moved have changed their order: equal
/// records may stand the other way round then.
std::optional<std::vector<Stelle>> neueNach(const std::vector<Stelle>& umzug, std::size_t anzahl) {
    std::vector<bool> alt(anzahl);
    Stelle zuletzt = 0;
    for (const Stelle stelle : umzug) {
        if (stelle == Reihenfolge::kWeg) {
            continue;
        }
        if (stelle < zuletzt) {
            return std::nullopt;
        }
        zuletzt = stelle;
        alt[stelle] = true;
    }
    std::vector<Stelle> neue;
    for (Stelle stelle = 0; stelle < anzahl; ++stelle) {
        if (!alt[stelle]) {
            neue.push_back(stelle);
        }
    }
    return neue;
}

}  // namespace

const std::vector<Stelle>& Reihenfolge::fuer(const Sortierung& sortierung, const Bestand& bestand) {
    if (!gueltig_ || sortierung != sortierung_) {
        stellen_.resize(bestand.merkmale.size());
        std::iota(stellen_.begin(), stellen_.end(), Stelle{0});
        Sortierer(sortierung, bestand).sortiere(stellen_);
        sortierung_ = sortierung;
        gueltig_ = true;
    }
    return stellen_;
}

void Reihenfolge::folge(const std::vector<Stelle>& umzug, const Bestand& bestand) {
    if (!gueltig_) {
        return;
    }
    auto neue = neueNach(umzug, bestand.merkmale.size());
    gueltig_ = neue && neue->size() <= bestand.merkmale.size() / 4;  // beyond that, sorting all is no dearer
    if (!gueltig_) {
        return;
    }
    std::vector<Stelle> gebliebene;
    gebliebene.reserve(bestand.merkmale.size());
    for (const Stelle stelle : stellen_) {
        if (umzug[stelle] != kWeg) {
            gebliebene.push_back(umzug[stelle]);
        }
    }
    const Sortierer sortierer(sortierung_, bestand);
    sortierer.sortiere(*neue);
    stellen_ = sortierer.mische(gebliebene, *neue);
}

}  // namespace spurkiste
