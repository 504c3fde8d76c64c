// What keys do in the window, and the sheets that tell of it.

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QPointer>
#include <QShortcut>
#include <vector>

#include "ui/fenster/InhaltsAnsicht.h"
#include "ui/fenster/Tastenblatt.h"
#include "ui/fenster/Ueberblatt.h"
#include "ui/tabelle/Zeilenkopie.h"

namespace spurkiste {

void InhaltsAnsicht::belegeTasten() {
    for (const Tastengruppe& gruppe : tasten()) {
        for (const Taste& taste : gruppe.tasten) {
            for (const QKeySequence& folge : taste.tat ? taste.folgen : QList<QKeySequence>()) {
                const bool imPanel = taste.ort == Tastenort::panel;
                auto* kurz = new QShortcut(folge, imPanel ? static_cast<QWidget*>(detail_) : this);
                kurz->setContext(imPanel ? Qt::WidgetWithChildrenShortcut : Qt::WindowShortcut);
                connect(kurz, &QShortcut::activated, this, [this, tat = *taste.tat] { fuehreAus(tat); });
            }
        }
    }
}

void InhaltsAnsicht::fuehreAus(Fenstertat tat) {
    switch (tat) {
        case Fenstertat::suchen:
            werkzeuge_->suchfeld().setFocus(Qt::ShortcutFocusReason);
            werkzeuge_->suchfeld().selectAll();
            break;
        case Fenstertat::sucheLeeren:
            leereOderVerlasseSuche();
            break;
        case Fenstertat::importieren:
            waehleImport();
            break;
        case Fenstertat::einfuegen:
            fuegeEin();
            break;
        case Fenstertat::neuLaden:
            bibliothek_.lade();
            break;
        case Fenstertat::umbenennen:
            if (const auto auswahl = tabelle_->gezeigteAuswahl(); auswahl.size() == 1) {
                oeffneUmbenennen(*auswahl.begin());
            }
            break;
        case Fenstertat::wegwerfen:
            if (!tabelle_->gezeigteAuswahl().empty()) {
                tabelle_->setFocus(Qt::ShortcutFocusReason);  // what had the keyboard goes with the file
                wirfWeg();
            }
            break;
        case Fenstertat::rueckgaengig:
            nimmZurueck(Richtung::zurueck);
            break;
        case Fenstertat::wiederholen:
            nimmZurueck(Richtung::wieder);
            break;
        case Fenstertat::kopieren:
            kopiere();
            break;
        case Fenstertat::zeilenmenue:
            bitteUmMenue();
            break;
        case Fenstertat::neuesFenster:
            Q_EMIT neuesFensterGewuenscht();
            break;
        case Fenstertat::schliessen:
            close();
            break;
        case Fenstertat::beenden:
            QApplication::closeAllWindows();  // the last one asks for the copies that are still to be made
            break;
        case Fenstertat::tastenZeigen:
            oeffneTastenblatt();
            break;
    }
}

void InhaltsAnsicht::kopiere() {
    const auto auswahl = tabelle_->gezeigteAuswahl();
    const TabellenModell& modell = tabelle_->modell();
    std::vector<int> reihen;
    for (int reihe = 0; reihe < modell.rowCount(); ++reihe) {
        if (auswahl.contains(modell.zeile(reihe).eintrag()->pfad)) {
            reihen.push_back(reihe);
        }
    }
    if (!reihen.empty()) {
        QApplication::clipboard()->setMimeData(zeilenkopie::mach(modell, reihen).release());
    }
}

void InhaltsAnsicht::fuegeEin() {
    const QClipboard& ablage = *QApplication::clipboard();
    if (const QMimeData* daten = ablage.mimeData()) {
        // Rows of this library, copied here, are in it already.
        importiereAlle(*daten, ablage.ownsClipboard());
    }
}

/// What the menu key does, which not every keyboard has: asks whatever has the keyboard for its menu, at the cursor.
void InhaltsAnsicht::bitteUmMenue() {
    QWidget* hier = QApplication::focusWidget();
    if (hier != nullptr) {
        const QPoint wo = hier->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent bitte(QContextMenuEvent::Keyboard, wo, hier->mapToGlobal(wo));
        QApplication::sendEvent(hier, &bitte);
    }
}

void InhaltsAnsicht::legeBlatt(const std::function<QDialog*()>& mach) {
    if (blatt_) {
        return;
    }
    const QPointer<QWidget> vorher = focusWidget();
    setzeTasten(false);  // the sheet is the only thing that can be used now
    blatt_ = mach();
    connect(blatt_, &QDialog::finished, this, [this, vorher] {
        blatt_.clear();  // its place is free, though it is deleted later
        setzeTasten(true);
        if (vorher) {
            vorher->setFocus();
        }
    });
}

void InhaltsAnsicht::oeffneTastenblatt() {
    legeBlatt([this] {
        auto* blatt = new Tastenblatt(this);
        connect(blatt, &Tastenblatt::ueberGewuenscht, this, &InhaltsAnsicht::oeffneUeberblatt);
        return blatt;
    });
}

void InhaltsAnsicht::oeffneUeberblatt() {
    legeBlatt([this] { return new Ueberblatt(this); });
}

}  // namespace spurkiste
