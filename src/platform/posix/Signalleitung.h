#pragma once

#include <array>

namespace spurkiste {

/// Turns the system's requests to end (SIGTERM, SIGHUP, SIGINT) into something to read, so that a loop can take them in
/// its turn. One object at a time; at its end the signals do what they did before any program changed it.
class Signalleitung {
  public:
    Signalleitung();
    Signalleitung(const Signalleitung&) = delete;
    Signalleitung& operator=(const Signalleitung&) = delete;
    ~Signalleitung();

    /// The file descriptor that becomes readable with the first signal; -1 when the system has none to give, and then
    /// the signals are left as they are.
    [[nodiscard]] int lesende() const { return enden_[0]; }

  private:
    std::array<int, 2> enden_{-1, -1};  // a signal's handler may do no more than write into it
};

}  // namespace spurkiste
