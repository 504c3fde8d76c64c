// What the user does with the table: mouse, keyboard, dragging rows out.
#include <QContextMenuEvent>
#include <QDrag>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QToolTip>
#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "ui/tabelle/TabellenAnsicht.h"
#include "ui/teile/SportMenue.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

bool TabellenAnsicht::viewportEvent(QEvent* ereignis) {
    switch (ereignis->type()) {
        case QEvent::MouseMove:
            ueberfahre(static_cast<QMouseEvent*>(ereignis)->position().toPoint());
            break;
        case QEvent::Leave:
            maus_.reset();
            ueberfahre({-1, -1});
            break;
        case QEvent::ToolTip: {
            const auto& hilfe = static_cast<QHelpEvent&>(*ereignis);
            const QModelIndex index = indexAt(hilfe.pos());
            const QString text = kurzhilfe(index);
            QToolTip::showText(hilfe.globalPos(), text.isEmpty() ? text : alsKurzhilfe(text), viewport(),
                               visualRect(index));
            return true;
        }
        default:
            break;
    }
    return QTableView::viewportEvent(ereignis);
}

QString TabellenAnsicht::kurzhilfe(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    const QString hilfe = index.data(Qt::ToolTipRole).toString();
    const Spalte spalte = kSpalten[static_cast<std::size_t>(index.column())].spalte;
    const bool kurz = zeichner_->idealbreite(modell_->zeile(index.row()), spalte) > columnWidth(index.column());
    const QString text = index.data(Qt::DisplayRole).toString();
    if (kurz && spalte == Spalte::sport) {
        return SportMenue::mitName(text, hilfe);
    }
    return hilfe.isEmpty() && kurz ? text : hilfe;
}

void TabellenAnsicht::ueberfahre(const QPoint& wo) {
    const bool drin = viewport()->rect().contains(wo);
    if (drin) {
        maus_ = wo;
    }
    const int reihe = drin ? reiheBei(wo.y()) : -1;
    if (reihe != ueberfahren_) {
        for (const int betroffen : {std::exchange(ueberfahren_, reihe), reihe}) {
            viewport()->update(reihenRechteck(betroffen));
        }
    }
}

QRect TabellenAnsicht::kapselRechteck(int reihe) const {
    const int spalte = static_cast<int>(Spalte::sport);
    const QRect zeile = reihenRechteck(reihe);
    const QRect zelle(columnViewportPosition(spalte), zeile.top(), columnWidth(spalte), zeile.height());
    return zeichner_->kapsel(zelle, modell_->zeile(reihe)).toAlignedRect();
}

/// The row whose capsule the left mouse button was pressed on, or -1.
int TabellenAnsicht::kapselReihe(const QMouseEvent& ereignis) const {
    if (ereignis.button() != Qt::LeftButton || ereignis.modifiers() != Qt::NoModifier) {
        return -1;
    }
    const QPoint wo = ereignis.position().toPoint();
    const int reihe = reiheBei(wo.y());
    return reihe >= 0 && kapselRechteck(reihe).contains(wo) ? reihe : -1;
}

void TabellenAnsicht::bitteUmSportmenue(int reihe) {
    const QRect kapsel = kapselRechteck(reihe);
    Q_EMIT sportmenueGewuenscht(modell_->zeile(reihe).eintrag()->pfad,
                                {viewport()->mapToGlobal(kapsel.topLeft()), kapsel.size()});
}

void TabellenAnsicht::mousePressEvent(QMouseEvent* ereignis) {
    zeigeTastatur(false);
    // A capsule is a button: pressing it neither selects its row nor begins a drag.
    const int reihe = kapselReihe(*ereignis);
    kapselGedrueckt_ = reihe >= 0;
    gedrueckt_ = kapselGedrueckt_ ? -1 : reiheBei(ereignis->position().toPoint().y());
    if (kapselGedrueckt_) {
        bitteUmSportmenue(reihe);
    } else {
        QTableView::mousePressEvent(ereignis);
    }
}

void TabellenAnsicht::mouseMoveEvent(QMouseEvent* ereignis) {
    if (!kapselGedrueckt_ || ereignis->buttons() == Qt::NoButton) {
        QTableView::mouseMoveEvent(ereignis);
    }
}

void TabellenAnsicht::mouseReleaseEvent(QMouseEvent* ereignis) {
    if (!std::exchange(kapselGedrueckt_, false)) {
        QTableView::mouseReleaseEvent(ereignis);
    }
}

void TabellenAnsicht::mouseDoubleClickEvent(QMouseEvent* ereignis) {
    const int reihe = reiheBei(ereignis->position().toPoint().y());
    if (kapselReihe(*ereignis) >= 0 || std::exchange(gedrueckt_, -1) != reihe) {
        return mousePressEvent(ereignis);  // two clicks: a capsule is a button, or the first one was on something else
    }
    QTableView::mouseDoubleClickEvent(ereignis);
    if (reihe >= 0 && ereignis->button() == Qt::LeftButton && ereignis->modifiers() == Qt::NoModifier) {
        Q_EMIT zeileGeoeffnet(modell_->zeile(reihe).eintrag()->pfad);
    }
}

void TabellenAnsicht::contextMenuEvent(QContextMenuEvent* ereignis) {
    QPoint wo = ereignis->globalPos();
    if (ereignis->reason() == QContextMenuEvent::Mouse && reiheBei(ereignis->pos().y()) < 0) {
        return;  // beside the rows: what is selected elsewhere is not meant
    }
    if (ereignis->reason() == QContextMenuEvent::Keyboard && currentIndex().isValid()) {
        markiere();
        scrollTo(currentIndex());
        const QRect zeile = reihenRechteck(currentIndex().row());
        wo = viewport()->mapToGlobal(QPoint(angaben(Spalte::name).rand->links, zeile.center().y()));
    }
    Q_EMIT kontextmenueGewuenscht(wo);
}

void TabellenAnsicht::keyPressEvent(QKeyEvent* ereignis) {
    zeigeTastatur(true);
    // What a key alone does on the row with the keyboard; where that is nothing, the toolkit has its turn.
    using Tat = bool (*)(TabellenAnsicht&, const QModelIndex&);
    static constexpr Tat sportmenue = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        if (!tabelle.istMarkiert()) {
            tabelle.waehleReihe(hier);  // nothing is done to a row that nobody can tell from the others
        }
        tabelle.scrollTo(hier);
        tabelle.bitteUmSportmenue(hier.row());
        return true;
    };
    static constexpr Tat leertaste = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        return !tabelle.tippsuche_.laeuft() && sportmenue(tabelle, hier);  // not for a blank within a name
    };
    static constexpr Tat oeffne = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        const Zeile& zeile = tabelle.modell_->zeile(hier.row());
        if (tabelle.auswahl().size() == 1 && tabelle.auswahl_->istGewaehlt(zeile)) {
            Q_EMIT tabelle.zeileGeoeffnet(zeile.eintrag()->pfad);
        }
        return true;
    };
    static constexpr Tat loesche = [](TabellenAnsicht& tabelle, const QModelIndex& /*hier*/) {
        Q_EMIT tabelle.loeschenGewuenscht();
        return true;
    };
    // The toolkit selects a row only by moving to it.
    static constexpr auto waehle = [](TabellenAnsicht& tabelle, const QModelIndex& hier, bool bleibt) {
        if (bleibt) {
            tabelle.waehleReihe(hier);
        }
        return bleibt;
    };
    static constexpr Tat schritt = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        return waehle(tabelle, hier, !tabelle.auswahl_->hasSelection());  // on a row already, though nobody sees where
    };
    static constexpr Tat anfang = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        return waehle(tabelle, hier, hier.row() == 0);
    };
    static constexpr Tat ende = [](TabellenAnsicht& tabelle, const QModelIndex& hier) {
        return waehle(tabelle, hier, hier.row() == tabelle.modell_->rowCount() - 1);
    };
    static constexpr std::pair<Qt::Key, Tat> kTasten[]{
        {Qt::Key_Space, leertaste}, {Qt::Key_F4, sportmenue},  {Qt::Key_Return, oeffne}, {Qt::Key_Enter, oeffne},
        {Qt::Key_F2, oeffne},       {Qt::Key_Delete, loesche}, {Qt::Key_Up, schritt},    {Qt::Key_Down, schritt},
        {Qt::Key_Home, anfang},     {Qt::Key_End, ende},
    };
    const QModelIndex hier = currentIndex();
    const bool allein = (ereignis->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const auto getan = [&](const auto& taste) { return taste.first == ereignis->key() && taste.second(*this, hier); };
    if (!allein || !hier.isValid() || std::none_of(std::begin(kTasten), std::end(kTasten), getan)) {
        QTableView::keyPressEvent(ereignis);
    }
}

void TabellenAnsicht::keyboardSearch(const QString& suche) {
    const auto name = [this](int reihe) {
        const auto text = modell_->zeile(reihe).text(Spalte::name);
        return QString::fromRawData(reinterpret_cast<const QChar*>(text.data()), static_cast<qsizetype>(text.size()));
    };
    const int reihe = tippsuche_.tippe(suche, modell_->rowCount(), currentIndex().row(), name);
    if (reihe >= 0) {
        setCurrentIndex(modell_->index(reihe, 0));
    }
}

QModelIndex TabellenAnsicht::moveCursor(CursorAction bewegung, Qt::KeyboardModifiers /*tasten*/) {
    const int letzte = modell_->rowCount() - 1;
    const int hier = currentIndex().row();
    const int seite = std::max(1, viewport()->height() / ZellenZeichner::kZeilenhoehe - 1);
    const auto zu = [&](int reihe) { return modell_->index(std::clamp(reihe, 0, std::max(0, letzte)), 0); };
    switch (bewegung) {
        case MoveUp:
        case MovePrevious:
            return zu(hier - 1);
        case MoveDown:
        case MoveNext:
            return zu(hier + 1);
        case MovePageUp:
            return zu(hier - seite);
        case MovePageDown:
            return zu(hier + seite);
        case MoveHome:
            return zu(0);
        case MoveEnd:
            return zu(letzte);
        case MoveLeft:
        case MoveRight: {
            // The row is what is selected, so these only show its other end.
            QScrollBar& balken = *horizontalScrollBar();
            balken.setValue(balken.value() + (bewegung == MoveLeft ? -1 : 1) * balken.singleStep());
            return currentIndex();
        }
    }
    return {};
}

void TabellenAnsicht::zeigeTastatur(bool tastatur) {
    tastatur_ = tastatur;
    if (rahmen_->fokus() != (hasFocus() && tastatur_)) {
        rahmen_->setzeFokus(!rahmen_->fokus());
        viewport()->update(reihenRechteck(currentIndex().row()));
    }
}

void TabellenAnsicht::focusInEvent(QFocusEvent* ereignis) {
    QTableView::focusInEvent(ereignis);
    const Qt::FocusReason grund = ereignis->reason();
    const bool taste =
        grund == Qt::TabFocusReason || grund == Qt::BacktabFocusReason || grund == Qt::ShortcutFocusReason;
    zeigeTastatur(taste || (tastatur_ && grund != Qt::MouseFocusReason));
}

void TabellenAnsicht::focusOutEvent(QFocusEvent* ereignis) {
    QTableView::focusOutEvent(ereignis);
    zeigeTastatur(tastatur_);
}

void TabellenAnsicht::startDrag(Qt::DropActions aktionen) {
    QModelIndexList gezogene;
    for (int reihe = 0; reihe < modell_->rowCount(); ++reihe) {
        if (auswahl_->istGewaehlt(modell_->zeile(reihe))) {
            gezogene.push_back(modell_->index(reihe, 0));
        }
    }
    if (gezogene.isEmpty()) {
        return;
    }
    auto* zug = new QDrag(this);
    zug->setMimeData(modell_->mimeData(gezogene));
    const QModelIndex gezeigt = gezogene.contains(currentIndex()) ? currentIndex() : gezogene.front();
    zug->setPixmap(
        zeichner_->zugbild(modell_->zeile(gezeigt.row()), static_cast<int>(gezogene.size()), devicePixelRatioF()));
    zug->exec(aktionen, Qt::CopyAction);
}

}  // namespace spurkiste
