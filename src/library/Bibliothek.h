#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/Ausfuehrer.h"
#include "base/Rueckweg.h"
#include "base/Veroeffentlicht.h"
#include "base/Wecker.h"
#include "library/Aenderungsprotokoll.h"
#include "library/CacheDienst.h"
#include "library/Listenordnung.h"
#include "library/Ordnerlesung.h"
#include "library/Pfadverzeichnis.h"
#include "library/Verlauf.h"
#include "platform/Einstellungen.h"
#include "platform/Papierkorb.h"
#include "platform/Systemumgebung.h"
#include "track/GpxMetadaten.h"
#include "track/GpxSportart.h"

namespace spurkiste {

struct Kopierstapel;

/// The library of the run: a folder, the records of its GPX files, and what there is to say about them. One object
/// per run, bound to the main thread, which only keeps the list: reading, sorting and writing happen elsewhere. Ending
/// it drops whatever is still being read, and hands over what is still to be cached.
class Bibliothek {
  public:
    /// What the library needs from outside; everything must outlive it.
    struct Anschluesse {
        Einstellungen& einstellungen;     ///< the settings of this program
        const Einstellungen* altbestand;  ///< the settings of its predecessor, only read; may be null
        const Systemumgebung& umgebung;
        Ausfuehrer& hauptfaden;  ///< runs tasks on the main thread
        Ausfuehrer& arbeiter;    ///< runs tasks anywhere, several at once
        bool mitCache = true;    ///< false: the cache file is neither read nor written
        /// Runs tasks away from the main thread, one after the other in the order in which they came, and at its end
        /// runs those that still wait: what writes into the user's files. Null: `arbeiter` does it, which must then
        /// keep that order.
        Ausfuehrer* schreiber = nullptr;
        /// The same for the copies of an import, except that waiting tasks may be dropped. Null: `arbeiter` does it.
        Ausfuehrer* kopierer = nullptr;
        Papierkorb* papierkorb = nullptr;  ///< null: nothing can be moved to the trash, which a notice then says
        /// Runs what concerns the whole library: looking into the folder, sorting, labelling. Must not be busy with the
        /// reading of files for long. Waiting tasks may be dropped. Null: `arbeiter` does it.
        Ausfuehrer* hintergrund = nullptr;
        /// Writes the cache: one task after the other, and at its end those that still wait. Null: `arbeiter` does it.
        Ausfuehrer* cacheschreiber = nullptr;
        /// Sees to it that many imports are sorted, labelled and cached together, but once a second at least. Null:
        /// each by itself.
        Wecker* wecker = nullptr;
    };

    /// The records in library order: while a load runs the cached ones, then the others as they were read; afterwards
    /// by path.
    using Eintraege = std::vector<Eintrag>;

    /// Called on the main thread when an operation has ended, whatever its outcome, and the cache that it made due is
    /// written. May be empty.
    using Fertig = std::function<void()>;

    /// Called on the main thread with paths of the library's files that the user has opened: their records are in the
    /// list, or come as soon as the files have been read.
    using Gefunden = std::function<void(const std::vector<std::string>&)>;

    /// Chooses the folder from the settings: the program's own, else the predecessor's (which is then taken over),
    /// else "GPX-Bibliothek" on the archive volume or in the user's documents. Touches no file of the library.
    /// Throws std::runtime_error when the default is needed and the user has no documents folder.
    explicit Bibliothek(const Anschluesse& anschluesse);

    /// On a given folder, for this run only; the settings are not asked and not changed. Relative paths are made
    /// absolute.
    Bibliothek(const Anschluesse& anschluesse, const std::string& ordner);

    Bibliothek(const Bibliothek&) = delete;
    Bibliothek& operator=(const Bibliothek&) = delete;
    ~Bibliothek();

    /// Reads the folder anew: first what the cache has of unchanged files, in one change of `eintraege`, then all
    /// others, one change each; at the end the list is sorted, labelled and cached. Until the first of these changes
    /// the list stays as it is. Failures end in `hinweis`.
    void lade(Fertig fertig = {});

    /// Copies files, absolute paths of any kind of file, into the folder, one after the other and away from the main
    /// thread, and reads the copies. What has not the extension "gpx" or lies directly in the folder already is passed
    /// over; a name that is taken gets a number. Records appear as they are read; the list is sorted, labelled and
    /// cached when no other import waits, or now and then meanwhile. Failed copies end in `hinweis`.
    /// `gefunden` hears of the copies once all are made.
    void importiere(const std::vector<std::string>& pfade, Fertig fertig = {}, Gefunden gefunden = {});

    /// Takes files that the user opens from outside, absolute paths. One that lies in the folder, by whatever way the
    /// path leads there, is read if the list does not know it as it is now; any other is copied as by importiere(),
    /// unless the folder has a file with the same bytes. `gefunden`, which must not be empty, hears of them in one or
    /// more calls. What cannot be opened ends in `hinweis`.
    void oeffne(const std::vector<std::string>& pfade, const Gefunden& gefunden);

    /// Makes no more copies but the one in hand; what has been copied stays and is read.
    void brichImporteAb();

    /// Renames the record's file to what the user typed, cleaned. Returns the new path; nothing when no file was
    /// moved, because the name says nothing new or, with a notice, because it cannot be had.
    std::optional<std::string> benenneUm(const GpxMetadaten& eintrag, std::string_view neuerName);

    /// Moves the files of the records with these paths to the trash; their records go when the trash has them. What
    /// has been asked for already is not asked again; a file that gets another name meanwhile is found under that one.
    /// Failures end in `hinweis`, and so does the name of a file that had vanished, whose record goes as well.
    void inPapierkorb(const std::unordered_set<std::string>& kennungen);

    /// Writes the sport into the record's file, reads it back and replaces the record. Changes are carried out in the
    /// order in which they were asked for. Failures end in `hinweis`, a success clears it.
    void setzeSportart(GpxSportart art, const GpxMetadaten& eintrag, Fertig fertig = {});

    /// What has become of one step that was to be taken back or done again.
    struct Zurueckgenommen {
        std::string text;                ///< what there is to say of it, one line; empty when nothing was done
        std::vector<std::string> pfade;  ///< the files of the library that it concerned, as they are called now
    };
    using NachRuecknahme = std::function<void(const Zurueckgenommen&)>;

    /// Takes back the newest renaming, move to the trash or change of a sport that has not been taken back yet, or does
    /// again what was taken back last. What is still being done is waited for; several calls are carried out one after
    /// the other. Files that have changed since are left alone, which a notice says, and so are failures. Another
    /// folder makes all of it forgotten. `fertig`, which may be empty, is called as soon as the list shows it.
    void nimmZurueck(Richtung richtung, NachRuecknahme fertig = {});

    /// Makes another folder, an absolute path, the library, remembers it in the settings, and starts to load it.
    void wechsleOrdner(const std::string& ordner);

    /// A notice about the library from somebody else, one line; it stays as long as one of the library's own.
    void weiseHin(std::string hinweis) { hinweis_.setze(std::move(hinweis)); }

    /// Those of the paths whose files the newest load or an import is reading, or has failed to read. Their records may
    /// be missing from the list for that long.
    [[nodiscard]] std::unordered_set<std::string> werdenGelesen(const std::unordered_set<std::string>& pfade) const;

    [[nodiscard]] const Veroeffentlicht<Eintraege>& eintraege() const { return eintraege_; }
    /// True while at least one run of reading is active.
    [[nodiscard]] const Veroeffentlicht<bool>& laedt() const { return laedt_; }
    /// The notice for the user, one line; absent when there is none.
    [[nodiscard]] const Veroeffentlicht<std::optional<std::string>>& hinweis() const { return hinweis_; }
    /// The library folder, an absolute path.
    [[nodiscard]] const Veroeffentlicht<std::string>& ordner() const { return ordner_; }
    /// False until the folder's records, or why there are none, have been published for the first time.
    [[nodiscard]] const Veroeffentlicht<bool>& geoeffnet() const { return geoeffnet_; }
    /// How many files are still to be copied into the library, the one in hand included.
    [[nodiscard]] const Veroeffentlicht<std::size_t>& zuKopieren() const { return zuKopieren_; }
    /// How many files the active runs have still to read.
    [[nodiscard]] const Veroeffentlicht<std::size_t>& ausstehend() const { return ausstehend_; }

  private:
    struct Lauf;
    struct Ladung;
    struct Import;
    struct Sportwechsel;
    struct Ruecknahme;
    /// Called when the trash has answered and the list knows it.
    using Geworfen = std::function<void(const Papierkorb::Ergebnis&)>;
    /// Waits for a settled list.
    struct Abschluss {
        bool endetLauf = false;  ///< counts in ladeLaeufe_
        Fertig fertig;
    };

    [[nodiscard]] std::string standardOrdner() const;
    [[nodiscard]] Ausfuehrer& hintergrund() const;

    void leseOrdner(const std::shared_ptr<Ladung>& ladung);
    void landeLadung(const std::shared_ptr<Ladung>& ladung, Ordnerlesung& lesung);
    void parseUndHaengeAn(std::vector<std::string> dateien, std::int64_t generation, Fertig fertig,
                          bool sindKopien = false);
    void lies(const std::shared_ptr<Lauf>& lauf, const std::shared_ptr<const std::vector<std::string>>& dateien,
              std::size_t nummer);
    void lande(const std::shared_ptr<Lauf>& lauf, const std::string& pfad, Eintrag ergebnis);
    void beendeLauf();

    void schliesseAb(Abschluss abschluss);
    void ordne();
    void landeOrdnung(std::uint64_t nummer, listenordnung::Ergebnis& ergebnis);
    [[nodiscard]] std::vector<Fertig> beende(std::vector<Abschluss> abschluesse);
    [[nodiscard]] bool wartetAufImporte();
    [[nodiscard]] bool istEtwasFaellig() const;
    void ueberhole();
    void speichereCache(std::vector<Fertig> fertige = {});

    void reiheEin(const std::shared_ptr<Import>& import);
    [[nodiscard]] bool kennt(const std::string& pfad) const;
    void kopiereNaechste();
    void beendeKopien();
    void landeKopien(const std::shared_ptr<Import>& import, const Kopierstapel& stapel);
    void liesImport(Import& import);
    void meldeFehlkopie(const std::string& quelle, const std::string& fehler);
    [[nodiscard]] bool verschiebe(const std::string& alt, const std::string& neu, const std::string& name);
    void zieheUm(const std::string& alt, const std::string& neu);
    void trageUmbenennungNach(const std::string& alt, const std::string& neu);
    void wirfWeg(std::vector<std::string> pfade, Geworfen danach);
    void landeWurf(const std::vector<std::string>& gefragte, const Papierkorb::Ergebnis& ergebnis,
                   const Geworfen& danach);
    void schreibeSportart(const std::shared_ptr<Sportwechsel>& wechsel);
    [[nodiscard]] bool versucheNocheinmal(const std::shared_ptr<Sportwechsel>& wechsel, const std::string& pfad,
                                          bool gelungen);
    void vermerke(const Sportwechsel& wechsel, const std::optional<GpxUmkehr>& umkehr);
    void beendeSchritt(Verlauf::Nummer schritt);
    void gehImVerlaufWeiter();
    void benenneZurueck(Ruecknahme& ruecknahme);
    void stelleWiederHer(const std::shared_ptr<Ruecknahme>& ruecknahme);
    void wirfWiederWeg(const std::shared_ptr<Ruecknahme>& ruecknahme);
    void beendeRuecknahme(Ruecknahme& ruecknahme);
    void landeSportwechsel(const std::shared_ptr<Sportwechsel>& wechsel, Eintrag neuer, const std::string& fehler);

    void fuegeEin(Eintrag eintrag);
    void entferne(const std::vector<std::string>& pfade);
    void setzeEintraege(Eintraege eintraege, Pfadverzeichnis verzeichnis);
    [[nodiscard]] bool rechnetWer() const { return ladung_ != nullptr || ordnet_; }

    Anschluesse anschluesse_;
    Veroeffentlicht<Eintraege> eintraege_{{}};
    Veroeffentlicht<bool> laedt_{false};
    Veroeffentlicht<std::optional<std::string>> hinweis_{std::nullopt};
    Veroeffentlicht<std::string> ordner_{{}};
    Veroeffentlicht<bool> geoeffnet_{false};
    Veroeffentlicht<std::size_t> zuKopieren_{0};
    Veroeffentlicht<std::size_t> ausstehend_{0};
    std::int64_t generation_ = 0;
    std::int64_t ladeLaeufe_ = 0;
    Pfadverzeichnis verzeichnis_;                  // of eintraege_
    std::shared_ptr<Ladung> ladung_;               // the newest load, until it publishes; meanwhile nothing is settled
    std::vector<std::shared_ptr<Lauf>> laeufe_;    // those whose results still count
    bool ordnet_ = false;                          // the list is being settled
    std::uint64_t ordnung_ = 0;                    // counts the settlings, so that an overtaken one is known
    std::vector<Abschluss> inOrdnung_;             // wait for the settling under way
    std::vector<Abschluss> abschluesse_;           // wait for the next
    bool cacheFaellig_ = false;                    // as soon as the load has published
    Aenderungsprotokoll protokoll_;                // since the load or the settling under way began
    std::deque<std::shared_ptr<Import>> importe_;  // those with files to copy; one batch at a time
    std::size_t importlaeufe_ = 0;                 // runs that read copies
    std::size_t fehlkopien_ = 0;                   // since no import waited
    bool weckerLaeuft_ = false;                    // of the imports that settle together
    bool geweckt_ = false;                         // it has rung and the list has not been settled since
    std::vector<std::string> eingefuegte_;         // paths of records since the last settling began
    std::unordered_map<std::string, std::string> wuerfe_;  // what the trash was told, and where the file is now
    std::vector<std::shared_ptr<Sportwechsel>> wechsel_;   // those whose file is being written
    Verlauf verlauf_;
    std::deque<std::shared_ptr<Ruecknahme>> ruecknahmen_;  // the first one may be under way
    bool nimmtZurueck_ = false;                            // it is
    CacheDienst cache_;
    Rueckweg rueckweg_;  // of what is done away from the main thread
};

}  // namespace spurkiste
