#include "platform/qt/QtAusfuehrer.h"

#include <QMetaObject>
#include <utility>

namespace spurkiste {

void QtAusfuehrer::fuehreAus(Aufgabe aufgabe) {
    QMetaObject::invokeMethod(&empfaenger_, std::move(aufgabe), Qt::QueuedConnection);
}

}  // namespace spurkiste
