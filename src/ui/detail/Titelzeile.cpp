#include "ui/detail/Titelzeile.h"

#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>

#include "base/Text.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kZeilen = 2;

}  // namespace

Titelzeile::Titelzeile(const QColor& farbe, QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
    faerbeText(*this, farbe);
    QSizePolicy regel(QSizePolicy::Ignored, QSizePolicy::Fixed);
    regel.setHeightForWidth(true);
    setSizePolicy(regel);
}

void Titelzeile::zeige(const QString& text) {
    const QString einzeilig = alsText(text::einzeilig(text.toStdString()));
    setText(einzeilig);
    setzeKurzhilfe(*this, einzeilig);
    updateGeometry();
}

QStringList Titelzeile::zeilen(int breite) const {
    QStringList ergebnis = umbrochen(text(), font(), breite);
    if (ergebnis.size() >= kZeilen) {  // all the rest belongs to the last line, as far as it fits
        const QString rest = ergebnis.mid(kZeilen - 1).join(QString());
        ergebnis.resize(kZeilen);
        ergebnis.last() = QFontMetricsF(font()).elidedText(rest, Qt::ElideRight, breite);
    }
    for (QString& zeile : ergebnis) {
        zeile = zeile.trimmed();
    }
    return ergebnis;
}

int Titelzeile::heightForWidth(int breite) const {
    return Schrift::zeilenhoehe(*this) * std::max(1, static_cast<int>(zeilen(breite).size()));
}

QSize Titelzeile::sizeHint() const {
    return {0, heightForWidth(std::max(1, width()))};
}

QSize Titelzeile::minimumSizeHint() const {
    return {0, Schrift::zeilenhoehe(*this)};
}

void Titelzeile::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.setFont(font());
    maler.setPen(palette().color(QPalette::WindowText));
    // Of the whole title: its second line may begin with a word of another script.
    maler.setLayoutDirection(text().isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    QRect kasten(0, 0, width(), Schrift::zeilenhoehe(*this));
    for (const QString& zeile : zeilen(width())) {
        maler.drawText(kasten, Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter, zeile);
        kasten.translate(0, kasten.height());
    }
}

}  // namespace spurkiste
