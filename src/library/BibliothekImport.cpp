// How files come into the library: the copies, made one at a time away from the main thread, and then their reading.

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Kopie.h"
#include "base/Text.h"
#include "library/BibliothekLaeufe.h"
#include "library/Oeffnung.h"

namespace spurkiste {

namespace {

bool liegtIn(const std::string& ordner, const std::string& pfad) {
    return dateien::kindPfad(ordner, dateien::letzterTeil(pfad)) == pfad;
}

/// Puts a copy of the file into the folder, under the first free one of its names, and returns its path.
/// Throws std::system_error.
std::string kopiereIn(const std::string& ordner, const std::string& quelle) {
    dateien::Kopie kopie(quelle, ordner);
    const std::string name(dateien::letzterTeil(quelle));
    const std::string stamm(dateien::ohneEndung(name));
    std::string ziel = dateien::kindPfad(ordner, name);
    for (std::int64_t zaehler = 2; !kopie.stelleHin(ziel); ++zaehler) {
        ziel = dateien::kindPfad(ordner, stamm + " " + std::to_string(zaehler) + ".gpx");
    }
    return ziel;
}

/// What became of one copy: its path, or why there is none.
struct Ausgang {
    std::string ziel;
    std::string fehler;
};

Ausgang versucheKopie(const std::string& ordner, const std::string& quelle, bool nurNeues) {
    try {
        if (auto gleiche = nurNeues ? oeffnung::gleiche(ordner, quelle) : std::nullopt) {
            return {std::move(*gleiche), {}};
        }
        return {kopiereIn(ordner, quelle), {}};
    } catch (const std::system_error& fehler) {
        return {{}, fehler.code().message()};
    } catch (const std::bad_alloc&) {
        return {{}, std::generic_category().message(ENOMEM)};
    }
}

}  // namespace

void Bibliothek::importiere(const std::vector<std::string>& pfade, Fertig fertig, Gefunden gefunden) {
    const auto import = std::make_shared<Import>(
        Import{{}, ordner_.wert(), generation_, {}, std::move(fertig), std::move(gefunden), false, {}});
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
    const auto import = importe_.front();
    std::string quelle = std::move(import->quellen.front());
    import->quellen.pop_front();
    Ausfuehrer& kopierer = anschluesse_.kopierer != nullptr ? *anschluesse_.kopierer : anschluesse_.arbeiter;
    rueckweg_.hinUndZurueck(
        kopierer,
        [ordner = import->ordner, quelle, nurNeues = import->nurNeues] {
            return versucheKopie(ordner, quelle, nurNeues);
        },
        [this, import, quelle](const Ausgang& ausgang) { landeKopie(import, quelle, ausgang.ziel, ausgang.fehler); });
}

void Bibliothek::landeKopie(const std::shared_ptr<Import>& import, const std::string& quelle, const std::string& ziel,
                            const std::string& fehler) {
    zuKopieren_.setze(zuKopieren_.wert() - 1);
    if (ziel.empty()) {
        meldeFehlkopie(quelle, fehler);
    } else {
        import->gefundene.push_back(ziel);
        if (!import->nurNeues || !kennt(ziel)) {
            import->neue.push_back(ziel);
        }
    }
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

void Bibliothek::brichImporteAb() {
    if (importe_.empty()) {
        return;
    }
    const auto wartende = std::exchange(importe_, {importe_.front()});  // whose copy is in hand
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
