#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace spurkiste {

/// Sees to it that a user's library is open in one program only: the first start listens on a socket in the user's
/// runtime folder, a later one hands its files over to it. No network is involved. GUI thread.
class Einzelinstanz final : public QObject {
    Q_OBJECT

  public:
    /// What a later start has to say.
    struct Nachricht {
        std::string marke;                 ///< the desktop's permission to come to the front; empty when it gave none
        std::vector<std::string> dateien;  ///< absolute paths
    };

    /// `ordner` is the library folder that the start was given, an absolute path; absent, it is the user's own. Each of
    /// them has an instance of its own.
    explicit Einzelinstanz(const std::optional<std::string>& ordner);

    /// Hands the message to the program that is open already. True when that program has taken it; otherwise this one
    /// is the first (or the other one does not answer), listens from now on, and the start goes on. What a crashed
    /// program left behind never stands in the way. When nobody can listen, the program simply runs on its own.
    [[nodiscard]] bool gibWeiter(const Nachricht& nachricht);

  Q_SIGNALS:
    /// A later start has handed over its message.
    void gerufen(const spurkiste::Einzelinstanz::Nachricht& nachricht);

  private:
    void nimmAn();

    QString sockel_;  ///< path of the socket; empty when there is no safe place for one
    QLocalServer server_;
};

}  // namespace spurkiste
