#include "ui/teile/Kartenrahmen.h"

#include <QPainter>

#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schatten.h"

namespace spurkiste {

Kartenrahmen::Kartenrahmen(QWidget* karte) : QWidget(karte) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

void Kartenrahmen::setzeFokus(bool fokus) {
    if (fokus_ != fokus) {
        fokus_ = fokus;
        ecken_ = {};
        update();
    }
}

void Kartenrahmen::zeichneSchatten(QPainter& maler, const QRectF& karte) {
    const Schatten schatten{KistePapier::mitDeckkraft(Qt::black, 0.055), 12.0, 4.0};
    schatten.zeichne(maler, karte, kRadius);
}

QColor Kartenrahmen::farbe() const {
    return fokus_ ? KistePapier::goldDunkel : KistePapier::mitDeckkraft(KistePapier::linie, 0.78);
}

QPixmap Kartenrahmen::ecke(const QPoint& wo) const {
    QPixmap bild(QSize(kRadius, kRadius) * devicePixelRatioF());
    bild.setDevicePixelRatio(devicePixelRatioF());
    bild.fill(Qt::transparent);  // gives it an alpha channel to cut into
    QPainter maler(&bild);
    maler.translate(-wo);
    maler.fillRect(rect(), KistePapier::buehne);
    zeichneSchatten(maler, rect());
    maler.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    papier::form(maler, rect(), kRadius, Qt::black, Qt::transparent);
    maler.setCompositionMode(QPainter::CompositionMode_SourceOver);
    papier::form(maler, rect(), kRadius, Qt::transparent, farbe());
    return bild;
}

void Kartenrahmen::paintEvent(QPaintEvent* /*ereignis*/) {
    const int rechts = width() - kRadius;
    const int unten = height() - kRadius;
    const std::array<QPoint, 4> orte{QPoint(0, 0), QPoint(rechts, 0), QPoint(0, unten), QPoint(rechts, unten)};
    QPainter maler(this);
    for (std::size_t i = 0; i < orte.size(); ++i) {
        if (ecken_[i].isNull() || ecken_[i].devicePixelRatio() != devicePixelRatioF()) {
            ecken_[i] = ecke(orte[i]);
        }
        maler.drawPixmap(orte[i], ecken_[i]);
    }
    const QColor linie = farbe();
    maler.fillRect(QRect(kRadius, 0, rechts - kRadius, 1), linie);
    maler.fillRect(QRect(kRadius, height() - 1, rechts - kRadius, 1), linie);
    maler.fillRect(QRect(0, kRadius, 1, unten - kRadius), linie);
    maler.fillRect(QRect(width() - 1, kRadius, 1, unten - kRadius), linie);
}

void Kartenrahmen::resizeEvent(QResizeEvent* ereignis) {
    QWidget::resizeEvent(ereignis);
    ecken_ = {};
}

}  // namespace spurkiste
