#include "ui/fenster/Auffrischung.h"

#include <algorithm>
#include <utility>

namespace spurkiste {

Auffrischung::Auffrischung(std::function<void()> tue, QObject* eltern) : QObject(eltern), tue_(std::move(tue)) {
    wecker_.setSingleShot(true);
    wecker_.setTimerType(Qt::PreciseTimer);
    connect(&wecker_, &QTimer::timeout, this, &Auffrischung::sofort);
}

void Auffrischung::fordere() {
    if (!wecker_.isActive()) {
        const qint64 vergangen = seitLetzter_.isValid() ? seitLetzter_.elapsed() : pauseMs_;
        wecker_.start(static_cast<int>(std::clamp<qint64>(pauseMs_ - vergangen, 0, pauseMs_)));
    }
}

void Auffrischung::sofort() {
    wecker_.stop();
    seitLetzter_.start();
    tue_();
    pauseMs_ = std::max(kBildMs, seitLetzter_.restart());
}

}  // namespace spurkiste
