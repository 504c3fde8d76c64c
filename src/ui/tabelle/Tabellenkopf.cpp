#include "ui/tabelle/Tabellenkopf.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTransform>
#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ui/tabelle/TabellenModell.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

// Logical pixels.
constexpr double kSchrift = 11.0;
constexpr double kMarke = 13.0;          // the box of the sort mark
constexpr double kMarkeSichtbar = 10.0;  // from its left edge to where the mark ends

QFont schrift() {
    return Schrift::mach(kSchrift, QFont::DemiBold);
}

}  // namespace

Tabellenkopf::Tabellenkopf(QWidget* eltern) : QHeaderView(Qt::Horizontal, eltern), satz_(schrift(), kSchrift) {
    setFixedHeight(kHoehe);
    setSectionsClickable(true);
    setSectionsMovable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Interactive);
    setMinimumSectionSize(*std::min_element(Spaltenbreiten::kMindestens.begin(), Spaltenbreiten::kMindestens.end()));
    setFocusPolicy(Qt::TabFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    connect(this, &QHeaderView::sectionResized, this,
            [this](int spalte, int /*vorher*/, int breite) { folgeDemZug(spalte, breite); });
}

void Tabellenkopf::setzeSortierung(const std::optional<Vergleich>& vergleich) {
    if (sortierung_ != vergleich) {
        sortierung_ = vergleich;
        sageAn();
        viewport()->update();
    }
}

void Tabellenkopf::setzeBreiten(const Spaltenbreiten& breiten) {
    breiten_ = breiten;
    wendeAn();
}

void Tabellenkopf::passeAn(int platz) {
    if (platz_ != platz || angewandt_.front() == 0) {
        platz_ = platz;
        wendeAn();
    }
}

void Tabellenkopf::setzeBedarf(const Spaltenbreiten::Breiten& bedarf) {
    if (bedarf_ != bedarf) {
        bedarf_ = bedarf;
        wendeAn();
    }
}

void Tabellenkopf::kleide() {
    satz_ = Schriftsatz(schrift(), kSchrift);
    viewport()->update();
}

void Tabellenkopf::folgeDemZug(int spalte, int breite) {
    if (wendetAn_ || platz_ == 0) {
        return;
    }
    // Counted from the beginning of the pull, so that pulling back gives the other columns what was taken from them.
    breiten_.ziehe(kSpalten[static_cast<std::size_t>(spalte)].spalte, breite, vorDemZug_.value_or(angewandt_), platz_,
                   bedarf_);
    wendeAn();
}

void Tabellenkopf::wendeAn() {
    if (platz_ == 0 || count() != static_cast<int>(kSpalten.size())) {
        return;
    }
    angewandt_ = breiten_.verteile(platz_, bedarf_);
    wendetAn_ = true;
    for (int spalte = 0; spalte < count(); ++spalte) {
        resizeSection(spalte, angewandt_[static_cast<std::size_t>(spalte)]);
    }
    wendetAn_ = false;
}

void Tabellenkopf::mousePressEvent(QMouseEvent* ereignis) {
    vorDemZug_ = angewandt_;
    QHeaderView::mousePressEvent(ereignis);
}

void Tabellenkopf::mouseDoubleClickEvent(QMouseEvent* ereignis) {
    // On a border the column is fitted to its texts. On a title the second press is one like the first: without it the
    // release that follows would be no click.
    bool aufTitel = false;
    const auto verbindung = connect(this, &QHeaderView::sectionDoubleClicked, this, [&] { aufTitel = true; });
    QHeaderView::mouseDoubleClickEvent(ereignis);
    disconnect(verbindung);
    if (aufTitel) {
        mousePressEvent(ereignis);
    }
}

void Tabellenkopf::mouseReleaseEvent(QMouseEvent* ereignis) {
    QHeaderView::mouseReleaseEvent(ereignis);
    vorDemZug_.reset();
}

bool Tabellenkopf::dehneMitTaste(int taste) {
    constexpr int kSchritt = 10;
    switch (taste) {
        case Qt::Key_Left:
        case Qt::Key_Right:
            folgeDemZug(gewaehlt_, sectionSize(gewaehlt_) + (taste == Qt::Key_Left ? -kSchritt : kSchritt));
            break;
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT sectionHandleDoubleClicked(gewaehlt_);
            break;
        default:
            return false;
    }
    waehle(gewaehlt_);  // keeps it in view
    return true;
}

void Tabellenkopf::keyPressEvent(QKeyEvent* ereignis) {
    if ((ereignis->modifiers() & Qt::ShiftModifier) != 0 && dehneMitTaste(ereignis->key())) {
        return;
    }
    switch (ereignis->key()) {
        case Qt::Key_Left:
            return waehle(gewaehlt_ - 1);
        case Qt::Key_Right:
            return waehle(gewaehlt_ + 1);
        case Qt::Key_Home:
            return waehle(0);
        case Qt::Key_End:
            return waehle(count() - 1);
        case Qt::Key_Space:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT sectionClicked(gewaehlt_);
            return;
        default:
            QHeaderView::keyPressEvent(ereignis);
    }
}

void Tabellenkopf::waehle(int spalte) {
    gewaehlt_ = std::clamp(spalte, 0, std::max(0, count() - 1));
    sageAn();
    viewport()->update();
    Q_EMIT spalteGewaehlt(gewaehlt_);
}

void Tabellenkopf::sageAn() {
    // For a screen reader the header is one control; it says which column it is on, and whether that one sorts.
    if (model() != nullptr) {
        const auto text = [this](int rolle) {
            return model()->headerData(gewaehlt_, Qt::Horizontal, rolle).toString();
        };
        setAccessibleName(text(Qt::DisplayRole));
        setAccessibleDescription(text(Qt::AccessibleDescriptionRole));
    }
}

void Tabellenkopf::focusInEvent(QFocusEvent* ereignis) {
    QHeaderView::focusInEvent(ereignis);
    waehle(gewaehlt_);
}

void Tabellenkopf::focusOutEvent(QFocusEvent* ereignis) {
    QHeaderView::focusOutEvent(ereignis);
    viewport()->update();
}

QSize Tabellenkopf::sectionSizeFromContents(int stelle) const {
    const QString titel = model()->headerData(stelle, Qt::Horizontal).toString();
    const Spaltenrand rand = angaben(kSpalten[static_cast<std::size_t>(stelle)].spalte).rand;
    return {static_cast<int>(std::ceil(rand.links + satz_.breite(titel) + std::max(kMarkeSichtbar, 1.0 * rand.rechts))),
            kHoehe};
}

void Tabellenkopf::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(viewport());
    const QRect flaeche = viewport()->rect();
    maler.fillRect(flaeche, KistePapier::karte);
    maler.fillRect(QRect(flaeche.left(), flaeche.bottom(), flaeche.width(), 1),
                   KistePapier::mitDeckkraft(KistePapier::linie, 0.78));
    for (int stelle = 0; stelle < std::min(count(), static_cast<int>(kSpalten.size())); ++stelle) {
        const QRect zelle(sectionViewportPosition(stelle), 0, sectionSize(stelle), flaeche.height());
        if (!zelle.intersects(flaeche)) {
            continue;
        }
        zeichneTitel(maler, zelle, kSpalten[static_cast<std::size_t>(stelle)].spalte);
        if (hasFocus() && stelle == gewaehlt_) {
            papier::form(maler, QRectF(zelle).adjusted(2, 4, -2, -5), 6, Qt::transparent, KistePapier::goldDunkel, 1.5);
        }
    }
}

void Tabellenkopf::zeichneTitel(QPainter& maler, const QRectF& zelle, Spalte spalte) {
    const QString titel = model()->headerData(static_cast<int>(spalte), Qt::Horizontal).toString();
    const Qt::Alignment seite = ausrichtung(spalte);
    // The title of the sport stands over the texts of the capsules' rows, not over their edges.
    const int vorn = angaben(spalte).rand->links + (spalte == Spalte::sport ? 3 : 0);
    // A little low: between two pixels the baseline takes the lower one.
    constexpr double kTiefer = 0.15;
    QRectF kasten = zelle.adjusted(vorn, kTiefer, -angaben(spalte).rand->rechts, kTiefer);
    const bool sortiert = sortierung_ && sortierung_->spalte == spalte;
    maler.setPen(sortiert ? KistePapier::tinte : KistePapier::tinteLeise);
    if (!sortiert) {
        satz_.zeichne(maler, kasten, seite, titel);
        return;
    }
    // The mark may stand in the padding: a title gives way to it only when there is no other room.
    double marke = 0.0;
    if ((seite & Qt::AlignRight) != 0) {
        kasten.setLeft(zelle.left() + kMarkeSichtbar);
        const double breite = std::min(satz_.breite(titel), kasten.width());
        marke = kasten.right() - breite - kMarke;
    } else {
        kasten.setRight(zelle.right() - kMarkeSichtbar);
        const double breite = std::min(satz_.breite(titel), kasten.width());
        if ((seite & Qt::AlignHCenter) != 0) {
            kasten.setLeft(zelle.left() + (zelle.width() - breite - kMarkeSichtbar) / 2);
            kasten.setWidth(breite);
        }
        marke = kasten.left() + breite + 1;
    }
    satz_.zeichne(maler, kasten, seite, titel);
    zeichneMarke(maler, QRectF(marke, zelle.top(), kMarke, zelle.height()), sortierung_->absteigend);
}

void Tabellenkopf::zeichneMarke(QPainter& maler, const QRectF& kasten, bool absteigend) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const auto rund = [&](double wert) { return std::round(wert * verhaeltnis) / verhaeltnis; };
    const QPixmap& bild = bilder_.hole({absteigend ? "ab" : "auf", kMarke, 0, verhaeltnis}, [&] {
        const QPixmap winkel = Symbole::bild("chevron.down", kMarke, KistePapier::goldDunkel, verhaeltnis);
        return absteigend ? winkel : winkel.transformed(QTransform::fromScale(1, -1));
    });
    maler.drawPixmap(QPointF(rund(kasten.left()), rund(kasten.center().y() - kMarke / 2)), bild);
}

}  // namespace spurkiste
