#include "ui/teile/Schild.h"

#include <QEvent>
#include <QPainter>
#include <cmath>

#include "ui/teile/Schrift.h"

namespace spurkiste {

Schild::Schild(QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
}

Schriftsatz& Schild::satz() const {
    if (!satz_) {
        satz_.emplace(font());
        if (kuerzung_ != Qt::ElideNone) {
            satz_->setzeKuerzung(kuerzung_);
        }
    }
    return *satz_;
}

void Schild::setzeKuerzung(Qt::TextElideMode kuerzung) {
    kuerzung_ = kuerzung;
    satz_.reset();
    updateGeometry();
}

void Schild::changeEvent(QEvent* ereignis) {
    if (ereignis->type() == QEvent::FontChange) {
        satz_.reset();
    }
    QLabel::changeEvent(ereignis);
}

QSize Schild::sizeHint() const {
    const QMargins rand = contentsMargins();
    return {static_cast<int>(std::ceil(textbreite())) + rand.left() + rand.right(),
            Schrift::zeilenhoehe(*this) + rand.top() + rand.bottom()};
}

QSize Schild::minimumSizeHint() const {
    return kuerzung_ == Qt::ElideNone ? sizeHint() : QSize(0, sizeHint().height());
}

void Schild::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.setPen(palette().color(QPalette::WindowText));
    QRectF kasten = contentsRect();
    const bool rechts = (alignment() & Qt::AlignRight) != 0;
    if (kuerzung_ == Qt::ElideNone && textbreite() > kasten.width()) {
        kasten.adjust(rechts ? kasten.width() - textbreite() : 0.0, 0, rechts ? 0.0 : textbreite() - kasten.width(), 0);
    }
    satz().zeichne(maler, kasten, rechts ? Qt::AlignRight : Qt::AlignLeft, text());
}

}  // namespace spurkiste
