#include "ui/tabelle/TabellenAnsicht.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <utility>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"

namespace spurkiste {

/// What the user is looking at, before the rows change.
struct TabellenAnsicht::Blick {
    std::vector<std::uint32_t> reihen;  // which file stood where
    int oben = 0;                       // how far down it was scrolled, in pixels
    int aktuell = -1;                   // the row with the keyboard
};

TabellenAnsicht::TabellenAnsicht(QWidget* eltern)
    : QTableView(eltern),
      modell_(new TabellenModell(this)),
      auswahl_(new TabellenAuswahl(*modell_, this)),
      kopf_(new Tabellenkopf(this)),
      rahmen_(new Kartenrahmen(this)),
      senkrecht_(new Rollbalken(*verticalScrollBar(), this)),
      waagrecht_(new Rollbalken(*horizontalScrollBar(), this)) {
    setAccessibleName(QStringLiteral("GPX-Dateien"));
    setHorizontalHeader(kopf_);
    disconnect(kopf_, &QHeaderView::sectionPressed, this, nullptr);  // would select the column
    disconnect(kopf_, &QHeaderView::sectionEntered, this, nullptr);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(ZellenZeichner::kZeilenhoehe);
    verticalHeader()->setDefaultSectionSize(ZellenZeichner::kZeilenhoehe);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setModel(modell_);
    const std::unique_ptr<QItemSelectionModel> ungebraucht(selectionModel());
    setSelectionModel(auswahl_);

    setFrameShape(QFrame::NoFrame);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setEditTriggers(NoEditTriggers);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setDragDropMode(DragOnly);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    verticalScrollBar()->setSingleStep(ZellenZeichner::kZeilenhoehe);
    horizontalScrollBar()->setSingleStep(ZellenZeichner::kZeilenhoehe);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    viewport()->setMouseTracking(true);
    setTabOrder(kopf_, this);

    rahmen_->raise();

    connect(kopf_, &QHeaderView::sectionClicked, this, [this](int stelle) {
        const Spalte spalte = kSpalten[static_cast<std::size_t>(stelle)].spalte;
        if (istSortierbar(spalte)) {
            Q_EMIT kopfGeklickt(spalte);
        }
    });
    connect(kopf_, &Tabellenkopf::spalteGewaehlt, this, [this](int stelle) {
        const int links = kopf_->sectionPosition(stelle);
        const int rechts = links + kopf_->sectionSize(stelle) - viewport()->width();
        const int jetzt = horizontalScrollBar()->value();
        horizontalScrollBar()->setValue(std::clamp(jetzt, std::min(rechts, links), links));
    });
    connect(auswahl_, &TabellenAuswahl::pfadeGeaendert, this, [this] { Q_EMIT auswahlGeaendert(auswahl_->pfade()); });
}

void TabellenAnsicht::setzeSortierung(const Sortierung& sortierung) {
    const auto& vergleiche = sortierung.vergleiche();
    const auto erster = vergleiche.empty() ? std::nullopt : std::optional(vergleiche.front());
    modell_->setzeSortierung(erster);
    kopf_->setzeSortierung(erster);
}

TabellenAnsicht::Auswahl TabellenAnsicht::gezeigteAuswahl() const {
    Auswahl::Menge gezeigte;
    gezeigte.reserve(auswahl_->pfade().size());
    for (int reihe = 0; reihe < modell_->rowCount(); ++reihe) {
        if (auswahl_->istGewaehlt(modell_->zeile(reihe))) {
            gezeigte.insert(modell_->zeile(reihe).pfad());
        }
    }
    return gezeigte;
}

void TabellenAnsicht::rolleZu(const std::string& pfad) {
    for (int reihe = 0; reihe < modell_->rowCount(); ++reihe) {
        if (modell_->zeile(reihe).eintrag()->pfad == pfad) {
            const QModelIndex index = modell_->index(reihe, 0);
            selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
            return scrollTo(index);
        }
    }
}

bool TabellenAnsicht::istMarkiert() const {
    return currentIndex().isValid() && auswahl_->istGewaehlt(modell_->zeile(currentIndex().row()));
}

void TabellenAnsicht::markiere(std::optional<int> reihe) {
    const QModelIndex ziel = reihe ? modell_->index(*reihe, 0) : currentIndex();
    if (ziel.isValid() && !auswahl_->hasSelection()) {
        waehleReihe(ziel);
    }
}

void TabellenAnsicht::waehleReihe(const QModelIndex& index) {
    aktuelle_ = modell_->zeile(index.row()).kennung();  // also where the keyboard stands there already
    auswahl_->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void TabellenAnsicht::rolleZurAuswahl() {
    for (int reihe = 0; reihe < modell_->rowCount() && auswahl_->hasSelection() && !istMarkiert(); ++reihe) {
        if (auswahl_->istGewaehlt(modell_->zeile(reihe))) {
            auswahl_->setCurrentIndex(modell_->index(reihe, 0), QItemSelectionModel::NoUpdate);
        }
    }
    if (istMarkiert()) {
        scrollTo(currentIndex());
    }
}

void TabellenAnsicht::kleide() {
    zeichner_ = std::make_unique<ZellenZeichner>();
    kopf_->kleide();
    viewport()->update();
}

void TabellenAnsicht::setzeZahlen(const Zahlentexte& zahlen) {
    constexpr double kHoechstens = 200;  // longer than anything measured: a broken file does not spoil the table
    Spaltenbreiten::Breiten bedarf = Spaltenbreiten::kMindestens;
    for (const Spaltenangaben& spalte : kSpalten) {
        int& breite = bedarf[static_cast<std::size_t>(*spalte.spalte)];
        for (const std::u16string& zahl : zahlen.beispiele(spalte.spalte)) {
            const double noetig = zeichner_->zahlenbreite(zahl, spalte.spalte);
            breite = std::max(breite, static_cast<int>(std::ceil(std::min(kHoechstens, noetig))));
        }
    }
    kopf_->setzeBedarf(bedarf);
}

QString TabellenAnsicht::spaltenbreiten() const {
    return QString::fromStdString(kopf_->breiten().alsText());
}

void TabellenAnsicht::setzeSpaltenbreiten(const QString& text) {
    kopf_->setzeBreiten(Spaltenbreiten::ausText(text.toStdString()));
}

void TabellenAnsicht::setzeZeilen(std::vector<std::shared_ptr<const Zeile>> zeilen) {
    if (modell_->liste().istGleich(zeilen)) {
        return;
    }
    haelt_ = true;
    setAutoScroll(false);  // else the view follows the current row to wherever it goes
    const Blick blick = merkeBlick();
    merkeHalt();
    auswahl_->verbirg();
    const bool umgestellt = modell_->setzeZeilen(std::move(zeilen));
    auswahl_->zeige();
    executeDelayedItemsLayout();
    stelleHer(blick, umgestellt);
    halte();
    setzeAktuelle(blick);
    setAutoScroll(true);
    haelt_ = false;
    if (maus_) {
        ueberfahre(*maus_);
    }
    viewport()->update();
}

TabellenAnsicht::Blick TabellenAnsicht::merkeBlick() const {
    return {modell_->liste().kennungen(), verticalScrollBar()->value(), currentIndex().row()};
}

void TabellenAnsicht::stelleHer(const Blick& blick, bool umgestellt) {
    if (umgestellt || blick.oben == 0) {
        return;
    }
    // The first row that is still there, from the top of the view down, keeps its height in the view.
    constexpr int kHoehe = ZellenZeichner::kZeilenhoehe;
    const int oberste = blick.oben / kHoehe;
    for (auto reihe = static_cast<std::size_t>(oberste); reihe < blick.reihen.size(); ++reihe) {
        const int jetzt = modell_->liste().stelleVon(blick.reihen[reihe]);
        if (jetzt != Zeilenliste::kKeine) {
            const int hoehe = static_cast<int>(reihe) * kHoehe - blick.oben;
            verticalScrollBar()->setValue(jetzt * kHoehe - (hoehe < viewport()->height() ? hoehe : 0));
            return;
        }
    }
}

bool TabellenAnsicht::istGanzZuSehen(int reihe) const {
    const QRect rechteck = reihenRechteck(reihe);
    return rechteck.top() >= 0 && rechteck.bottom() < viewport()->height();
}

/// The selected row with the keyboard before others. One that was hidden is still meant as long as it is not shown.
void TabellenAnsicht::merkeHalt() {
    const auto haeltSich = [&](int reihe) {
        return auswahl_->istGewaehlt(modell_->zeile(reihe)) && istGanzZuSehen(reihe);
    };
    int reihe = currentIndex().row();
    if (reihe < 0 || !haeltSich(reihe)) {
        for (reihe = reiheBei(0); reihe >= 0 && !haeltSich(reihe);) {
            const bool weiter =
                reihe + 1 < modell_->rowCount() && reihenRechteck(reihe + 1).top() < viewport()->height();
            reihe = weiter ? reihe + 1 : -1;
        }
    }
    if (reihe >= 0) {
        halt_ = Halt{modell_->zeile(reihe).kennung(), reihenRechteck(reihe).top()};
    } else if (halt_ && modell_->liste().stelleVon(halt_->kennung) != Zeilenliste::kKeine) {
        halt_.reset();
    }
}

void TabellenAnsicht::halte() {
    const int reihe = halt_ ? modell_->liste().stelleVon(halt_->kennung) : Zeilenliste::kKeine;
    if (reihe != Zeilenliste::kKeine && auswahl_->istGewaehlt(modell_->zeile(reihe)) && !istGanzZuSehen(reihe)) {
        verticalScrollBar()->setValue(reihe * ZellenZeichner::kZeilenhoehe - halt_->hoehe);
    }
}

void TabellenAnsicht::setzeAktuelle(const Blick& blick) {
    int ziel = aktuelle_ ? modell_->liste().stelleVon(*aktuelle_) : Zeilenliste::kKeine;
    const auto sucheAb = [&](auto von, auto bis) {
        const auto bleibt = [&](std::uint32_t kennung) {
            return modell_->liste().stelleVon(kennung) != Zeilenliste::kKeine;
        };
        const auto gefunden = std::find_if(von, bis, bleibt);
        return gefunden == bis ? Zeilenliste::kKeine : modell_->liste().stelleVon(*gefunden);
    };
    if (ziel == Zeilenliste::kKeine && blick.aktuell >= 0) {
        // Its row has gone: the keyboard goes on from the next one that stayed, else from the one before.
        const auto hier = blick.reihen.begin() + blick.aktuell;
        ziel = sucheAb(hier, blick.reihen.end());
        if (ziel == Zeilenliste::kKeine) {
            ziel = sucheAb(std::make_reverse_iterator(hier), blick.reihen.rend());
        }
    }
    auswahl_->setCurrentIndex(modell_->index(ziel, 0), QItemSelectionModel::NoUpdate);
}

int TabellenAnsicht::reiheBei(int y) const {
    const int inhalt = y + verticalScrollBar()->value();
    const int reihe = inhalt / ZellenZeichner::kZeilenhoehe;
    return inhalt >= 0 && reihe < modell_->rowCount() ? reihe : -1;
}

QRect TabellenAnsicht::reihenRechteck(int reihe) const {
    constexpr int kHoehe = ZellenZeichner::kZeilenhoehe;
    return {0, reihe * kHoehe - verticalScrollBar()->value(), viewport()->width(), kHoehe};
}

const std::vector<ZellenZeichner::Lage>& TabellenAnsicht::sichtbareSpalten(const QRect& flaeche) {
    spalten_.clear();
    for (int stelle = 0; stelle < modell_->columnCount(); ++stelle) {
        const int links = kopf_->sectionViewportPosition(stelle);
        const int breite = kopf_->sectionSize(stelle);
        if (links <= flaeche.right() && links + breite > flaeche.left()) {
            spalten_.push_back({kSpalten[std::size_t(stelle)].spalte, links, breite});
        }
    }
    return spalten_;
}

void TabellenAnsicht::paintEvent(QPaintEvent* ereignis) {
    // All at once instead of by delegates: a row knows its texts, and tint and band go across its cells.
    QPainter maler(viewport());
    const QRect flaeche = ereignis->rect();
    maler.fillRect(flaeche, KistePapier::karte);
    const auto& spalten = sichtbareSpalten(flaeche);
    for (int reihe = reiheBei(std::max(0, flaeche.top())); reihe >= 0 && reihe < modell_->rowCount(); ++reihe) {
        const QRect rechteck = reihenRechteck(reihe);
        if (rechteck.top() > flaeche.bottom()) {
            break;
        }
        const Zeile& zeile = modell_->zeile(reihe);
        const bool gewaehlt = auswahl_->istGewaehlt(zeile);
        zeichner_->zeichne(maler, rechteck, zeile, spalten, {reihe == ueberfahren_, gewaehlt});
        if (reihe == currentIndex().row() && !gewaehlt && rahmen_->fokus()) {
            // The keyboard stands here, and no band says so.
            papier::form(maler, QRectF(rechteck).adjusted(4, 2, -4, -3), 7, Qt::transparent, KistePapier::goldDunkel,
                         1.5);
        }
    }
}

void TabellenAnsicht::updateGeometries() {
    kopf_->passeAn(viewport()->width());
    QTableView::updateGeometries();
    // The bars keep off the header, the rounded corners and each other.
    constexpr int kRand = 2;
    constexpr int kAbstand = 4;
    constexpr int kEcke = 10;
    const int dicke = Rollbalken::kDicke;
    const QRect flaeche = koerper();
    const int rechts = flaeche.right() + 1 - kRand - dicke;
    const int unten = flaeche.bottom() + 1 - kRand - dicke;
    senkrecht_->setzeBahn({rechts, flaeche.top() + kAbstand, dicke, flaeche.height() - kAbstand - kEcke});
    waagrecht_->setzeBahn({flaeche.left() + kEcke, unten, flaeche.width() - 2 * kEcke, dicke});
    rahmen_->setGeometry(rect());
}

void TabellenAnsicht::scrollTo(const QModelIndex& index, ScrollHint wohin) {
    if (!index.isValid() || haelt_) {
        return;
    }
    // Rows only: a row is reached with the keyboard, a column by scrolling.
    const int oben = index.row() * ZellenZeichner::kZeilenhoehe;
    const int unten = oben + ZellenZeichner::kZeilenhoehe - viewport()->height();
    const int jetzt = verticalScrollBar()->value();
    switch (wohin) {
        case EnsureVisible:
            verticalScrollBar()->setValue(std::clamp(jetzt, std::min(unten, oben), oben));
            break;
        case PositionAtTop:
            verticalScrollBar()->setValue(oben);
            break;
        case PositionAtBottom:
            verticalScrollBar()->setValue(unten);
            break;
        case PositionAtCenter:
            verticalScrollBar()->setValue((oben + unten) / 2);
            break;
    }
}

void TabellenAnsicht::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    if (maus_ && !haelt_) {
        ueberfahre(*maus_);
    }
}

void TabellenAnsicht::wheelEvent(QWheelEvent* ereignis) {
    // With Shift the wheel of a mouse that has but one goes sideways.
    const bool seitwaerts = (ereignis->modifiers() & Qt::ShiftModifier) != 0 && ereignis->angleDelta().x() == 0;
    if (!seitwaerts) {
        return QTableView::wheelEvent(ereignis);
    }
    QWheelEvent gedreht(ereignis->position(), ereignis->globalPosition(), ereignis->pixelDelta().transposed(),
                        ereignis->angleDelta().transposed(), ereignis->buttons(),
                        ereignis->modifiers() & ~Qt::ShiftModifier, ereignis->phase(), ereignis->inverted(),
                        ereignis->source(), ereignis->pointingDevice());
    QTableView::wheelEvent(&gedreht);
    ereignis->setAccepted(gedreht.isAccepted());
}

int TabellenAnsicht::sizeHintForColumn(int spalte) const {
    // What can be seen decides: asking a hundred thousand rows would make a double click on a border last seconds.
    double breite = 0.0;
    for (int reihe = reiheBei(0); reihe >= 0 && reihe <= reiheBei(viewport()->height() - 1); ++reihe) {
        breite = std::max(breite, zeichner_->idealbreite(modell_->zeile(reihe), kSpalten[std::size_t(spalte)].spalte));
    }
    return std::min(static_cast<int>(std::ceil(breite)), viewport()->width());  // the rest of an endless name can wait
}

void TabellenAnsicht::selectionChanged(const QItemSelection& dazu, const QItemSelection& weg) {
    if (auswahl_->istStill()) {
        viewport()->update();  // and nothing that a screen reader would read out
    } else {
        QTableView::selectionChanged(dazu, weg);
    }
}

void TabellenAnsicht::currentChanged(const QModelIndex& index, const QModelIndex& vorher) {
    if (!haelt_) {
        aktuelle_ = index.isValid() ? std::optional(modell_->zeile(index.row()).kennung()) : std::nullopt;
    }
    QTableView::currentChanged(index, vorher);
    for (const QModelIndex& betroffen : {index, vorher}) {
        viewport()->update(reihenRechteck(betroffen.row()));
    }
}

}  // namespace spurkiste
