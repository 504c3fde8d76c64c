#pragma once

#include <QObject>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace spurkiste {

/// Sees to it that a user's library folder is open in one program with a window only: who has the folder holds a lock
/// and listens on a socket beside it, both in the user's runtime folder and named after the real folder; whoever else
/// wants it hands over what he has to say. Who is stopped or busy still has the lock. No network is involved. GUI
/// thread.
class Einzelinstanz final : public QObject {
    Q_OBJECT

  public:
    /// What a program that wants the folder, too, has to say to the one that has it.
    struct Nachricht {
        std::string marke;                 ///< the desktop's permission to come to the front; empty when it gave none
        std::vector<std::string> dateien;  ///< absolute paths
    };
    enum class Ausgang {
        unser,       ///< the folder is this program's
        uebergeben,  ///< another program has it and has taken the message
        stumm,       ///< another program has it and does not answer
    };

    Einzelinstanz();
    ~Einzelinstanz() override;

    /// Takes the folder, an absolute path by whatever way, and leaves the one that was this program's before; when
    /// another program has it, that one stays. Waits no longer than `geduld` for another program. Where there is no
    /// place for locks, every program has its folder to itself.
    [[nodiscard]] Ausgang nimm(const std::string& ordner, const Nachricht& nachricht, std::chrono::milliseconds geduld);

    /// Listens no longer but keeps the folder: for the time in which the program finishes what it has begun.
    void verstumme();

  Q_SIGNALS:
    /// Another program has handed over its message.
    void gerufen(const spurkiste::Einzelinstanz::Nachricht& nachricht);

  private:
    struct Platz;

    void horche(Platz& platz);
    static void nimmAn(Einzelinstanz& instanz, Platz& platz);

    std::unique_ptr<Platz> platz_;  ///< of the folder that is this program's
};

}  // namespace spurkiste
