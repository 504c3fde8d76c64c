#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <array>
#include <memory>

namespace spurkiste {

/// Lets the event loop end when the system asks the program to (SIGTERM, SIGHUP, SIGINT), without asking the windows,
/// so that what is in hand is finished and nothing new begun. One object per program. GUI thread.
class Endsignal final : public QObject {
    Q_OBJECT

  public:
    Endsignal();
    Endsignal(const Endsignal&) = delete;
    Endsignal& operator=(const Endsignal&) = delete;
    ~Endsignal() override;

  private:
    std::array<int, 2> leitung_{-1, -1};  // a signal's handler may do no more than write into it
    std::unique_ptr<QSocketNotifier> wache_;
};

}  // namespace spurkiste
