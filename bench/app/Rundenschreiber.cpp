// Loaded into the running program (LD_PRELOAD), writes down every turn of its main thread's event loop that took longer
// than a tenth of a millisecond: the way from one waiting of the loop to the next. RUNDENSCHREIBER names the file; each
// line has the beginning on the monotonic clock, the time of the clock and the thread's processor time, in nanoseconds.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include <dlfcn.h>
#include <poll.h>
#include <unistd.h>

namespace {

std::int64_t jetzt(clockid_t uhr) {
    timespec zeit{};
    (void)clock_gettime(uhr, &zeit);
    return std::int64_t{zeit.tv_sec} * 1'000'000'000 + zeit.tv_nsec;
}

class Buch {
  public:
    Buch() {
        const char* pfad = std::getenv("RUNDENSCHREIBER");
        datei_ = pfad != nullptr ? std::fopen(pfad, "ae") : nullptr;
    }

    void ende() {
        constexpr std::int64_t wenig = 100'000;
        const std::int64_t uhr = jetzt(CLOCK_MONOTONIC) - uhr_;
        const std::int64_t cpu = jetzt(CLOCK_THREAD_CPUTIME_ID) - cpu_;
        if (datei_ != nullptr && uhr >= wenig) {
            (void)std::fprintf(datei_, "%lld %lld %lld\n", static_cast<long long>(uhr_), static_cast<long long>(uhr),
                               static_cast<long long>(cpu));
            (void)std::fflush(datei_);
        }
    }

    void anfang() {
        uhr_ = jetzt(CLOCK_MONOTONIC);
        cpu_ = jetzt(CLOCK_THREAD_CPUTIME_ID);
    }

  private:
    std::FILE* datei_;
    std::int64_t uhr_ = jetzt(CLOCK_MONOTONIC);
    std::int64_t cpu_ = 0;
};

/// Whether it is the loop that waits: other waiting, for an answer of the display for one, is for one file alone.
bool istSchleife(nfds_t anzahl) {
    return anzahl > 1 && getpid() == gettid();
}

template <typename Funktion>
Funktion naechste(const char* name) {
    return reinterpret_cast<Funktion>(dlsym(RTLD_NEXT, name));
}

template <typename Warte>
int warte(nfds_t anzahl, Warte wirklich) {
    static Buch buch;
    if (!istSchleife(anzahl)) {
        return wirklich();
    }
    buch.ende();
    const int ergebnis = wirklich();
    buch.anfang();
    return ergebnis;
}

}  // namespace

extern "C" {

int poll(pollfd* dateien, nfds_t anzahl, int frist) {
    static const auto echtes = naechste<int (*)(pollfd*, nfds_t, int)>("poll");
    return warte(anzahl, [&] { return echtes(dateien, anzahl, frist); });
}

int ppoll(pollfd* dateien, nfds_t anzahl, const timespec* frist, const sigset_t* maske) {
    static const auto echtes = naechste<int (*)(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
    return warte(anzahl, [&] { return echtes(dateien, anzahl, frist, maske); });
}
}
