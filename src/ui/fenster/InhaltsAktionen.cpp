// What the user does to files from the window: choosers, drops, the menu of the rows, the sheet for a new name.

#include <QApplication>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QFileDialog>
#include <QMimeData>
#include <QPointer>
#include <QShortcut>
#include <algorithm>
#include <utility>
#include <vector>

#include "base/Dateien.h"
#include "base/Text.h"
#include "sicht/UriListe.h"
#include "ui/fenster/Importordner.h"
#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/UmbenennenDialog.h"
#include "ui/tabelle/Zeilenkopie.h"
#include "ui/teile/PapierMenue.h"
#include "ui/teile/Textmenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr auto kUriListe = "text/uri-list";

/// A chooser that opens without waiting for its answer, and goes when it has given it.
QFileDialog* neuerWaehler(QWidget* fenster, const QString& botschaft, const QString& knopf) {
    auto* waehler = new QFileDialog(fenster, botschaft);
    waehler->setAttribute(Qt::WA_DeleteOnClose);
    waehler->setLabelText(QFileDialog::Accept, knopf);
    waehler->setLabelText(QFileDialog::Reject, QStringLiteral("Abbrechen"));
    return waehler;
}

/// Its fields exist only now, and where the desktop has a chooser of its own there are none.
void oeffne(QFileDialog& waehler) {
    waehler.open();
    for (QLineEdit* feld : waehler.findChildren<QLineEdit*>()) {
        textmenue::kleide(*feld);
    }
}

std::string systempfad(const QString& pfad) {
    return QFile::encodeName(pfad).toStdString();
}

std::vector<std::string> lokaleDateien(const QMimeData& daten) {
    const bool ueblich = daten.hasFormat(QLatin1String(kUriListe));
    const QByteArray liste = daten.data(QLatin1String(ueblich ? kUriListe : zeilenkopie::kDateimanager));
    return uriliste::pfade({liste.constData(), static_cast<std::size_t>(liste.size())});
}

}  // namespace

void InhaltsAnsicht::verbindeAktionen() {
    connect(werkzeuge_, &Werkzeuge::importGewuenscht, this, &InhaltsAnsicht::waehleImport);
    connect(werkzeuge_, &Werkzeuge::ordnerwechselGewuenscht, this, &InhaltsAnsicht::waehleOrdner);
    connect(tabelle_, &TabellenAnsicht::kontextmenueGewuenscht, this, &InhaltsAnsicht::oeffneKontextmenue);
    connect(tabelle_, &TabellenAnsicht::zeileGeoeffnet, this, &InhaltsAnsicht::oeffneUmbenennen);
    connect(tabelle_, &TabellenAnsicht::loeschenGewuenscht, this, &InhaltsAnsicht::wirfWeg);
    setAcceptDrops(true);
}

void InhaltsAnsicht::waehleImport() {
    QFileDialog* waehler =
        neuerWaehler(this, QStringLiteral("GPX-Dateien in die Bibliothek kopieren"), QStringLiteral("Importieren"));
    waehler->setFileMode(QFileDialog::ExistingFiles);
    waehler->setNameFilter(QStringLiteral("GPX (*.gpx)"));
    waehler->setDirectory(importordner::lies(einstellungen_));
    connect(waehler, &QFileDialog::filesSelected, this, [this](const QStringList& gewaehlt) {
        std::vector<std::string> pfade(static_cast<std::size_t>(gewaehlt.size()));
        std::transform(gewaehlt.begin(), gewaehlt.end(), pfade.begin(), systempfad);
        importordner::merke(einstellungen_, gewaehlt);
        importiere(pfade, pfade.size());
    });
    oeffne(*waehler);
}

/// Imports the files that another program hands over, on request without those that are in the library already.
void InhaltsAnsicht::importiereAlle(const QMimeData& daten, bool nurFremde) {
    auto dateien = lokaleDateien(daten);
    if (nurFremde) {
        std::erase_if(dateien, [this](const std::string& pfad) { return eintragMit(pfad) != nullptr; });
    }
    for (const std::string& pfad : dateien) {
        importiere({pfad}, dateien.size());
    }
}

void InhaltsAnsicht::waehleOrdner() {
    QFileDialog* waehler = neuerWaehler(this, QStringLiteral("Bibliotheksordner wählen"), QStringLiteral("Wählen"));
    waehler->setFileMode(QFileDialog::Directory);
    waehler->setOption(QFileDialog::ShowDirsOnly);
    waehler->setDirectory(QFile::decodeName(bibliothek_.ordner().wert().c_str()));
    connect(waehler, &QFileDialog::fileSelected, this,
            [this](const QString& ordner) { Q_EMIT ordnerGewaehlt(systempfad(ordner)); });
    oeffne(*waehler);
}

void InhaltsAnsicht::oeffneKontextmenue(const QPoint& wo) {
    auto auswahl = tabelle_->gezeigteAuswahl();
    if (auswahl.empty()) {
        return;
    }
    constexpr int breite = 196;
    auto* menue = new PapierMenue(breite, this);
    menue->setAttribute(Qt::WA_DeleteOnClose);
    menue->setAccessibleName(QStringLiteral("Aktionen"));
    if (auswahl.size() == 1 && eintragMit(*auswahl.begin())) {
        const std::string pfad = *auswahl.begin();
        connect(menue->addAction(QStringLiteral("Umbenennen")), &QAction::triggered, this,
                [this, pfad] { oeffneUmbenennen(pfad); });
        connect(menue->addAction(QStringLiteral("Im Finder zeigen")), &QAction::triggered, this,
                [this, pfad] { zeigeImDateimanager(pfad); });
        menue->addSeparator();
    }
    connect(menue->fuegeLoeschenHinzu(QStringLiteral("In den Papierkorb")), &QAction::triggered, this,
            [this, auswahl = std::move(auswahl)] { bibliothek_.inPapierkorb(auswahl.texte()); });
    menue->oeffneUnter(QRect(wo, QSize(0, 0)), 0);
}

void InhaltsAnsicht::zeigeImDateimanager(const std::string& pfad) {
    dateimanager_.zeige(pfad, [selbst = QPointer<InhaltsAnsicht>(this), pfad] {
        if (selbst) {
            selbst->bibliothek_.weiseHin("Kein Dateimanager gefunden, der „" +
                                         text::einzeilig(dateien::letzterTeil(pfad)) + "“ zeigt");
        }
    });
}

void InhaltsAnsicht::wirfWeg() {
    if (const auto auswahl = tabelle_->gezeigteAuswahl(); !auswahl.empty()) {
        bibliothek_.inPapierkorb(auswahl.texte());
    }
}

Eintrag InhaltsAnsicht::eintragMit(const std::string& pfad) const {
    const auto& eintraege = bibliothek_.eintraege().wert();
    const auto gefunden =
        std::find_if(eintraege.begin(), eintraege.end(), [&](const Eintrag& eintrag) { return eintrag->pfad == pfad; });
    return gefunden == eintraege.end() ? nullptr : *gefunden;
}

void InhaltsAnsicht::oeffneUmbenennen(const std::string& pfad) {
    const Eintrag eintrag = eintragMit(pfad);
    if (!eintrag) {
        return;
    }
    legeBlatt([this, &eintrag] {
        return new UmbenennenDialog(
            eintrag,
            [this, eintrag](const QString& name) {
                // A name that is not UTF-8 cannot be typed: left as it was shown, it is the file's own.
                const bool bleibt = name == alsText(eintrag->dateiName);
                if (const auto neu =
                        bibliothek_.benenneUm(*eintrag, bleibt ? eintrag->dateiName : name.toStdString())) {
                    zustand_.auswahl = {*neu};
                    auffrischung_.sofort();
                    tabelle_->rolleZu(*neu);
                    if (zeilenbau_.baut()) {
                        zuZeigen_.insert(*neu);
                    }
                }
            },
            this);
    });
}

void InhaltsAnsicht::setzeTasten(bool an) {
    for (QShortcut* taste : findChildren<QShortcut*>(QString(), Qt::FindDirectChildrenOnly)) {
        taste->setEnabled(an);
    }
}

/// Whether the program would end with this window, and leave copies that the user has asked for. The end of the session
/// waits for nobody.
bool InhaltsAnsicht::mussNochKopieren() const {
    const auto fenster = QApplication::topLevelWidgets();
    const bool letztes = std::none_of(fenster.begin(), fenster.end(), [this](const QWidget* anderes) {
        return anderes != this && anderes->isVisible() && qobject_cast<const InhaltsAnsicht*>(anderes) != nullptr;
    });
    return letztes && bibliothek_.zuKopieren().wert() > 0 && !qGuiApp->isSavingSession();
}

void InhaltsAnsicht::oeffneKopierblatt() {
    if (kopierblatt_) {
        return;
    }
    if (blatt_) {
        blatt_->reject();
    }
    setzeTasten(false);
    kopierblatt_ = new Kopierblatt(this);
    kopierblatt_->zeige(bibliothek_.zuKopieren().wert());
    blatt_ = kopierblatt_.data();
    connect(kopierblatt_, &Kopierblatt::abbruchGewuenscht, this, [this] { bibliothek_.brichImporteAb(); });
    connect(kopierblatt_, &QDialog::finished, this, [this] {
        kopierblatt_.clear();
        setzeTasten(true);
        tabelle_->setFocus();
    });
}

void InhaltsAnsicht::dragEnterEvent(QDragEnterEvent* ereignis) {
    // Rows of this program are files of the library already: dropping them would do nothing. Nor would other addresses.
    if (ereignis->source() == nullptr && !blatt_ && !lokaleDateien(*ereignis->mimeData()).empty()) {
        ereignis->setDropAction(Qt::CopyAction);
        ereignis->accept();
        ablage_->zeigeUeber(QRect(0, werkzeuge_->height(), width(), height() - werkzeuge_->height()));
    }
}

void InhaltsAnsicht::dragMoveEvent(QDragMoveEvent* ereignis) {
    ereignis->setDropAction(Qt::CopyAction);
    ereignis->accept();
}

void InhaltsAnsicht::dragLeaveEvent(QDragLeaveEvent* /*ereignis*/) {
    ablage_->hide();
}

void InhaltsAnsicht::dropEvent(QDropEvent* ereignis) {
    ablage_->hide();
    importiereAlle(*ereignis->mimeData(), false);
    ereignis->setDropAction(Qt::CopyAction);
    ereignis->accept();
}

}  // namespace spurkiste
