#include "app/Einzelinstanz.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QLocalSocket>
#include <QLockFile>
#include <QStandardPaths>
#include <QTimer>
#include <utility>

namespace spurkiste {

namespace {

constexpr int kGeduldMs = 5000;                  // for a program that is busy painting a large library
constexpr qint64 kGroesste = qint64{64} << 20U;  // bytes of a message; command lines are far shorter
constexpr char kEnde = '\x04';                   // closes a message; no path of the command line is this short
constexpr const char* kAngenommen = "ok";

/// The parts of a message, each with a null byte behind it, which no path contains; an empty part cannot be a path.
QByteArray verpacke(const Einzelinstanz::Nachricht& nachricht) {
    QByteArray bytes = QByteArray::fromStdString(nachricht.marke) + '\0';
    for (const std::string& datei : nachricht.dateien) {
        bytes += QByteArray::fromStdString(datei) + '\0';
    }
    return bytes + kEnde + '\0';
}

bool istVollstaendig(const QByteArray& bytes) {
    return bytes.endsWith(QByteArray("\0\x04\0", 3));
}

Einzelinstanz::Nachricht packeAus(const QByteArray& bytes) {
    QList<QByteArray> teile = bytes.split('\0');
    teile.resize(teile.size() - 2);  // the end mark and what follows the last null byte
    Einzelinstanz::Nachricht nachricht;
    nachricht.marke = teile.takeFirst().toStdString();
    for (const QByteArray& teil : std::as_const(teile)) {
        nachricht.dateien.push_back(teil.toStdString());
    }
    return nachricht;
}

/// Whether a program listens on the socket and has taken the bytes.
bool uebergib(const QString& sockel, const QByteArray& bytes) {
    QLocalSocket leitung;
    leitung.connectToServer(sockel);
    if (!leitung.waitForConnected(kGeduldMs)) {
        return false;
    }
    leitung.write(bytes);
    while (leitung.bytesToWrite() > 0) {
        if (!leitung.waitForBytesWritten(kGeduldMs)) {
            return false;
        }
    }
    return leitung.waitForReadyRead(kGeduldMs) && leitung.readAll().startsWith(kAngenommen);
}

}  // namespace

Einzelinstanz::Einzelinstanz(const std::optional<std::string>& ordner) {
    const QString ort = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (!ort.isEmpty()) {
        QString name = QStringLiteral("spurkiste");
        if (ordner) {
            const auto kurz = QCryptographicHash::hash(QByteArray::fromStdString(*ordner), QCryptographicHash::Sha1);
            name += QLatin1Char('-') + QString::fromLatin1(kurz.toHex().left(16));
        }
        sockel_ = ort + QLatin1Char('/') + name;
    }
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &Einzelinstanz::nimmAn);
}

bool Einzelinstanz::gibWeiter(const Nachricht& nachricht) {
    if (sockel_.isEmpty()) {
        return false;
    }
    // Two starts at the same moment must not both find nobody. A lock whose owner is dead is nobody's.
    QLockFile schloss(sockel_ + QStringLiteral(".lock"));
    (void)schloss.tryLock(2 * kGeduldMs);
    if (uebergib(sockel_, verpacke(nachricht))) {
        return true;
    }
    QLocalServer::removeServer(sockel_);
    (void)server_.listen(sockel_);
    return false;
}

void Einzelinstanz::nimmAn() {
    while (QLocalSocket* leitung = server_.nextPendingConnection()) {
        connect(leitung, &QLocalSocket::disconnected, leitung, &QObject::deleteLater);
        QTimer::singleShot(2 * kGeduldMs, leitung, &QLocalSocket::abort);  // whoever connects and stays silent
        connect(leitung, &QLocalSocket::readyRead, this, [this, leitung] {
            if (leitung->bytesAvailable() > kGroesste) {
                leitung->abort();
                return;
            }
            if (const QByteArray bytes = leitung->peek(kGroesste); istVollstaendig(bytes)) {
                leitung->readAll();
                leitung->write(kAngenommen);
                leitung->flush();
                leitung->disconnectFromServer();
                Q_EMIT gerufen(packeAus(bytes));
            }
        });
    }
}

}  // namespace spurkiste
