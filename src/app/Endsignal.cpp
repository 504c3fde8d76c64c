#include "app/Endsignal.h"

#include <QCoreApplication>
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

Endsignal::Endsignal() {
    if (::pipe2(leitung_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return;  // then a signal ends the program at once, as it would have
    }
    schreibende = leitung_[1];
    wache_ = std::make_unique<QSocketNotifier>(leitung_[0], QSocketNotifier::Read);
    connect(wache_.get(), &QSocketNotifier::activated, this, [] { QCoreApplication::exit(0); });
    for (const int signal : kSignale) {
        (void)std::signal(signal, melde);
    }
}

Endsignal::~Endsignal() {
    for (const int signal : kSignale) {
        (void)std::signal(signal, SIG_DFL);
    }
    wache_.reset();
    schreibende = -1;
    for (const int ende : leitung_) {
        if (ende >= 0) {
            (void)::close(ende);
        }
    }
}

}  // namespace spurkiste
