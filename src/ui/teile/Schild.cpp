#include "ui/teile/Schild.h"

#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "ui/teile/Schrift.h"

namespace spurkiste {

Schild::Schild(QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
}

void Schild::setzeKuerzung(Qt::TextElideMode kuerzung) {
    kuerzung_ = kuerzung;
    updateGeometry();
}

QSize Schild::sizeHint() const {
    return {static_cast<int>(std::ceil(QFontMetricsF(font()).horizontalAdvance(text()) - font().letterSpacing())),
            Schrift::zeilenhoehe(*this)};
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
