#include "ui/detail/Titelzeile.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTextLayout>
#include <cmath>

#include "base/Text.h"
#include "ui/teile/Textzeile.h"

namespace spurkiste {

namespace {

constexpr int kZeilen = 2;

}  // namespace

Titelzeile::Titelzeile(const QColor& farbe, QWidget* eltern) : QLabel(eltern) {
    setTextFormat(Qt::PlainText);
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, farbe);
    setPalette(palette);
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

int Titelzeile::zeilenhoehe() const {
    constexpr double verhaeltnis = 1.2;
    constexpr double punkteProZoll = 72.0;
    return static_cast<int>(std::ceil(verhaeltnis * font().pointSizeF() * logicalDpiY() / punkteProZoll));
}

QStringList Titelzeile::zeilen(int breite) const {
    QTextLayout satz(text(), font());
    QTextOption wie;
    wie.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    satz.setTextOption(wie);
    QStringList ergebnis;
    satz.beginLayout();
    for (QTextLine zeile = satz.createLine(); zeile.isValid(); zeile = satz.createLine()) {
        zeile.setLineWidth(breite);
        if (ergebnis.size() + 1 == kZeilen) {  // all the rest belongs to the last line, as far as it fits
            ergebnis << QFontMetricsF(font()).elidedText(text().mid(zeile.textStart()), Qt::ElideRight, breite);
            break;
        }
        ergebnis << text().mid(zeile.textStart(), zeile.textLength()).trimmed();
    }
    satz.endLayout();
    return ergebnis;
}

int Titelzeile::heightForWidth(int breite) const {
    return zeilenhoehe() * std::max(1, static_cast<int>(zeilen(breite).size()));
}

QSize Titelzeile::sizeHint() const {
    return {0, heightForWidth(std::max(1, width()))};
}

QSize Titelzeile::minimumSizeHint() const {
    return {0, zeilenhoehe()};
}

void Titelzeile::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    maler.setFont(font());
    maler.setPen(palette().color(QPalette::WindowText));
    int y = 0;
    for (const QString& zeile : zeilen(width())) {
        maler.drawText(QRect(0, y, width(), zeilenhoehe()), Qt::AlignLeft | Qt::AlignVCenter, zeile);
        y += zeilenhoehe();
    }
}

}  // namespace spurkiste
