#include "ui/teile/Schild.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

namespace spurkiste {

Schild::Schild(QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
}

void Schild::setzeKuerzung(Qt::TextElideMode kuerzung) {
    kuerzung_ = kuerzung;
    updateGeometry();
}

void Schild::setzeFarbe(const QColor& farbe) {
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, farbe);
    setPalette(palette);
}

QSize Schild::sizeHint() const {
    // Lato's own line is as high as its size, too tight between lines of different sizes.
    constexpr double zeilenhoehe = 1.2;
    constexpr double punkteProZoll = 72.0;
    const double groesse = font().pointSizeF() * logicalDpiY() / punkteProZoll;
    return {static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(text()) - font().letterSpacing())),
            static_cast<int>(std::ceil(zeilenhoehe * groesse))};
}

QSize Schild::minimumSizeHint() const {
    return kuerzung_ == Qt::ElideNone ? sizeHint() : QSize(0, sizeHint().height());
}

void Schild::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.setFont(font());
    maler.setPen(palette().color(QPalette::WindowText));
    const QFontMetricsF mass(font());
    const double sperrung = font().letterSpacing();
    const QString gezeigt =
        kuerzung_ == Qt::ElideNone ? text() : mass.elidedText(text(), kuerzung_, width() + sperrung);
    const double breite = mass.horizontalAdvance(gezeigt);
    const double x = (alignment() & Qt::AlignRight) != 0 ? width() - breite + sperrung : 0.0;
    maler.drawText(QRectF(x, 0, breite + 1, height()), Qt::AlignLeft | Qt::AlignVCenter, gezeigt);
}

}  // namespace spurkiste
