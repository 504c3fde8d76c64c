// Preloaded, lets one call of the system fail that has to do with a file below one of some folders, and counts them:
//
//   STOERUNG_ORDNER   the folders, a colon between two
//   STOERUNG          CALL:NUMBER:ERROR: which call, counted from 1 for each kind, and the error's number. 0 makes
//   reads
//                     and writes short, from that call on.
//   STOERUNG_BERICHT  a file to which "hit CALL" is appended, and at the end "count CALL N" for each kind

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <linux/stat.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

struct Zaehler {
    const char* name = nullptr;
    std::atomic<long> anzahl{0};
};

std::array<Zaehler, 64> alle;
std::atomic<std::size_t> belegt{0};

/// Read once; what it points to lives as long as the process.
struct Plan {
    std::string_view ordner = umgebung("STOERUNG_ORDNER");
    std::string_view aufruf;
    long nummer = 0;
    int fehler = 0;
    const char* bericht = std::getenv("STOERUNG_BERICHT");

    Plan() {
        const std::string_view text = umgebung("STOERUNG");
        const auto ende = text.find(':');
        if (ende != std::string_view::npos) {
            aufruf = text.substr(0, ende);
            char* rest = nullptr;
            nummer = std::strtol(text.data() + ende + 1, &rest, 10);
            fehler = static_cast<int>(std::strtol(rest + 1, nullptr, 10));
        }
    }

    static std::string_view umgebung(const char* name) {
        const char* wert = std::getenv(name);
        return wert == nullptr ? "" : wert;
    }
};

const Plan& plan() {
    static const Plan einer;
    return einer;
}

/// Past the functions below, which would count it.
void berichte(const char* was, const char* aufruf, long anzahl) {
    if (plan().bericht == nullptr) {
        return;
    }
    std::array<char, 100> zeile{};
    const int laenge = std::snprintf(zeile.data(), zeile.size(), "%s %s %ld\n", was, aufruf, anzahl);
    const long nummer = ::syscall(SYS_openat, AT_FDCWD, plan().bericht, O_WRONLY | O_CREAT | O_APPEND, 0600);
    ::syscall(SYS_write, nummer, zeile.data(), laenge);
    ::syscall(SYS_close, nummer);
}

struct Ende {
    Ende() = default;
    Ende(const Ende&) = delete;
    Ende& operator=(const Ende&) = delete;
    ~Ende() {
        for (std::size_t i = 0; i < belegt; ++i) {
            berichte("count", alle.at(i).name, alle.at(i).anzahl);
        }
    }
} ende;

bool liegtDarin(std::string_view pfad) {
    std::string_view rest = plan().ordner;
    while (!rest.empty()) {
        const auto ordner = rest.substr(0, rest.find(':'));
        if (pfad.starts_with(ordner)) {
            return true;
        }
        rest.remove_prefix(std::min(rest.size(), ordner.size() + 1));
    }
    return false;
}

bool betrifft(const char* pfad) {
    return pfad != nullptr && liegtDarin(pfad);
}

bool betrifft(int nummer) {
    std::array<char, 4096> ziel{};
    std::array<char, 40> verweis{};
    std::snprintf(verweis.data(), verweis.size(), "/proc/self/fd/%d", nummer);
    const long laenge = nummer < 0 ? -1 : ::syscall(SYS_readlink, verweis.data(), ziel.data(), ziel.size());
    return laenge > 0 && liegtDarin({ziel.data(), static_cast<std::size_t>(laenge)});
}

enum class Wie { normal, fehler, kurz };

/// Counts one call and says what is to become of it. In the first case errno is as it was.
template <typename... Orte>
Wie zaehle(Zaehler& zaehler, Orte... orte) {
    const int vorher = errno;
    if (!(betrifft(orte) || ...)) {
        errno = vorher;
        return Wie::normal;
    }
    const long nummer = ++zaehler.anzahl;
    errno = vorher;
    if (plan().aufruf != zaehler.name || nummer < plan().nummer || (plan().fehler != 0 && nummer > plan().nummer)) {
        return Wie::normal;
    }
    if (nummer == plan().nummer) {
        berichte("hit", zaehler.name, nummer);
    }
    errno = plan().fehler != 0 ? plan().fehler : vorher;
    return plan().fehler != 0 ? Wie::fehler : Wie::kurz;
}

Zaehler& melde(const char* name) {
    Zaehler& neuer = alle.at(belegt++);
    neuer.name = name;
    return neuer;
}

std::size_t halb(std::size_t anzahl) {
    return (anzahl + 1) / 2;
}

}  // namespace

// NOLINTBEGIN: the names, their arguments and how they fail are the system's

/// What every function begins with: its counter and the function that it stands in front of.
#define VOR(name)                           \
    static Zaehler& zaehler = melde(#name); \
    static const auto echt = reinterpret_cast<decltype(&::name)>(::dlsym(RTLD_NEXT, #name))

/// A function that fails with `schlecht`; `orte` are the paths and open files that it is about.
#define STOERE(ergebnis, name, parameter, orte, werte, schlecht) \
    extern "C" ergebnis name parameter {                         \
        VOR(name);                                               \
        if (zaehle orte == Wie::fehler) {                        \
            return schlecht;                                     \
        }                                                        \
        return echt werte;                                       \
    }

/// The same of one that moves bytes, and may move fewer.
#define KUERZE(name, parameter, orte, werte) \
    extern "C" ssize_t name parameter {      \
        VOR(name);                           \
        const Wie wie = zaehle orte;         \
        if (wie == Wie::fehler) {            \
            return -1;                       \
        }                                    \
        if (wie == Wie::kurz) {              \
            anzahl = halb(anzahl);           \
        }                                    \
        return echt werte;                   \
    }

#define OEFFNE(name, parameter, werte)                                   \
    extern "C" int name parameter {                                      \
        VOR(name);                                                       \
        va_list rest;                                                    \
        va_start(rest, wie);                                             \
        const auto rechte = static_cast<mode_t>(va_arg(rest, unsigned)); \
        va_end(rest);                                                    \
        return zaehle(zaehler, pfad) == Wie::fehler ? -1 : echt werte;   \
    }

OEFFNE(open, (const char* pfad, int wie, ...), (pfad, wie, rechte))
OEFFNE(open64, (const char* pfad, int wie, ...), (pfad, wie, rechte))
OEFFNE(openat, (int ordner, const char* pfad, int wie, ...), (ordner, pfad, wie, rechte))
OEFFNE(openat64, (int ordner, const char* pfad, int wie, ...), (ordner, pfad, wie, rechte))
KUERZE(read, (int nummer, void* puffer, size_t anzahl), (zaehler, nummer), (nummer, puffer, anzahl))
KUERZE(pread, (int nummer, void* puffer, size_t anzahl, off_t ab), (zaehler, nummer), (nummer, puffer, anzahl, ab))
KUERZE(pread64, (int nummer, void* puffer, size_t anzahl, off_t ab), (zaehler, nummer), (nummer, puffer, anzahl, ab))
KUERZE(write, (int nummer, const void* puffer, size_t anzahl), (zaehler, nummer), (nummer, puffer, anzahl))
KUERZE(pwrite, (int nummer, const void* puffer, size_t anzahl, off_t ab), (zaehler, nummer),
       (nummer, puffer, anzahl, ab))
KUERZE(copy_file_range, (int von, off_t* ab, int nach, off_t* stelle, size_t anzahl, unsigned art),
       (zaehler, von, nach), (von, ab, nach, stelle, anzahl, art))
STOERE(int, fsync, (int nummer), (zaehler, nummer), (nummer), -1)
STOERE(int, fdatasync, (int nummer), (zaehler, nummer), (nummer), -1)
STOERE(int, syncfs, (int nummer) noexcept, (zaehler, nummer), (nummer), -1)
STOERE(int, sync_file_range, (int nummer, off_t ab, off_t anzahl, unsigned wie), (zaehler, nummer),
       (nummer, ab, anzahl, wie), -1)
STOERE(int, ftruncate, (int nummer, off_t laenge) noexcept, (zaehler, nummer), (nummer, laenge), -1)
STOERE(int, rename, (const char* alt, const char* neu) noexcept, (zaehler, alt, neu), (alt, neu), -1)
STOERE(int, renameat2, (int von, const char* alt, int nach, const char* neu, unsigned wie) noexcept,
       (zaehler, alt, neu), (von, alt, nach, neu, wie), -1)
STOERE(int, linkat, (int von, const char* alt, int nach, const char* neu, int wie) noexcept, (zaehler, alt, neu),
       (von, alt, nach, neu, wie), -1)
STOERE(int, unlink, (const char* pfad) noexcept, (zaehler, pfad), (pfad), -1)
STOERE(int, unlinkat, (int ordner, const char* pfad, int wie) noexcept, (zaehler, pfad), (ordner, pfad, wie), -1)
STOERE(int, mkdir, (const char* pfad, mode_t rechte) noexcept, (zaehler, pfad), (pfad, rechte), -1)
STOERE(int, stat, (const char* pfad, struct stat* zustand) noexcept, (zaehler, pfad), (pfad, zustand), -1)
STOERE(int, lstat, (const char* pfad, struct stat* zustand) noexcept, (zaehler, pfad), (pfad, zustand), -1)
STOERE(int, fstat, (int nummer, struct stat* zustand) noexcept, (zaehler, nummer), (nummer, zustand), -1)
STOERE(int, fstatat, (int ordner, const char* pfad, struct stat* zustand, int wie) noexcept, (zaehler, pfad),
       (ordner, pfad, zustand, wie), -1)
STOERE(int, fchmod, (int nummer, mode_t rechte) noexcept, (zaehler, nummer), (nummer, rechte), -1)
STOERE(int, fchown, (int nummer, uid_t wer, gid_t gruppe) noexcept, (zaehler, nummer), (nummer, wer, gruppe), -1)
STOERE(int, futimens, (int nummer, const timespec* zeiten) noexcept, (zaehler, nummer), (nummer, zeiten), -1)
STOERE(int, flock, (int nummer, int wie) noexcept, (zaehler, nummer), (nummer, wie), -1)
STOERE(ssize_t, flistxattr, (int nummer, char* namen, size_t platz) noexcept, (zaehler, nummer), (nummer, namen, platz),
       -1)
STOERE(ssize_t, fgetxattr, (int nummer, const char* name, void* wert, size_t platz) noexcept, (zaehler, nummer),
       (nummer, name, wert, platz), -1)
STOERE(int, fsetxattr, (int nummer, const char* name, const void* wert, size_t groesse, int wie) noexcept,
       (zaehler, nummer), (nummer, name, wert, groesse, wie), -1)
STOERE(int, fremovexattr, (int nummer, const char* name) noexcept, (zaehler, nummer), (nummer, name), -1)
STOERE(void*, mmap, (void* wo, size_t laenge, int schutz, int wie, int nummer, off_t ab) noexcept, (zaehler, nummer),
       (wo, laenge, schutz, wie, nummer, ab), MAP_FAILED)
STOERE(DIR*, opendir, (const char* pfad), (zaehler, pfad), (pfad), nullptr)
STOERE(dirent*, readdir, (DIR * strom), (zaehler, ::dirfd(strom)), (strom), nullptr)
STOERE(dirent64*, readdir64, (DIR * strom), (zaehler, ::dirfd(strom)), (strom), nullptr)

/// Whatever the third argument is, it is passed on as wide as a pointer.
#define BEFRAGE(name, art, dann)                                                      \
    extern "C" int name(int nummer, art was, ...) dann {                              \
        VOR(name);                                                                    \
        va_list rest;                                                                 \
        va_start(rest, was);                                                          \
        void* wert = va_arg(rest, void*);                                             \
        va_end(rest);                                                                 \
        return zaehle(zaehler, nummer) == Wie::fehler ? -1 : echt(nummer, was, wert); \
    }

BEFRAGE(ioctl, unsigned long, noexcept)
BEFRAGE(fcntl, int, )

/// The system has closed it all the same.
extern "C" int close(int nummer) {
    VOR(close);
    const Wie wie = zaehle(zaehler, nummer);
    const int fehler = errno;
    const int ergebnis = echt(nummer);
    if (wie == Wie::fehler) {
        errno = fehler;
        return -1;
    }
    return ergebnis;
}

// NOLINTEND
