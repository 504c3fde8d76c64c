// How files come into the library: the copies, made one after the other away from the main thread, and then their
// reading.

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstddef>
#include <iterator>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Text.h"
#include "library/BibliothekLaeufe.h"
#include "library/Kopierstapel.h"
#include "library/Oeffnung.h"

namespace spurkiste {

namespace {

bool liegtIn(const std::string& ordner, const std::string& pfad) {
    return dateien::kindPfad(ordner, dateien::letzterTeil(pfad)) == pfad;
}

/// Copies files into the folder. What is there already with the same bytes is told in place of a copy, where `bestand`
/// is present.
Kopierstapel hole(const std::string& ordner, const std::vector<std::string>& quellen, oeffnung::Bestand* bestand,
                  const std::atomic<bool>& abbruch) {
    if (bestand == nullptr) {
        return Kopierstapel::kopiere(ordner, quellen, abbruch);
    }
    assert(quellen.size() == 1);
    try {
        if (auto gleiche = bestand->gleiche(quellen.front())) {
            return {{{quellen.front(), std::move(*gleiche), {}}}, {}};
        }
    } catch (const std::bad_alloc&) {
        return {{{quellen.front(), {}, std::generic_category().message(ENOMEM)}}, {}};
    }
    Kopierstapel stapel = Kopierstapel::kopiere(ordner, quellen, abbruch);
    for (const Kopierstapel::Kopie& kopie : stapel.kopien) {
        bestand->kommt(kopie.ziel);
    }
    return stapel;
}

}  // namespace

void Bibliothek::importiere(const std::vector<std::string>& pfade, Fertig fertig, Gefunden gefunden) {
    const auto import = std::make_shared<Import>();
    import->ordner = ordner_.wert();
    import->generation = generation_;
    import->fertig = std::move(fertig);
    import->gefunden = std::move(gefunden);
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
    reiheEin(import);
}

void Bibliothek::reiheEin(const std::shared_ptr<Import>& import) {
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
        [ordner = import->ordner, quellen = std::move(quellen), bestand = import->bestand, abbruch = import->abbruch] {
            return hole(ordner, quellen, bestand.get(), *abbruch);
        },
        [this, import](const Kopierstapel& stapel) { landeKopien(import, stapel); });
}

void Bibliothek::landeKopien(const std::shared_ptr<Import>& import, const Kopierstapel& stapel) {
    std::size_t erledigt = stapel.kopien.size();
    for (const Kopierstapel::Kopie& kopie : stapel.kopien) {
        if (kopie.ziel.empty()) {
            meldeFehlkopie(kopie.quelle, kopie.fehler);
        } else {
            import->gefundene.push_back(kopie.ziel);
            if (!import->bestand || !kennt(kopie.ziel)) {
                import->neue.push_back(kopie.ziel);
            }
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
    if (import.gefunden && !import.gefundene.empty() && import.ordner == ordner_.wert()) {
        import.gefunden(import.gefundene);
    }
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
