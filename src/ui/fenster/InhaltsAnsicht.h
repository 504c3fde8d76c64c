#pragma once

#include <QDialog>
#include <QMimeData>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/Meldestelle.h"
#include "library/Bibliothek.h"
#include "platform/Dateimanager.h"
#include "platform/Einstellungen.h"
#include "sicht/Ansichtsbild.h"
#include "sicht/Zeilenbau.h"
#include "ui/detail/DetailAnsicht.h"
#include "ui/fenster/Auffrischung.h"
#include "ui/fenster/Dateiablage.h"
#include "ui/fenster/Filterleiste.h"
#include "ui/fenster/Hauptteiler.h"
#include "ui/fenster/Kopf.h"
#include "ui/fenster/Kopierblatt.h"
#include "ui/fenster/Statusleiste.h"
#include "ui/fenster/Tasten.h"
#include "ui/fenster/Werkzeuge.h"
#include "ui/tabelle/TabellenAnsicht.h"
#include "ui/teile/Leerbild.h"

namespace spurkiste {

/// A main window: wires the library, the picture of it and the widgets that show the picture's pieces, and draws
/// nothing itself. Any number of them may show the same library, each with its own state. GUI thread.
class InhaltsAnsicht final : public QWidget {
    Q_OBJECT

  public:
    /// `sprachwechsel` is told when the language changes, by whichever window. In `werkstatt` rows are made when
    /// there are many. Everything must outlive the window.
    InhaltsAnsicht(Bibliothek& bibliothek, Einstellungen& einstellungen, Dateimanager& dateimanager,
                   const Meldestelle& sprachwechsel, const Zeilenbau::Werkstatt& werkstatt = {});

    /// Opens files, absolute paths, in the library (Bibliothek::oeffne), and selects and shows each as soon as it is in
    /// the list. Waits for the window's first load.
    void oeffneDateien(const std::vector<std::string>& pfade);

    /// Brings the window before the others, minimised or not.
    void kommNachVorn();

  Q_SIGNALS:
    /// The user asked for one more window.
    void neuesFensterGewuenscht();
    /// The user has chosen another library folder, an absolute path in the system's bytes.
    void ordnerGewaehlt(const std::string& pfad);

  protected:
    void paintEvent(QPaintEvent* ereignis) override;
    void closeEvent(QCloseEvent* ereignis) override;
    bool eventFilter(QObject* quelle, QEvent* ereignis) override;
    void dragEnterEvent(QDragEnterEvent* ereignis) override;
    void dragMoveEvent(QDragMoveEvent* ereignis) override;
    void dragLeaveEvent(QDragLeaveEvent* ereignis) override;
    void dropEvent(QDropEvent* ereignis) override;

  private:
    void ordneAn();
    void verbinde();
    void belegeTasten();
    void fuehreAus(Fenstertat tat);
    void kopiere();
    void fuegeEin();
    void bitteUmMenue();
    void legeBlatt(const std::function<QDialog*()>& mach);
    void oeffneTastenblatt();
    void oeffneUeberblatt();
    void nimmZurueck(Richtung richtung);
    void waehleBetroffene(const std::vector<std::string>& pfade);
    void verlasseSuche();
    void leereOderVerlasseSuche();
    void stelleWiederHer();
    void frischeAuf();
    [[nodiscard]] Ansichtszustand::Oeffnung oeffnung();
    [[nodiscard]] bool folgtDieAuswahl() const;
    void legeLeereTabelle();
    void aendere(const Filterleiste::Aenderung& aenderung);
    void waehleSprache(const QString& code);
    void sprichNeu();
    void ladeErstmals();
    void zeigeAusgewaehlten(const Eintrag& eintrag);

    void verbindeDetail();

    void verbindeAktionen();
    void waehleImport();
    void importiereAlle(const QMimeData& daten, bool nurFremde);
    void waehleOrdner();
    void oeffneKontextmenue(const QPoint& wo);
    void oeffneUmbenennen(const std::string& pfad);
    void wirfWeg();
    void setzeTasten(bool an);
    [[nodiscard]] bool mussNochKopieren() const;
    void oeffneKopierblatt();
    [[nodiscard]] Eintrag eintragMit(const std::string& pfad) const;
    void importiere(const std::vector<std::string>& pfade, std::size_t zusammen);
    [[nodiscard]] Bibliothek::Gefunden zeigeSobaldDa();
    [[nodiscard]] bool koennenGezeigtWerden() const;
    void zeigeGeoeffnete();
    void zeigeImDateimanager(const std::string& pfad);
    void bereinigeAuswahl();

    Bibliothek& bibliothek_;
    Einstellungen& einstellungen_;
    Dateimanager& dateimanager_;
    const Meldestelle& sprachwechsel_;
    Ansichtstexte texte_;
    Ansichtszustand zustand_;
    bool eintraegeNeu_ = false;                 ///< the records changed since the rows were last brought up to them
    Filterwahl letzteFilter_;                   ///< those of the last refresh
    std::string letzteSuche_;                   ///< that of the last refresh
    bool hinweisNeu_ = false;                   ///< a notice was given since the last refresh
    bool gezeigt_ = false;                      ///< the first frame has been painted
    QTimer geduld_;                             ///< runs while it need not yet be said that the library is being opened
    bool geladen_ = false;                      ///< the window's first load is over
    std::vector<std::string> wartend_;          ///< files to open after it
    std::unordered_set<std::string> zuZeigen_;  ///< files to show whose rows are not there yet
    bool zeigtErste_ = false;                   ///< none of them has been selected yet
    bool zeigtZusammen_ = false;                ///< they are many
    bool rolltZurAuswahl_ = false;              ///< as soon as the rows are up to the records
    bool hatGeladen_ = false;                   ///< the last refresh was during a load

    Werkzeuge* werkzeuge_;
    Hauptteiler* teiler_;
    Kopf* kopf_;
    Filterleiste* filter_;
    TabellenAnsicht* tabelle_;
    Leerbild* leereTabelle_;
    DetailAnsicht* detail_;
    Statusleiste* status_;
    Dateiablage* ablage_;
    QPointer<QDialog> blatt_;            ///< the sheet over the window, while there is one
    QPointer<Kopierblatt> kopierblatt_;  ///< the same, while the window waits to be closed
    Auffrischung auffrischung_;
    Auffrischung auswahlauffrischung_;  ///< the same after a gesture that changed nothing but the selection
    Zeilenbau zeilenbau_;
    std::vector<Abo> abos_;
};

}  // namespace spurkiste
