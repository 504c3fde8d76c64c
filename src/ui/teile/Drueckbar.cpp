#include "ui/teile/Drueckbar.h"

#include <QAccessible>
#include <QEnterEvent>
#include <QKeyEvent>

namespace spurkiste {

Drueckbar::Drueckbar(QWidget* eltern) : QAbstractButton(eltern) {
    setFocusPolicy(Qt::TabFocus);
}

void Drueckbar::zeigeOffen(const QWidget& geoeffnetes) {
    setzeOffen(true);
    connect(&geoeffnetes, &QObject::destroyed, this, [this] { setzeOffen(false); });
}

void Drueckbar::setzeOffen(bool offen) {
    offen_ = offen;
    update();
    QAccessible::State geaendert;
    geaendert.expanded = true;
    geaendert.collapsed = true;
    QAccessibleStateChangeEvent meldung(this, geaendert);
    QAccessible::updateAccessibility(&meldung);
    if (!offen && hasFocus()) {  // the toolkit's menus do not say where the keyboard has gone back to
        QAccessibleEvent zurueck(this, QAccessible::Focus);
        QAccessible::updateAccessibility(&zurueck);
    }
}

void Drueckbar::keyPressEvent(QKeyEvent* ereignis) {
    switch (ereignis->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            return;
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_F4:
            if (klapptAuf_) {
                click();
                return;
            }
            [[fallthrough]];
        default:
            QAbstractButton::keyPressEvent(ereignis);
    }
}

void Drueckbar::enterEvent(QEnterEvent* ereignis) {
    update();
    QAbstractButton::enterEvent(ereignis);
}

void Drueckbar::leaveEvent(QEvent* ereignis) {
    update();
    QAbstractButton::leaveEvent(ereignis);
}

}  // namespace spurkiste
