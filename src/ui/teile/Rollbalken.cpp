#include "ui/teile/Rollbalken.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <cstdint>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"

namespace spurkiste {

namespace {

constexpr int kKuerzester = 28;  // so that a long list still has a handle to take hold of
constexpr int kGreifrand = 3;    // around the handle, where the mouse takes it too

}  // namespace

Rollbalken::Rollbalken(QScrollBar& balken, QWidget* eltern) : QWidget(eltern), balken_(balken) {
    setFocusPolicy(Qt::NoFocus);
    connect(&balken_, &QScrollBar::valueChanged, this, &Rollbalken::ordneAn);
    connect(&balken_, &QScrollBar::rangeChanged, this, &Rollbalken::ordneAn);
    ordneAn();
}

void Rollbalken::setzeBahn(const QRect& bahn) {
    bahn_ = bahn;
    ordneAn();
}

int Rollbalken::griffLaenge() const {
    const int bahn = senkrecht() ? bahn_.height() : bahn_.width();
    const std::int64_t seite = balken_.pageStep();
    const std::int64_t ganz = std::max<std::int64_t>(1, seite + balken_.maximum() - balken_.minimum());
    return std::min(bahn, std::max(kKuerzester, static_cast<int>(bahn * seite / ganz)));
}

int Rollbalken::spielraum() const {
    return (senkrecht() ? bahn_.height() : bahn_.width()) - griffLaenge();
}

int Rollbalken::entlang(const QPointF& punkt) const {
    return static_cast<int>(std::lround(senkrecht() ? punkt.y() : punkt.x()));
}

void Rollbalken::ordneAn() {
    const std::int64_t weite = balken_.maximum() - balken_.minimum();
    setVisible(weite > 0);
    if (weite <= 0) {
        return;
    }
    const std::int64_t gerollt = balken_.value() - balken_.minimum();
    const int stelle = static_cast<int>(spielraum() * gerollt / weite);
    const QRect griff = senkrecht() ? QRect(bahn_.left(), bahn_.top() + stelle, bahn_.width(), griffLaenge())
                                    : QRect(bahn_.left() + stelle, bahn_.top(), griffLaenge(), bahn_.height());
    setGeometry(griff.adjusted(-kGreifrand, -kGreifrand, kGreifrand, kGreifrand));
}

void Rollbalken::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    const QRectF griff = QRectF(rect()).adjusted(kGreifrand, kGreifrand, -kGreifrand, -kGreifrand);
    const double deckkraft = underMouse() ? 0.30 : 0.18;
    papier::form(maler, griff, kDicke / 2.0, KistePapier::mitDeckkraft(KistePapier::tinte, deckkraft), Qt::transparent);
}

void Rollbalken::mousePressEvent(QMouseEvent* ereignis) {
    gegriffen_ = entlang(ereignis->position());
    balken_.setSliderDown(true);
}

void Rollbalken::mouseMoveEvent(QMouseEvent* ereignis) {
    const int stelle = entlang(mapToParent(ereignis->position())) - gegriffen_ + kGreifrand;
    const int anfang = senkrecht() ? bahn_.top() : bahn_.left();
    const std::int64_t weite = balken_.maximum() - balken_.minimum();
    if (spielraum() > 0) {
        balken_.setValue(balken_.minimum() + static_cast<int>((stelle - anfang) * weite / spielraum()));
    }
}

void Rollbalken::mouseReleaseEvent(QMouseEvent* /*ereignis*/) {
    balken_.setSliderDown(false);
}

void Rollbalken::enterEvent(QEnterEvent* ereignis) {
    QWidget::enterEvent(ereignis);
    update();
}

void Rollbalken::leaveEvent(QEvent* ereignis) {
    QWidget::leaveEvent(ereignis);
    update();
}

}  // namespace spurkiste
