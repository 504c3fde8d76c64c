// How files come into the library: the copies, made one at a time away from the main thread, and then their reading.

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Kopie.h"
#include "base/Text.h"
#include "library/Bibliothek.h"

namespace spurkiste {

/// One call of importiere(). Bound to the main thread.
struct Bibliothek::Import {
    std::deque<std::string> quellen;  ///< what is still to be copied
    std::string ordner;               ///< where to, whatever folder the library has meanwhile
    std::int64_t generation;
    std::vector<std::string> neue;  ///< the copies that succeeded
    Fertig fertig;
};

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

Ausgang versucheKopie(const std::string& ordner, const std::string& quelle) {
    try {
        return {kopiereIn(ordner, quelle), {}};
    } catch (const std::system_error& fehler) {
        return {{}, fehler.code().message()};
    } catch (const std::bad_alloc&) {
        return {{}, std::generic_category().message(ENOMEM)};
    }
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
    importe_.push_back(import);
    if (importe_.size() == 1) {
        kopiereNaechste();
    }
}

void Bibliothek::kopiereNaechste() {
    const auto import = importe_.front();
    Ausfuehrer& kopierer = anschluesse_.kopierer != nullptr ? *anschluesse_.kopierer : anschluesse_.arbeiter;
    rueckweg_.hinUndZurueck(
        kopierer,
        [ordner = import->ordner, quelle = std::move(import->quellen.front())] {
            return versucheKopie(ordner, quelle);
        },
        [this, import](const Ausgang& ausgang) { landeKopie(*import, ausgang.ziel, ausgang.fehler); });
    import->quellen.pop_front();
}

void Bibliothek::landeKopie(Import& import, const std::string& ziel, const std::string& fehler) {
    if (ziel.empty()) {
        hinweis_.setze("Import fehlgeschlagen: " + fehler);
    } else {
        import.neue.push_back(ziel);
    }
    if (!import.quellen.empty()) {
        kopiereNaechste();
        return;
    }
    const auto fertiger = std::move(importe_.front());
    importe_.pop_front();
    if (!importe_.empty()) {
        kopiereNaechste();
    }
    // A load of the same folder that began meanwhile has listed it before the copies were there. They are its files as
    // much as if they had been made in the call.
    const bool verpasst = !fertiger->neue.empty() && fertiger->ordner == ordner_.wert();
    parseUndHaengeAn(fertiger->neue, verpasst ? generation_ : fertiger->generation, std::move(fertiger->fertig));
}

}  // namespace spurkiste
