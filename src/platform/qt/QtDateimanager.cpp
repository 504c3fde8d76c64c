#include "platform/qt/QtDateimanager.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

namespace spurkiste {

namespace {

/// The file: address of a path, every byte that an address cannot hold percent-encoded as it is.
QByteArray adresse(const std::string& pfad) {
    return "file://" + QByteArray::fromStdString(pfad).toPercentEncoding("/");
}

void oeffneOrdner(const std::string& pfad) {
    const std::string ordner = pfad.substr(0, pfad.find_last_of('/') + 1);
    QDesktopServices::openUrl(QUrl::fromEncoded(adresse(ordner)));
}

}  // namespace

void QtDateimanager::zeige(const std::string& pfad) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        oeffneOrdner(pfad);
        return;
    }
    const QString dienst = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage frage = QDBusMessage::createMethodCall(dienst, QStringLiteral("/org/freedesktop/FileManager1"), dienst,
                                                        QStringLiteral("ShowItems"));
    frage << QStringList{QString::fromLatin1(adresse(pfad))} << QString();
    auto* antwort = new QDBusPendingCallWatcher(bus.asyncCall(frage), QCoreApplication::instance());
    QObject::connect(antwort, &QDBusPendingCallWatcher::finished, antwort, [antwort, pfad] {
        if (antwort->isError()) {
            oeffneOrdner(pfad);
        }
        antwort->deleteLater();
    });
}

}  // namespace spurkiste
