#include "platform/qt/QtWecker.h"

#include <QTimer>
#include <utility>

namespace spurkiste {

void QtWecker::wecke(std::chrono::milliseconds nach, Aufgabe aufgabe) {
    QTimer::singleShot(nach, &empfaenger_, std::move(aufgabe));
}

}  // namespace spurkiste
