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

constexpr char kEigene = '*';  // behind a width that the user gave

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

/// Who takes part when columns get wider or narrower.
using Wer = std::array<bool, kSpalten.size()>;

/// Something for each column that takes part, and nothing for the others.
template <typename Wert>
Breiten fuer(const Wer& wer, Wert wert) {
    Breiten ergebnis{};
    for (std::size_t i = 0; i < ergebnis.size(); ++i) {
        ergebnis[i] = wer[i] ? wert(i) : 0;
    }
    return ergebnis;
}

/// Makes columns narrower, down to what they need at least. Answers what was left to do.
int schrumpfe(Breiten& breiten, int betrag, const Wer& wer, const Breiten& bedarf) {
    const Breiten luft = fuer(wer, [&](std::size_t i) { return std::max(0, breiten[i] - bedarf[i]); });
    const int stueck = std::min(betrag, summe(luft));
    teile(breiten, stueck, luft, -1);
    return betrag - stueck;
}

/// How wide all columns together want to be in a room, when they were `eigene` wide in the one they were made for: what
/// was left free there, or did not fit, stays so.
int zielbreite(int platz, int eigene, int platzDavor) {
    const bool passte = eigene <= platzDavor;
    if (platz > platzDavor) {
        return passte ? eigene + (platz - platzDavor) : std::max(eigene, platz);
    }
    return passte ? std::min(eigene, platz) : eigene - (platzDavor - platz);
}

}  // namespace

Spaltenbreiten Spaltenbreiten::ausText(std::string_view text) {
    Spaltenbreiten ergebnis;
    const char* stelle = text.data();
    const char* ende = text.data() + text.size();
    const auto lies = [&](int mindestens, int& zahl) {
        const auto [hinter, fehler] = std::from_chars(stelle, ende, zahl);
        stelle = hinter;
        return fehler == std::errc() && zahl >= mindestens && zahl <= kUnsinnig;
    };
    const auto nimm = [&](char zeichen) {
        const bool da = stelle != ende && *stelle == zeichen;
        stelle += da ? 1 : 0;
        return da;
    };
    bool gelesen = lies(1, ergebnis.platz_);
    for (std::size_t i = 0; gelesen && i < kMindestens.size(); ++i) {
        gelesen = nimm(' ') && lies(kMindestens[i], ergebnis.breiten_[i]);
        ergebnis.eigene_[i] = gelesen && nimm(kEigene);
    }
    return gelesen && stelle == ende ? ergebnis : Spaltenbreiten();
}

std::string Spaltenbreiten::alsText() const {
    std::string text = std::to_string(platz_);
    for (std::size_t i = 0; i < breiten_.size(); ++i) {
        text += ' ' + std::to_string(breiten_[i]);
        if (eigene_[i]) {
            text += kEigene;
        }
    }
    return text;
}

Breiten Spaltenbreiten::verteile(int platz, const Breiten& bedarf) const {
    Breiten breiten = breiten_;
    std::transform(breiten.begin(), breiten.end(), bedarf.begin(), breiten.begin(),
                   [](int breite, int mindestens) { return std::max(breite, mindestens); });
    Wer freie{};
    Wer dehnbare{};
    for (std::size_t i = 0; i < freie.size(); ++i) {
        freie[i] = !eigene_[i];
        dehnbare[i] = freie[i] && kDehnung[i] > 0;
    }
    const int rest = zielbreite(platz, summe(breiten_), platz_) - summe(breiten);
    if (rest < 0) {
        // Names and places first: they are shortened anyway.
        (void)schrumpfe(breiten, schrumpfe(breiten, -rest, dehnbare, bedarf), freie, bedarf);
        return breiten;
    }
    const Breiten fehlend = fuer(freie, [&](std::size_t i) { return std::max(0, kIdeal[i] - breiten[i]); });
    const int bisIdeal = std::min(rest, summe(fehlend));
    teile(breiten, bisIdeal, fehlend);
    teile(breiten, rest - bisIdeal, fuer(dehnbare, [](std::size_t i) { return kDehnung[i]; }));
    return breiten;
}

void Spaltenbreiten::ziehe(Spalte spalte, int breite, const Breiten& vorher, int platz, const Breiten& bedarf) {
    const auto stelle = static_cast<std::size_t>(spalte);
    breiten_ = vorher;
    platz_ = platz;
    breiten_[stelle] = std::clamp(breite, bedarf[stelle], kUnsinnig);
    eigene_[stelle] = true;
    Wer rechte{};
    for (std::size_t i = stelle + 1; i < rechte.size(); ++i) {
        rechte[i] = !eigene_[i] && kDehnung[i] > 0;
    }
    const int ueberhang = summe(breiten_) - platz;
    if (ueberhang <= 0) {
        teile(breiten_, -ueberhang, fuer(rechte, [](std::size_t i) { return kDehnung[i]; }));
    } else if (summe(vorher) <= platz) {  // else the user scrolls already
        (void)schrumpfe(breiten_, ueberhang, rechte, bedarf);
    }
}

}  // namespace spurkiste
