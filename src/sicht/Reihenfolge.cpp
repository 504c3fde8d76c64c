#include "sicht/Reihenfolge.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <numeric>
#include <span>
#include <string_view>
#include <utility>

namespace spurkiste {

namespace {

using Stelle = Reihenfolge::Stelle;

/// Integers in the order of the numbers; the two zeros are one, and all that is no number stands behind infinity.
std::uint64_t ausZahl(double wert) {
    constexpr std::uint64_t vorzeichen = std::uint64_t{1} << 63U;
    if (std::isnan(wert)) {
        return ~std::uint64_t{0};
    }
    const auto bits = std::bit_cast<std::uint64_t>(wert + 0.0);
    return (bits & vorzeichen) != 0 ? ~bits : bits | vorzeichen;
}

std::uint64_t ausZahl(std::int64_t wert) {
    return static_cast<std::uint64_t>(wert) ^ (std::uint64_t{1} << 63U);
}

/// Eight bytes of a key from `anfang` on as an integer of the same order; zeros behind its end, as no key has any.
std::uint64_t achtBytes(std::string_view schluessel, std::size_t anfang) {
    std::uint64_t wort = 0;
    for (std::size_t byte = anfang; byte < anfang + 8; ++byte) {
        wort = wort << 8U | (byte < schluessel.size() ? static_cast<unsigned char>(schluessel[byte]) : 0U);
    }
    return wort;
}

/// Sorts by integers: what a comparator compares is a row of words, one for numbers, for names as many as the key
/// fills. Equal runs are sorted again by the next word, then by the next comparator.
class Ordner {
  public:
    Ordner(const Sortierung& sortierung, const Reihenfolge::Bestand& bestand)
        : vergleiche_(sortierung.vergleiche()), plaetze_(bestand.plaetze) {
        const auto nachSport = [](Vergleich vergleich) { return vergleich.spalte == Spalte::sport; };
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
            if (vergleich.spalte == Spalte::name) {
                const int folge = plaetze_[a].namensschluessel.compare(plaetze_[vor].namensschluessel);
                if (folge != 0) {
                    return (folge < 0) != vergleich.absteigend;
                }
            } else if (const auto x = wort(vergleich, 0, a), y = wort(vergleich, 0, vor); x != y) {
                return x < y;
            }
        }
        return a < vor;
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
        return vergleich.spalte == Spalte::name && plaetze_[stelle].namensschluessel.size() > 8 * (stufe + 1);
    }

    [[nodiscard]] std::uint64_t wort(const Vergleich& vergleich, std::size_t stufe, Stelle stelle) const {
        const auto aufsteigend = [&]() -> std::uint64_t {
            const Platz& platz = plaetze_[stelle];
            const GpxMetadaten& eintrag = *platz.zeile->eintrag();
            switch (vergleich.spalte) {
                case Spalte::name:
                    return achtBytes(platz.namensschluessel, 8 * stufe);
                case Spalte::datum:
                    return ausZahl(eintrag.anzeigeDatum().sekunden);
                case Spalte::sport:
                    return sportrang_[platz.sport];
                case Spalte::laenge:
                    return ausZahl(platz.streckeMeter);
                case Spalte::zeit:
                    return ausZahl(eintrag.dauerSekunden);
                case Spalte::anstieg:
                    return ausZahl(eintrag.anstiegMeter);
                case Spalte::punkte:
                    return ausZahl(eintrag.punkte);
                case Spalte::ghost:
                    return static_cast<std::uint64_t>(eintrag.ghostWert());
                case Spalte::art:
                    return static_cast<std::uint64_t>(eintrag.artWert());
                case Spalte::start:
                case Spalte::ziel:
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
    const std::vector<Platz>& plaetze_;
    std::vector<std::uint64_t> sportrang_;  // by number
};

}  // namespace

const std::vector<Stelle>& Reihenfolge::fuer(const Sortierung& sortierung, const Bestand& bestand) {
    if (!gueltig_ || sortierung != sortierung_) {
        stellen_.resize(bestand.plaetze.size());
        std::iota(stellen_.begin(), stellen_.end(), Stelle{0});
        Ordner(sortierung, bestand).sortiere(stellen_);
        sortierung_ = sortierung;
        gueltig_ = true;
    }
    return stellen_;
}

void Reihenfolge::folge(const std::vector<Stelle>& umzug, const Bestand& bestand) {
    if (!gueltig_) {
        return;
    }
    std::vector<bool> alt(bestand.plaetze.size());
    Stelle zuletzt = 0;
    for (const Stelle stelle : umzug) {
        if (stelle == kWeg) {
            continue;
        }
        if (stelle < zuletzt) {
            gueltig_ = false;  // equal records may stand the other way round now
            return;
        }
        zuletzt = stelle;
        alt[stelle] = true;
    }
    std::vector<Stelle> neue;
    for (Stelle stelle = 0; stelle < alt.size(); ++stelle) {
        if (!alt[stelle]) {
            neue.push_back(stelle);
        }
    }
    if (neue.size() > alt.size() / 4) {
        gueltig_ = false;  // sorting all is no dearer
        return;
    }
    std::vector<Stelle> gebliebene;
    gebliebene.reserve(alt.size());
    for (const Stelle stelle : stellen_) {
        if (umzug[stelle] != kWeg) {
            gebliebene.push_back(umzug[stelle]);
        }
    }
    const Ordner ordner(sortierung_, bestand);
    ordner.sortiere(neue);
    // Few go into many: each looks for its place by halves, which compares less than walking along.
    stellen_.clear();
    auto rest = gebliebene.begin();
    for (const Stelle stelle : neue) {
        const auto platz =
            std::upper_bound(rest, gebliebene.end(), stelle, [&](Stelle a, Stelle b) { return ordner.steht(a, b); });
        stellen_.insert(stellen_.end(), rest, platz);
        stellen_.push_back(stelle);
        rest = platz;
    }
    stellen_.insert(stellen_.end(), rest, gebliebene.end());
}

}  // namespace spurkiste
