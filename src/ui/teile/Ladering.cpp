#include "ui/teile/Ladering.h"

#include <QPainter>

#include "ui/teile/KistePapier.h"

namespace spurkiste {

namespace {

constexpr int kSeite = 14;
constexpr double kStrich = 1.9;
constexpr int kSchrittMs = 40;
constexpr int kSchrittGrad = 15;

}  // namespace

Ladering::Ladering(QWidget* eltern) : QWidget(eltern) {
    setFixedSize(kSeite, kSeite);
    takt_.setInterval(kSchrittMs);
    connect(&takt_, &QTimer::timeout, this, [this] {
        winkel_ = (winkel_ + kSchrittGrad) % 360;
        update();
    });
}

void Ladering::paintEvent(QPaintEvent* /*ereignis*/) {
    constexpr int einGrad = 16;  // arcs count in sixteenths
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const QRectF kreis = QRectF(rect()).adjusted(kStrich / 2, kStrich / 2, -kStrich / 2, -kStrich / 2);
    maler.setPen(QPen(KistePapier::linie, kStrich));
    maler.drawEllipse(kreis);
    maler.setPen(QPen(KistePapier::goldDunkel, kStrich, Qt::SolidLine, Qt::RoundCap));
    maler.drawArc(kreis, -winkel_ * einGrad, 270 * einGrad);
}

void Ladering::showEvent(QShowEvent* ereignis) {
    takt_.start();
    QWidget::showEvent(ereignis);
}

void Ladering::hideEvent(QHideEvent* ereignis) {
    takt_.stop();
    QWidget::hideEvent(ereignis);
}

}  // namespace spurkiste
