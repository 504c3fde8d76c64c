#pragma once

#include <QApplication>
#include <optional>
#include <string>
#include <vector>

#include "app/Einzelinstanz.h"
#include "base/ArbeiterPool.h"
#include "base/Meldestelle.h"
#include "library/Bibliothek.h"
#include "platform/gio/GioPapierkorb.h"
#include "platform/posix/DateiEinstellungen.h"
#include "platform/posix/PosixSystemumgebung.h"
#include "platform/qt/QtAusfuehrer.h"
#include "platform/qt/QtDateimanager.h"
#include "platform/qt/QtWecker.h"
#include "ui/teile/Baukastensprache.h"

namespace spurkiste {

class InhaltsAnsicht;

/// The application: owns what there is once per run, the library before all, and opens the windows on it. GUI thread.
class SpurkisteApp {
  public:
    /// `ordner` is the library folder of this run; absent, the settings say which. The toolkit's application object
    /// must exist and outlive this one. Throws std::runtime_error when no library folder can be chosen.
    explicit SpurkisteApp(const std::optional<std::string>& ordner);
    SpurkisteApp(const SpurkisteApp&) = delete;
    SpurkisteApp& operator=(const SpurkisteApp&) = delete;
    ~SpurkisteApp();

    /// Takes the library's folder for this program, or hands the files over to the one that has it.
    [[nodiscard]] Einzelinstanz::Ausgang beginne(const Einzelinstanz::Nachricht& nachricht);

    /// Runs until the last window closes, or somebody asks the program to end, and returns the exit status.
    [[nodiscard]] int laufe();

    /// Shows files of the library and imports others, in the window that is used now, which comes to the front; opens
    /// one when there is none. `marke` is the desktop's permission for that; empty when it gave none.
    void oeffneDateien(const std::vector<std::string>& pfade, const std::string& marke);

    /// Opens one more window; it starts a load once its first frame stands. Deletes itself when it is closed.
    InhaltsAnsicht& oeffneFenster();

  private:
    void sprichNeu();
    void wechsleOrdner(const std::string& ordner);

    Einzelinstanz instanz_;  // keeps the folder until all that is in hand is written
    DateiEinstellungen einstellungen_;
    DateiEinstellungen altbestand_;
    PosixSystemumgebung umgebung_;
    QtAusfuehrer hauptfaden_;  // outlives those that post to it
    QtWecker wecker_;
    ArbeiterPool arbeiter_;
    ArbeiterPool hintergrund_{1};
    ArbeiterPool zeilenmacher_{1};
    ArbeiterPool kopierer_{1};
    ArbeiterPool schreiber_{1, ArbeiterPool::AmEnde::kommtDran};  // whatever the user has asked for is done
    ArbeiterPool cacheschreiber_{1, ArbeiterPool::AmEnde::kommtDran};
    GioPapierkorb papierkorb_{schreiber_};  // after what is still to be written
    QtDateimanager dateimanager_;
    Meldestelle sprachwechsel_;
    Abo sprachabo_;
    Baukastensprache baukasten_;
    std::optional<Bibliothek> bibliothek_;
};

}  // namespace spurkiste
