#include "ui/teile/Randblende.h"

#include <QEvent>
#include <QLinearGradient>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "ui/teile/KistePapier.h"

namespace spurkiste {

Randblende::Randblende(QScrollArea& rolle, const QColor& grund, int hoehe)
    : QWidget(&rolle), rolle_(rolle), grund_(grund), hoehe_(hoehe) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
    rolle.installEventFilter(this);
    const QScrollBar* balken = rolle.horizontalScrollBar();
    connect(balken, &QScrollBar::valueChanged, this, qOverload<>(&QWidget::update));
    connect(balken, &QScrollBar::rangeChanged, this, qOverload<>(&QWidget::update));
    legeAn();
}

void Randblende::legeAn() {
    setGeometry(0, (rolle_.height() - hoehe_) / 2, rolle_.width(), hoehe_);
    raise();
}

bool Randblende::eventFilter(QObject* quelle, QEvent* ereignis) {
    if (ereignis->type() == QEvent::Resize || ereignis->type() == QEvent::Show) {
        legeAn();
    }
    return QWidget::eventFilter(quelle, ereignis);
}

void Randblende::paintEvent(QPaintEvent* /*ereignis*/) {
    QPainter maler(this);
    const auto blende = [&](int aussen, int innen) {
        QLinearGradient verlauf(aussen, 0, innen, 0);
        verlauf.setColorAt(0, grund_);
        verlauf.setColorAt(1, KistePapier::mitDeckkraft(grund_, 0));
        maler.fillRect(QRect(std::min(aussen, innen), 0, kBreite, height()), verlauf);
    };
    const QScrollBar* balken = rolle_.horizontalScrollBar();
    if (balken->value() > balken->minimum()) {
        blende(0, kBreite);
    }
    if (balken->value() < balken->maximum()) {
        blende(width(), width() - kBreite);
    }
}

}  // namespace spurkiste
