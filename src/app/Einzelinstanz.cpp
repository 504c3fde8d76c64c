#include "app/Einzelinstanz.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QDeadlineTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QString>
#include <QThread>
#include <QTimer>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/posix/Dateischloss.h"

namespace spurkiste {

namespace {

constexpr int kTaktMs = 50;                      // between two looks whether the folder has become free
constexpr int kRedezeitMs = 10'000;              // of whoever connects
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

/// Where the socket of the folder is: named after the folder itself, not after the way to it. Empty when the user has
/// no runtime folder.
QString sockelFuer(const std::string& ordner) {
    const QString ort = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    if (ort.isEmpty()) {
        return {};
    }
    std::error_code fehler;
    const auto echter = std::filesystem::weakly_canonical(ordner, fehler).native();
    const auto kurz =
        QCryptographicHash::hash(QByteArray::fromStdString(fehler ? ordner : echter), QCryptographicHash::Sha1);
    return ort + QStringLiteral("/spurkiste-") + QLatin1String(kurz.toHex().left(16));
}

/// A message on its way to the program that has the folder.
class Uebergabe {
  public:
    Uebergabe(QString sockel, QByteArray bytes) : sockel_(std::move(sockel)), bytes_(std::move(bytes)) {}

    /// Whether a program listens there.
    bool erreicht() {
        if (leitung_.state() == QLocalSocket::UnconnectedState) {
            leitung_.connectToServer(sockel_);
            if (leitung_.waitForConnected(kTaktMs)) {
                leitung_.write(bytes_);
                leitung_.flush();
            } else {
                leitung_.abort();
            }
        }
        return leitung_.state() == QLocalSocket::ConnectedState;
    }

    /// Whether it has taken the message, within a moment. A line that breaks is tried anew the next time.
    bool angenommen() {
        if (!erreicht()) {
            QThread::msleep(kTaktMs);  // whoever has the folder does not listen yet, or no longer
            return false;
        }
        (void)leitung_.waitForReadyRead(kTaktMs);
        return leitung_.peek(kGroesste).startsWith(kAngenommen);
    }

  private:
    QString sockel_;
    QByteArray bytes_;
    QLocalSocket leitung_;
};

}  // namespace

/// What belongs to one folder.
struct Einzelinstanz::Platz {
    QString sockel;  ///< path of the socket; empty when there is no place for one
    Dateischloss schloss;
    QLocalServer server;  ///< goes before the lock
};

Einzelinstanz::Einzelinstanz() = default;
Einzelinstanz::~Einzelinstanz() = default;

Einzelinstanz::Ausgang Einzelinstanz::nimm(const std::string& ordner, const Nachricht& nachricht,
                                           std::chrono::milliseconds geduld) {
    auto neuer = std::make_unique<Platz>();
    neuer->sockel = sockelFuer(ordner);
    if (platz_ && platz_->sockel == neuer->sockel) {
        return Ausgang::unser;
    }
    const std::string schloss = (neuer->sockel + QStringLiteral(".lock")).toLocal8Bit().toStdString();
    const QDeadlineTimer frist(geduld);
    Uebergabe uebergabe(neuer->sockel, verpacke(nachricht));
    bool vergeben = !neuer->sockel.isEmpty();
    while (vergeben) {
        vergeben = neuer->schloss.nimm(schloss) == Dateischloss::Ausgang::vergeben;
        if (!vergeben && uebergabe.erreicht()) {  // somebody has cleared his lock file away, but he still listens
            neuer->schloss = Dateischloss();
            vergeben = true;
        }
        if (vergeben && uebergabe.angenommen()) {
            return Ausgang::uebergeben;
        }
        if (vergeben && frist.hasExpired()) {
            return Ausgang::stumm;
        }
    }
    horche(*neuer);
    platz_ = std::move(neuer);
    return Ausgang::unser;
}

void Einzelinstanz::horche(Platz& platz) {
    if (platz.sockel.isEmpty()) {
        return;
    }
    platz.server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&platz.server, &QLocalServer::newConnection, this, [this, &platz] { nimmAn(*this, platz); });
    QLocalServer::removeServer(platz.sockel);  // what a crashed program left behind
    (void)platz.server.listen(platz.sockel);
}

void Einzelinstanz::verstumme() {
    if (platz_) {
        platz_->server.close();
    }
}

void Einzelinstanz::nimmAn(Einzelinstanz& instanz, Platz& platz) {
    while (QLocalSocket* leitung = platz.server.nextPendingConnection()) {
        connect(leitung, &QLocalSocket::disconnected, leitung, &QObject::deleteLater);
        QTimer::singleShot(kRedezeitMs, leitung, &QLocalSocket::abort);  // whoever connects and stays silent
        connect(leitung, &QLocalSocket::readyRead, &instanz, [&instanz, leitung] {
            if (leitung->bytesAvailable() > kGroesste) {
                leitung->abort();
                return;
            }
            if (const QByteArray bytes = leitung->peek(kGroesste); istVollstaendig(bytes)) {
                leitung->readAll();
                leitung->write(kAngenommen);
                leitung->flush();
                leitung->disconnectFromServer();
                Q_EMIT instanz.gerufen(packeAus(bytes));
            }
        });
    }
}

}  // namespace spurkiste
