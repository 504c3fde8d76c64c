#include "ui/teile/AuswahlPopup.h"

#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <utility>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kSchrift = 12.5;
constexpr int kInnenrand = Schwebekarte::kInnenrand;
constexpr int kZeile = 26;
constexpr int kRand = 10;
constexpr int kHaekchen = 16;
constexpr int kHoechstens = 30;  // rows, where the screen has room for them; more of them scroll
constexpr int kMindestens = 8;
constexpr int kSchmalste = 140;
constexpr int kBreiteste = 420;

}  // namespace

/// Paints a choice: the check mark of the current one, its text, gold where pointer or keys are.
class AuswahlPopup::Zeichner final : public QStyledItemDelegate {
  public:
    Zeichner(int gewaehlt, QObject* eltern) : QStyledItemDelegate(eltern), gewaehlt_(gewaehlt) {}

    void paint(QPainter* maler, const QStyleOptionViewItem& option, const QModelIndex& stelle) const override {
        const QRectF kasten = option.rect;
        if ((option.state & QStyle::State_Selected) != 0) {
            papier::form(*maler, kasten, 7, KistePapier::mitDeckkraft(KistePapier::gold, 0.17), Qt::transparent);
        }
        if (stelle.row() == gewaehlt_) {
            Symbole::zeichne(
                *maler, QRectF(kasten.left() + kRand - 3, kasten.center().y() - kHaekchen / 2.0, kHaekchen, kHaekchen),
                "checkmark", KistePapier::goldDunkel);
        }
        maler->setPen(KistePapier::tinte);
        satz_.zeichne(*maler, kasten.adjusted(kRand + kHaekchen + 2, 0, -kRand, 0), Qt::AlignLeft,
                      stelle.data().toString());
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*stelle*/) const override {
        return {kSchmalste, kZeile};
    }

  private:
    int gewaehlt_;
    mutable Schriftsatz satz_{Schrift::mach(kSchrift, QFont::Medium)};  // remembers what it set
};

AuswahlPopup::AuswahlPopup(const QStringList& wahlen, int gewaehlt, std::function<void(int)> beiWahl, QWidget* eltern)
    : QFrame(eltern, Qt::Popup),
      schwebekarte_(*this),
      modell_(wahlen),
      balken_(new Rollbalken(*liste_.verticalScrollBar(), this)),
      beiWahl_(std::move(beiWahl)) {
    setAttribute(Qt::WA_DeleteOnClose);
    liste_.setFont(Schrift::mach(kSchrift, QFont::Medium));
    liste_.setModel(&modell_);
    liste_.setItemDelegate(new Zeichner(gewaehlt, this));
    liste_.setUniformItemSizes(true);
    liste_.setMinimumHeight(kZeile);  // else the toolkit wants room for three rows
    liste_.setFrameShape(QFrame::NoFrame);
    liste_.setMouseTracking(true);
    liste_.setEditTriggers(QAbstractItemView::NoEditTriggers);
    liste_.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    liste_.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    liste_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    liste_.verticalScrollBar()->setSingleStep(kZeile);
    QPalette palette = liste_.palette();
    palette.setColor(QPalette::Base, KistePapier::karte);
    liste_.setPalette(palette);
    auto* stapel = new QVBoxLayout(this);
    const int rand = kInnenrand + schwebekarte_.rand();
    stapel->setContentsMargins(rand, rand, rand, rand);
    stapel->addWidget(&liste_);
    balken_->raise();
    setFocusProxy(&liste_);
    liste_.installEventFilter(this);
    liste_.viewport()->installEventFilter(this);
    connect(&liste_, &QListView::clicked, this, &AuswahlPopup::waehle);
    connect(&liste_, &QListView::entered, this, &AuswahlPopup::folgeZeiger);
    liste_.setCurrentIndex(modell_.index(std::max(0, gewaehlt)));
}

void AuswahlPopup::waehle(const QModelIndex& stelle) {
    if (stelle.isValid()) {
        const auto beiWahl = std::move(beiWahl_);
        const int zeile = stelle.row();
        close();  // deletes this in a later turn; the choice may open what it likes
        if (beiWahl) {
            beiWahl(zeile);
        }
    }
}

bool AuswahlPopup::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (ereignis->type() == QEvent::Wheel) {
        ruhenderZeiger_.reset();
    }
    if (ereignis->type() == QEvent::KeyPress) {
        ruhenderZeiger_ = QCursor::pos();
        if (nimmTaste(static_cast<QKeyEvent&>(*ereignis))) {
            return true;
        }
    }
    return QFrame::eventFilter(quelle, ereignis);
}

void AuswahlPopup::folgeZeiger(const QModelIndex& stelle) {
    if (ruhenderZeiger_ != QCursor::pos()) {
        liste_.setCurrentIndex(stelle);
    }
}

bool AuswahlPopup::nimmTaste(const QKeyEvent& taste) {
    const bool leertaste = taste.key() == Qt::Key_Space && !tippsuche_.laeuft();  // else it is a blank within a name
    if (leertaste || taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter) {
        waehle(liste_.currentIndex());
        return true;
    }
    if (!Tippsuche::istBuchstabe(taste.text(), taste.modifiers())) {
        return false;
    }
    const auto name = [this](int zeile) { return modell_.index(zeile).data().toString(); };
    const int ziel = tippsuche_.tippe(taste.text(), modell_.rowCount(), liste_.currentIndex().row(), name);
    if (ziel >= 0) {
        liste_.setCurrentIndex(modell_.index(ziel));
    }
    return true;
}

void AuswahlPopup::oeffneUnter(const QWidget& element, const QString& name) {
    liste_.setAccessibleName(name);
    Schriftsatz satz(liste_.font());
    int breite = kSchmalste;
    for (const QString& wahl : modell_.stringList()) {
        breite = std::max(
            breite, static_cast<int>(std::ceil(satz.breite(QStringView(wahl).left(80)))) + 2 * kRand + kHaekchen + 8);
        if (breite >= kBreiteste) {
            break;
        }
    }
    constexpr int abstand = 4;
    const int ring = papier::kRingRand;
    const QRect form = element.rect().adjusted(ring, ring, -ring, -ring);
    schwebekarte_.setzeAnker({element.mapToGlobal(form.topLeft()), form.size()}, abstand);
    const int platz = std::clamp((schwebekarte_.freieHoehe() - 2 * kInnenrand) / kZeile, kMindestens, kHoechstens);
    const int zeilen = std::min(platz, modell_.rowCount());
    const int rand = 2 * (kInnenrand + schwebekarte_.rand());
    resize(std::min(breite, kBreiteste) + rand, zeilen * kZeile + rand);
    schwebekarte_.richteAus();
    ruhenderZeiger_ = QCursor::pos();
    show();
    liste_.setFocus();
    liste_.scrollTo(liste_.currentIndex(), QAbstractItemView::PositionAtCenter);
}

void AuswahlPopup::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    schwebekarte_.zeichne(maler);
}

void AuswahlPopup::mousePressEvent(QMouseEvent* ereignis) {
    if (!schwebekarte_.schliessePerDruck(ereignis->position().toPoint())) {
        QFrame::mousePressEvent(ereignis);
    }
}

void AuswahlPopup::resizeEvent(QResizeEvent* ereignis) {
    QFrame::resizeEvent(ereignis);
    schwebekarte_.schneide();
    constexpr int abstand = 2;
    const QRect karte = schwebekarte_.karte();
    balken_->setzeBahn(QRect(karte.right() + 1 - abstand - Rollbalken::kDicke, karte.top() + Schwebekarte::kRadius,
                             Rollbalken::kDicke, karte.height() - 2 * Schwebekarte::kRadius));
}

}  // namespace spurkiste
