#include "cli/Liste.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>

#include "base/ArbeiterPool.h"
#include "base/Hauptschlange.h"
#include "cli/Abschluss.h"
#include "cli/Ausgabe.h"
#include "cli/Fortschritt.h"
#include "cli/Terminal.h"
#include "i18n/AppSprache.h"
#include "library/Bibliothek.h"
#include "platform/Ressourcen.h"
#include "platform/posix/DateiEinstellungen.h"
#include "platform/posix/PosixSystemumgebung.h"

namespace spurkiste {

namespace {

using terminal::Strom;

/// Draws the progress bar while the library reads, at most twenty times a second.
class Anzeige {
  public:
    Anzeige(const Bibliothek& bibliothek, Ausfuehrer& hauptfaden) : bibliothek_(bibliothek), hauptfaden_(hauptfaden) {
        if (const auto breite = terminal::breite(Strom::fehler)) {
            balken_.emplace(*breite);
            abo_ = bibliothek.ausstehend().beobachte([this] { plane(); });
        }
    }
    Anzeige(const Anzeige&) = delete;
    Anzeige& operator=(const Anzeige&) = delete;
    ~Anzeige() {
        if (balken_) {
            schreibe(stderr, balken_->raeumeAuf());
        }
    }

  private:
    using Uhr = std::chrono::steady_clock;

    /// The new number can only be read in a later turn.
    void plane() {
        if (!geplant_ && Uhr::now() >= naechstes_) {
            geplant_ = true;
            hauptfaden_.fuehreAus([this] { zeichne(); });
        }
    }

    void zeichne() {
        geplant_ = false;
        naechstes_ = Uhr::now() + std::chrono::milliseconds(50);
        if (const auto zeile = balken_->zeile(bibliothek_.ausstehend().wert())) {
            schreibe(stderr, *zeile);
        }
    }

    const Bibliothek& bibliothek_;
    Ausfuehrer& hauptfaden_;
    std::optional<Fortschritt> balken_;
    Abo abo_;
    bool geplant_ = false;
    Uhr::time_point naechstes_;
};

void gibAus(const Aufruf& aufruf, const Bibliothek::Eintraege& eintraege) {
    const ausgabe::Senke senke = [](std::string_view text) { schreibe(stdout, text); };
    switch (aufruf.format) {
        case Aufruf::Format::json:
            ausgabe::alsJson(eintraege, senke);
            break;
        case Aufruf::Format::csv:
            ausgabe::alsCsv(eintraege, aufruf.roh ? Textform::roh : Textform::sicher, senke);
            break;
        case Aufruf::Format::tabelle:
            ausgabe::alsTabelle(eintraege, Ansichtstexte::aktuelle(), terminal::breite(Strom::ausgabe),
                                terminal::mitFarben(Strom::ausgabe), senke);
            break;
    }
}

}  // namespace

int liste(const Aufruf& aufruf) {
    if (aufruf.ressourcen) {
        ressourcen::setzeOrdner(*aufruf.ressourcen);
    }
    DateiEinstellungen einstellungen(DateiEinstellungen::ortDerSuite(DateiEinstellungen::kSuite).value_or(""));
    const PosixSystemumgebung umgebung;
    AppSprache::richteEin(&einstellungen, &umgebung);
    Hauptschlange hauptfaden;
    ArbeiterPool arbeiter;
    Bibliothek bibliothek({einstellungen, nullptr, umgebung, hauptfaden, arbeiter, !aufruf.ohneCache}, aufruf.ordner);
    {
        const Anzeige anzeige(bibliothek, hauptfaden);
        bibliothek.lade([&] { hauptfaden.beende(); });
        hauptfaden.laufe();
    }
    if (const auto& hinweis = bibliothek.hinweis().wert()) {
        schreibeZeile(stderr, *hinweis);
        return 1;
    }
    const auto& lesefehler = bibliothek.lesefehler().wert();
    for (const auto& [pfad, grund] : lesefehler) {
        schreibeZeile(stderr, std::string(pfad).append(": nicht lesbar: ").append(grund));
    }
    const auto& ortsfehler = bibliothek.ortsfehler();
    if (ortsfehler) {
        schreibeZeile(stderr, "Ortsnamen nicht bestimmt: " + ortsfehler.message());
    }
    gibAus(aufruf, bibliothek.eintraege().wert());
    return schliesseAusgabeAb(lesefehler.empty() && !ortsfehler ? 0 : 1);
}

}  // namespace spurkiste
