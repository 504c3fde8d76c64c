#include "sicht/Spaltenbreiten.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace spurkiste {

namespace {

using Breiten = Spaltenbreiten::Breiten;

constexpr Breiten kIdeal = jeSpalte(&Spaltenbreite::ideal);

/// How columns share what is beyond their ideal widths: names and places have the longest texts.
constexpr Breiten kDehnung = jeSpalte(&Spaltenbreite::dehnung);

constexpr int kUnsinnig = 100'000;  // no screen is that wide; keeps sums small

int summe(const Breiten& breiten) {
    return std::accumulate(breiten.begin(), breiten.end(), 0);
}

/// Shares an amount among columns by their weights, to the pixel: none gets more than its weight when the amount is
/// not above the weights together. Does nothing when nobody has a weight.
void teile(Breiten& breiten, int betrag, const Breiten& gewichte, int vorzeichen = 1) {
    const int gesamt = summe(gewichte);
    if (gesamt == 0) {
        return;
    }
    std::int64_t gewicht = 0;
    std::int64_t verteilt = 0;
    for (std::size_t i = 0; i < breiten.size(); ++i) {
        gewicht += gewichte[i];
        const std::int64_t bisher = betrag * gewicht / gesamt;
        breiten[i] += vorzeichen * static_cast<int>(bisher - verteilt);
        verteilt = bisher;
    }
}

/// By how much the columns from `ab` on, of those that stretch or of the others, are above their minimum widths.
Breiten spielraum(const Breiten& breiten, std::size_t ab, bool dehnbar) {
    Breiten ergebnis{};
    for (std::size_t i = ab; i < breiten.size(); ++i) {
        if ((kDehnung[i] > 0) == dehnbar) {
            ergebnis[i] = breiten[i] - Spaltenbreiten::kMindestens[i];
        }
    }
    return ergebnis;
}

/// Makes the columns from `ab` on narrower, names and places first: they are shortened anyway, figures must not be.
void schrumpfe(Breiten& breiten, int betrag, std::size_t ab) {
    for (const bool dehnbar : {true, false}) {
        const Breiten luft = spielraum(breiten, ab, dehnbar);
        const int stueck = std::min(betrag, summe(luft));
        teile(breiten, stueck, luft, -1);
        betrag -= stueck;
    }
}

}  // namespace

Spaltenbreiten Spaltenbreiten::ausText(std::string_view text) {
    Spaltenbreiten ergebnis;
    std::array<int, kSpalten.size() + 1> zahlen{};
    const char* stelle = text.data();
    const char* ende = text.data() + text.size();
    for (int& zahl : zahlen) {
        const auto [hinter, fehler] = std::from_chars(stelle, ende, zahl);
        const bool letzte = &zahl == &zahlen.back();
        if (fehler != std::errc() || zahl > kUnsinnig || (letzte ? hinter != ende : hinter == ende || *hinter != ' ')) {
            return {};
        }
        stelle = letzte ? hinter : hinter + 1;
    }
    std::copy(zahlen.begin() + 1, zahlen.end(), ergebnis.breiten_.begin());
    ergebnis.platz_ = zahlen.front();
    const bool weitGenug = std::equal(ergebnis.breiten_.begin(), ergebnis.breiten_.end(), kMindestens.begin(),
                                      [](int breite, int mindestens) { return breite >= mindestens; });
    return weitGenug && ergebnis.platz_ > 0 ? ergebnis : Spaltenbreiten();
}

std::string Spaltenbreiten::alsText() const {
    std::string text = std::to_string(platz_);
    for (const int breite : breiten_) {
        text += ' ' + std::to_string(breite);
    }
    return text;
}

Breiten Spaltenbreiten::verteile(int platz) const {
    Breiten breiten = breiten_;
    const int eigene = summe(breiten);
    const int ziel = platz >= platz_ ? std::max(platz, eigene) : eigene - (platz_ - platz);
    if (ziel < eigene) {
        schrumpfe(breiten, eigene - ziel, 0);
        return breiten;
    }
    Breiten fehlend{};
    std::transform(breiten.begin(), breiten.end(), kIdeal.begin(), fehlend.begin(),
                   [](int breite, int ideal) { return std::max(0, ideal - breite); });
    const int bisIdeal = std::min(ziel - eigene, summe(fehlend));
    teile(breiten, bisIdeal, fehlend);
    teile(breiten, ziel - eigene - bisIdeal, kDehnung);
    return breiten;
}

void Spaltenbreiten::ziehe(Spalte spalte, int breite, const Breiten& vorher, int platz) {
    const auto stelle = static_cast<std::size_t>(spalte);
    const std::size_t rechts = stelle + 1;
    breiten_ = vorher;
    platz_ = platz;
    breiten_[stelle] = std::clamp(breite, kMindestens[stelle], kUnsinnig);
    const int ueberhang = summe(breiten_) - platz;
    if (ueberhang > 0) {
        // A table that was wider than its room already is left to grow: the user scrolls.
        schrumpfe(breiten_, summe(vorher) > platz ? 0 : ueberhang, rechts);
        return;
    }
    Breiten nachRechts{};
    std::copy(kDehnung.begin() + static_cast<std::ptrdiff_t>(rechts), kDehnung.end(),
              nachRechts.begin() + static_cast<std::ptrdiff_t>(rechts));
    if (rechts == breiten_.size()) {
        nachRechts[stelle] = 1;  // nobody else is there to take the room
    }
    teile(breiten_, -ueberhang, nachRechts);
}

}  // namespace spurkiste
