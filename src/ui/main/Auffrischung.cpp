#include "ui/main/Auffrischung.h"

#include <algorithm>
#include <utility>

namespace spurkiste {

namespace {

constexpr qint64 kBildMs = 16;

}  // namespace

Auffrischung::Auffrischung(std::function<void()> tue, QObject* eltern) : QObject(eltern), tue_(std::move(tue)) {
    wecker_.setSingleShot(true);
    wecker_.setTimerType(Qt::PreciseTimer);
    connect(&wecker_, &QTimer::timeout, this, &Auffrischung::sofort);
}

void Auffrischung::fordere() {
    if (!wecker_.isActive()) {
        const qint64 vergangen = seitLetzter_.isValid() ? seitLetzter_.elapsed() : kBildMs;
        wecker_.start(static_cast<int>(std::clamp<qint64>(kBildMs - vergangen, 0, kBildMs)));
    }
}

void Auffrischung::sofort() {
    wecker_.stop();
    tue_();
    seitLetzter_.start();
}

}  // namespace spurkiste
