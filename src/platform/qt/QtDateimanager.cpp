#include "platform/qt/QtDateimanager.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QProcess>
#include <QStringList>
#include <QUrl>
#include <utility>

namespace spurkiste {

namespace {

/// The file: address of a path, every byte that an address cannot hold percent-encoded as it is.
QByteArray adresse(const std::string& pfad) {
    return "file://" + QByteArray::fromStdString(pfad).toPercentEncoding("/");
}

void oeffneOrdner(const std::string& pfad, const std::function<void()>& vergeblich) {
    const std::string ordner = pfad.substr(0, pfad.find_last_of('/') + 1);
    if (!QDesktopServices::openUrl(QUrl::fromEncoded(adresse(ordner)))) {
        vergeblich();
    }
}

/// Opens the file's folder with the program that the desktop has for folders. What opens it would hide that there is
/// none, so the desktop is asked first; one that cannot be asked may still have one.
void sucheOeffner(const std::string& pfad, const std::function<void()>& vergeblich) {
    auto* frage = new QProcess(QCoreApplication::instance());
    QObject::connect(frage, &QProcess::finished, frage, [=](int ende) {
        if (ende == 0 && frage->readAllStandardOutput().trimmed().isEmpty()) {
            vergeblich();
        } else {
            oeffneOrdner(pfad, vergeblich);
        }
        frage->deleteLater();
    });
    QObject::connect(frage, &QProcess::errorOccurred, frage, [=](QProcess::ProcessError fehler) {
        if (fehler == QProcess::FailedToStart) {
            oeffneOrdner(pfad, vergeblich);
            frage->deleteLater();
        }
    });
    frage->start(QStringLiteral("xdg-mime"),
                 {QStringLiteral("query"), QStringLiteral("default"), QStringLiteral("inode/directory")});
}

}  // namespace

void QtDateimanager::zeige(const std::string& pfad, std::function<void()> vergeblich) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) {
        sucheOeffner(pfad, vergeblich);
        return;
    }
    const QString dienst = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage frage = QDBusMessage::createMethodCall(dienst, QStringLiteral("/org/freedesktop/FileManager1"), dienst,
                                                        QStringLiteral("ShowItems"));
    frage << QStringList{QString::fromLatin1(adresse(pfad))} << QString();
    auto* antwort = new QDBusPendingCallWatcher(bus.asyncCall(frage), QCoreApplication::instance());
    QObject::connect(antwort, &QDBusPendingCallWatcher::finished, antwort,
                     [antwort, pfad, vergeblich = std::move(vergeblich)] {
                         if (antwort->isError()) {
                             sucheOeffner(pfad, vergeblich);
                         }
                         antwort->deleteLater();
                     });
}

}  // namespace spurkiste
