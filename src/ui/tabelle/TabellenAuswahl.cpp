#include "ui/tabelle/TabellenAuswahl.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace spurkiste {

namespace {

template <typename Tue>
void jedeReihe(const QItemSelection& auswahl, Tue tue) {
    for (const QItemSelectionRange& bereich : auswahl) {
        for (int reihe = bereich.top(); reihe <= bereich.bottom(); ++reihe) {
            tue(reihe);
        }
    }
}

std::size_t anzahlReihen(const QItemSelection& auswahl) {
    return std::accumulate(auswahl.begin(), auswahl.end(), std::size_t{0}, [](std::size_t bisher, const auto& bereich) {
        return bisher + static_cast<std::size_t>(bereich.height());
    });
}

}  // namespace

TabellenAuswahl::TabellenAuswahl(TabellenModell& modell, QObject* eltern)
    : QItemSelectionModel(&modell, eltern), modell_(modell) {
    connect(this, &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection& dazu, const QItemSelection& weg) {
                if (!still_) {
                    uebernimm(dazu, weg);
                }
            });
}

bool TabellenAuswahl::istGewaehlt(const Zeile& zeile) const {
    const std::uint32_t kennung = zeile.kennung();
    if (kennung < marken_.size() && marken_[kennung] != Marke::unbekannt) {
        return marken_[kennung] == Marke::ja;
    }
    const bool ja = pfade_.contains(zeile.pfad());
    setzeMarke(kennung, ja ? Marke::ja : Marke::nein);
    return ja;
}

void TabellenAuswahl::setzeMarke(std::uint32_t kennung, Marke marke) const {
    if (kennung >= marken_.size()) {
        marken_.resize(std::max<std::size_t>(std::size_t{kennung} + 1, marken_.size() * 2), Marke::unbekannt);
    }
    marken_[kennung] = marke;
}

void TabellenAuswahl::setzePfade(const Pfade& pfade) {
    if (pfade_ != pfade) {
        pfade_ = pfade;
        marken_.clear();
        zeige();
    }
}

void TabellenAuswahl::verbirg() {
    still_ = true;
    clearSelection();
    still_ = false;
}

void TabellenAuswahl::zeige() {
    if (pfade_.empty()) {
        return verbirg();
    }
    QItemSelection auswahl;
    const int spalten = modell_.columnCount();
    int anfang = -1;
    for (int reihe = 0; reihe <= modell_.rowCount(); ++reihe) {
        const bool ja = reihe < modell_.rowCount() && istGewaehlt(modell_.zeile(reihe));
        if (ja && anfang < 0) {
            anfang = reihe;
        } else if (!ja && anfang >= 0) {
            auswahl.append(QItemSelectionRange(modell_.index(anfang, 0), modell_.index(reihe - 1, spalten - 1)));
            anfang = -1;
        }
    }
    still_ = true;
    QItemSelectionModel::select(auswahl, ClearAndSelect);
    still_ = false;
}

void TabellenAuswahl::select(const QItemSelection& auswahl, SelectionFlags befehl) {
    if (still_ || befehl == NoUpdate) {
        QItemSelectionModel::select(auswahl, befehl);
        return;
    }
    ersetzt_ = (befehl & Clear) != 0;
    geaendert_ = false;
    QItemSelectionModel::select(auswahl, befehl);
    if (ersetzt_) {
        // What was hidden goes as well, and that changes the set even where the visible part stays as it was.
        Pfade::Menge sichtbar;
        sichtbar.reserve(anzahlReihen(selection()));
        marken_.assign(marken_.size(), Marke::nein);
        jedeReihe(selection(), [&](int reihe) {
            const Zeile& zeile = modell_.zeile(reihe);
            sichtbar.insert(zeile.pfad());
            setzeMarke(zeile.kennung(), Marke::ja);
        });
        geaendert_ = geaendert_ || sichtbar.size() != pfade_.size();
        pfade_ = std::move(sichtbar);
    }
    if (std::exchange(geaendert_, false)) {
        Q_EMIT pfadeGeaendert();
    }
}

void TabellenAuswahl::uebernimm(const QItemSelection& dazu, const QItemSelection& weg) {
    geaendert_ = geaendert_ || !dazu.isEmpty() || !weg.isEmpty();
    if (ersetzt_) {
        return;  // the set is made anew
    }
    jedeReihe(weg, [&](int reihe) {
        const Zeile& zeile = modell_.zeile(reihe);
        pfade_.erase(zeile.pfad());
        setzeMarke(zeile.kennung(), Marke::nein);
    });
    jedeReihe(dazu, [&](int reihe) {
        const Zeile& zeile = modell_.zeile(reihe);
        pfade_.insert(zeile.pfad());
        setzeMarke(zeile.kennung(), Marke::ja);
    });
}

}  // namespace spurkiste
