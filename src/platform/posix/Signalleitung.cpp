#include "platform/posix/Signalleitung.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace spurkiste {

namespace {

constexpr std::array kSignale{SIGTERM, SIGHUP, SIGINT};

/// Where the handler writes.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables): a handler can be given nothing
std::atomic<int> schreibende = -1;

/// Whatever it interrupts may be about to look at the error number.
extern "C" void melde(int /*signal*/) {
    const int fehler = errno;
    const char zeichen = 0;
    // A full line says it already.
    [[maybe_unused]] const ssize_t geschrieben = ::write(schreibende, &zeichen, 1);
    errno = fehler;
}

}  // namespace

Signalleitung::Signalleitung() {
    if (::pipe2(enden_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    schreibende = enden_[1];
    for (const int signal : kSignale) {
        (void)std::signal(signal, melde);
    }
}

Signalleitung::~Signalleitung() {
    if (enden_[0] < 0) {
        return;
    }
    for (const int signal : kSignale) {
        (void)std::signal(signal, SIG_DFL);
    }
    schreibende = -1;
    for (const int ende : enden_) {
        (void)::close(ende);
    }
}

}  // namespace spurkiste
