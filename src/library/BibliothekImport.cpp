// How files come into the library: the copies, made one after the other away from the main thread, and then their
// reading.

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <iterator>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "library/Bibliothek.h"
#include "library/Kopierstapel.h"

namespace spurkiste {

/// One call of importiere(). Bound to the main thread.
struct Bibliothek::Import {
    std::deque<std::string> quellen;  ///< what is still to be copied
    std::string ordner;               ///< where to, whatever folder the library has meanwhile
    std::int64_t generation;
    std::vector<std::string> neue;  ///< the copies that succeeded
    Fertig fertig;
    std::size_t stapel = 1;  ///< how many files the next task gets: the first row comes soon, the others come fast
    /// True once only the copy in hand is still wanted.
    std::shared_ptr<std::atomic<bool>> abbruch = std::make_shared<std::atomic<bool>>(false);
};

namespace {

bool liegtIn(const std::string& ordner, const std::string& pfad) {
    return dateien::kindPfad(ordner, dateien::letzterTeil(pfad)) == pfad;
}

}  // namespace

void Bibliothek::importiere(const std::vector<std::string>& pfade, Fertig fertig) {
    const auto import = std::make_shared<Import>(Import{{}, ordner_.wert(), generation_, {}, std::move(fertig)});
    for (const std::string& roh : pfade) {
        if (roh.empty()) {
            continue;
        }
        std::string pfad = dateien::absolut(roh);
        if (text::klein(dateien::endung(dateien::letzterTeil(pfad))) == "gpx" && !liegtIn(import->ordner, pfad)) {
            import->quellen.push_back(std::move(pfad));
        }
    }
    if (import->quellen.empty()) {
        parseUndHaengeAn({}, import->generation, std::move(import->fertig));
        return;
    }
    zuKopieren_.setze(zuKopieren_.wert() + import->quellen.size());
    importe_.push_back(import);
    if (importe_.size() == 1) {
        fehlkopien_ = 0;
        kopiereNaechste();
    }
}

void Bibliothek::kopiereNaechste() {
    constexpr std::size_t hoechstens = 32;
    const auto import = importe_.front();
    const std::size_t anzahl = std::min(import->stapel, import->quellen.size());
    import->stapel = std::min(import->stapel * 2, hoechstens);
    const auto bis = import->quellen.begin() + static_cast<std::ptrdiff_t>(anzahl);
    std::vector<std::string> quellen(std::make_move_iterator(import->quellen.begin()), std::make_move_iterator(bis));
    import->quellen.erase(import->quellen.begin(), bis);
    Ausfuehrer& kopierer = anschluesse_.kopierer != nullptr ? *anschluesse_.kopierer : anschluesse_.arbeiter;
    rueckweg_.hinUndZurueck(
        kopierer,
        [ordner = import->ordner, quellen = std::move(quellen), abbruch = import->abbruch] {
            return Kopierstapel::kopiere(ordner, quellen, *abbruch);
        },
        [this, import](const Kopierstapel& stapel) { landeKopien(import, stapel); });
}

void Bibliothek::landeKopien(const std::shared_ptr<Import>& import, const Kopierstapel& stapel) {
    std::size_t erledigt = stapel.kopien.size();
    for (const Kopierstapel::Kopie& kopie : stapel.kopien) {
        if (kopie.ziel.empty()) {
            meldeFehlkopie(kopie.quelle, kopie.fehler);
        } else {
            import->neue.push_back(kopie.ziel);
        }
    }
    if (*import->abbruch) {
        erledigt += stapel.rest.size();
    } else {
        import->quellen.insert(import->quellen.begin(), stapel.rest.begin(), stapel.rest.end());
    }
    zuKopieren_.setze(zuKopieren_.wert() - erledigt);
    const bool fertig = import->quellen.empty();
    if (fertig) {
        importe_.pop_front();
    }
    if (!importe_.empty()) {
        kopiereNaechste();
    }
    if (fertig) {
        liesImport(*import);
    }
}

void Bibliothek::liesImport(Import& import) {
    // A load of the same folder that began meanwhile may have listed it before the copies were there. They are its
    // files as much as if they had been made in the call.
    const bool verpasst = !import.neue.empty() && import.ordner == ordner_.wert();
    parseUndHaengeAn(std::move(import.neue), verpasst ? generation_ : import.generation, std::move(import.fertig),
                     true);
    ordne();
}

void Bibliothek::meldeFehlkopie(const std::string& quelle, const std::string& fehler) {
    ++fehlkopien_;
    const std::string anzahl = fehlkopien_ > 1 ? std::to_string(fehlkopien_) + " Dateien, zuletzt " : "";
    hinweis_.setze("Import fehlgeschlagen: " + anzahl + text::einzeilig(dateien::letzterTeil(quelle)) + ": " + fehler);
}

/// Lets the batch in hand end with the copy in hand.
void Bibliothek::beendeKopien() {
    if (!importe_.empty()) {
        *importe_.front()->abbruch = true;
    }
}

void Bibliothek::brichImporteAb() {
    if (importe_.empty()) {
        return;
    }
    const auto wartende = std::exchange(importe_, {importe_.front()});  // whose copies are in hand
    beendeKopien();
    std::size_t kopien = importe_.front()->quellen.size();
    importe_.front()->quellen.clear();
    for (std::size_t i = 1; i < wartende.size(); ++i) {
        kopien += wartende[i]->quellen.size();
    }
    zuKopieren_.setze(zuKopieren_.wert() - kopien);
    for (std::size_t i = 1; i < wartende.size(); ++i) {
        liesImport(*wartende[i]);
    }
}

}  // namespace spurkiste
