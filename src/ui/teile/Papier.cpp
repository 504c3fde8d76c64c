#include "ui/teile/Papier.h"

#include <QPen>

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

void fokusring(QPainter& maler, const QRectF& kasten, double radius, bool aussen) {
    constexpr double staerke = 1.5;
    const QRectF band = kasten.adjusted(-kRingRand, -kRingRand, kRingRand, kRingRand);
    form(maler, band, radius + kRingRand, Qt::transparent, KistePapier::mitDeckkraft(KistePapier::gold, 0.16),
         kRingRand);
    // Opaque: anything paler has less than three times the contrast of what is around it.
    form(maler, aussen ? band : kasten, aussen ? radius + kRingRand : radius, Qt::transparent, KistePapier::goldDunkel,
         staerke);
}

}  // namespace spurkiste::papier
