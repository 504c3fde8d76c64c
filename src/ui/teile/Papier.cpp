#include "ui/teile/Papier.h"

#include <QPainterPath>
#include <QPen>
#include <QRegion>

#include "ui/teile/KistePapier.h"

namespace spurkiste::papier {

void form(QPainter& maler, const QRectF& kasten, double radius, const QColor& grund, const QColor& rahmen,
          double staerke) {
    maler.save();
    maler.setRenderHint(QPainter::Antialiasing);
    if (grund.alpha() > 0) {
        maler.setPen(Qt::NoPen);
        maler.setBrush(grund);
        maler.drawRoundedRect(kasten, radius, radius);
    }
    if (rahmen.alpha() > 0) {
        const double halb = staerke / 2;
        maler.setPen(QPen(rahmen, staerke));
        maler.setBrush(Qt::NoBrush);
        maler.drawRoundedRect(kasten.adjusted(halb, halb, -halb, -halb), radius - halb, radius - halb);
    }
    maler.restore();
}

QRectF ohneRing(const QWidget& element) {
    return QRectF(element.rect()).adjusted(kRingRand, kRingRand, -kRingRand, -kRingRand);
}

void fokusring(QPainter& maler, const QRectF& kasten, double radius) {
    form(maler, kasten.adjusted(-kRingRand, -kRingRand, kRingRand, kRingRand), radius + kRingRand, Qt::transparent,
         KistePapier::mitDeckkraft(KistePapier::gold, 0.16), kRingRand);
    form(maler, kasten, radius, Qt::transparent, KistePapier::mitDeckkraft(KistePapier::gold, 0.72), 1.5);
}

void schneideEcken(QWidget& fenster, int radius) {
    QPainterPath form;
    form.addRoundedRect(fenster.rect(), radius, radius);
    fenster.setMask(QRegion(form.toFillPolygon().toPolygon()));
}

}  // namespace spurkiste::papier
