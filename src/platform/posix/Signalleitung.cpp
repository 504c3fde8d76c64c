#include "platform/posix/Signalleitung.h"

#include <atomic>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace spurkiste {

namespace {

constexpr std::array kSignale{SIGTERM, SIGHUP, SIGINT};

/// Where the handler writes; it can be given nothing.
std::atomic<int> schreibende = -1;

extern "C" void melde(int /*signal*/) {
    const char zeichen = 0;
    (void)!::write(schreibende, &zeichen, 1);
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
