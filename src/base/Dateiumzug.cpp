#include "base/Dateiumzug.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

#include "base/Dateien.h"

namespace spurkiste::dateien {

namespace {

std::system_error systemfehler(int nummer) {
    return {nummer, std::generic_category()};
}

/// The system would take a path only up to its first zero and so mean another one.
void pruefe(const std::string& pfad) {
    if (pfad.find('\0') != std::string::npos) {
        throw systemfehler(EINVAL);
    }
}

std::string ordnerVon(const std::string& pfad) {
    return pfad.substr(0, pfad.size() - letzterTeil(pfad).size());
}

std::string vorlaeufigerName(const std::string& ordner) {
    std::random_device zufall;
    return ordner + "/.spurkiste-" + std::to_string(zufall()) + std::to_string(zufall()) + ".tmp";
}

/// A name for a whole file between two others. Whoever is killed then finds it as a track of an odd name: as a hidden
/// or temporary file it would be lost, or even cleaned away.
std::string zwischenname(const std::string& neu) {
    std::random_device zufall;
    return ordnerVon(neu) + "Umbenennung " + std::to_string(zufall()) + "." + std::string(endung(letzterTeil(neu)));
}

/// Whether an error says that system or file system do not know this way, rather than that the deed itself failed.
bool kenntDasNicht(int fehler) {
    return fehler == ENOSYS || fehler == EINVAL || fehler == EOPNOTSUPP;
}

/// The move in one step, where system and file system know it. 0, or the error's number.
int verschiebeExklusiv(const std::string& alt, const std::string& neu) {
#ifdef __linux__
    return ::renameat2(AT_FDCWD, alt.c_str(), AT_FDCWD, neu.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
#else
    (void)alt;
    (void)neu;
    return ENOSYS;
#endif
}

/// The move by a second name: whoever is killed in between leaves the file with both, and whole.
int verschiebeUeberZweitenNamen(const std::string& alt, const std::string& neu) {
    if (::linkat(AT_FDCWD, alt.c_str(), AT_FDCWD, neu.c_str(), 0) != 0) {
        return errno;
    }
    if (::unlink(alt.c_str()) != 0) {
        const int fehler = errno;
        ::unlink(neu.c_str());
        return fehler;
    }
    return 0;
}

/// The move on file systems without second names: the new name is taken by an empty file first, then replaced.
int verschiebeUeberPlatzhalter(const std::string& alt, const std::string& neu) {
    struct stat zustand {};
    if (::lstat(alt.c_str(), &zustand) != 0) {
        return errno;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    const int nummer = ::open(neu.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (nummer < 0) {
        return errno;
    }
    ::close(nummer);
    if (std::rename(alt.c_str(), neu.c_str()) != 0) {
        const int fehler = errno;
        ::unlink(neu.c_str());
        return fehler;
    }
    return 0;
}

int verschiebeIrgendwie(const std::string& alt, const std::string& neu) {
    int fehler = verschiebeExklusiv(alt, neu);
    if (kenntDasNicht(fehler)) {
        fehler = verschiebeUeberZweitenNamen(alt, neu);
        if (kenntDasNicht(fehler) || fehler == EPERM || fehler == EMLINK) {
            fehler = verschiebeUeberPlatzhalter(alt, neu);
        }
    }
    return fehler;
}

/// Whether both paths are one entry of one folder, as they are where letter case makes no difference. Two entries for
/// one file (hard links) are not.
bool istDerselbeEintrag(const std::string& alt, const std::string& neu) {
    struct stat altes {};
    struct stat neues {};
    if (::lstat(alt.c_str(), &altes) != 0 || ::lstat(neu.c_str(), &neues) != 0 || altes.st_dev != neues.st_dev ||
        altes.st_ino != neues.st_ino || ordnerVon(alt) != ordnerVon(neu)) {
        return false;
    }
    const auto namen = liste(ordnerVon(neu));
    return std::find(namen.begin(), namen.end(), letzterTeil(neu)) == namen.end();
}

}  // namespace

void verschiebe(const std::string& alt, const std::string& neu) {
    pruefe(alt);
    pruefe(neu);
    int fehler = verschiebeIrgendwie(alt, neu);
    if (fehler == EEXIST && istDerselbeEintrag(alt, neu)) {
        const std::string dazwischen = zwischenname(neu);
        fehler = verschiebeIrgendwie(alt, dazwischen);
        if (fehler == 0) {
            fehler = verschiebeIrgendwie(dazwischen, neu);
            if (fehler != 0) {
                // NOLINTNEXTLINE(readability-suspicious-call-argument): back to where it came from
                (void)verschiebeIrgendwie(dazwischen, alt);
            }
        }
    }
    if (fehler != 0) {
        throw systemfehler(fehler);
    }
}

namespace {

/// A file descriptor that is closed at the end.
class Nummer {
  public:
    explicit Nummer(int nummer) : nummer_(nummer) {}
    Nummer(const Nummer&) = delete;
    Nummer& operator=(const Nummer&) = delete;
    ~Nummer() { ::close(nummer_); }
    [[nodiscard]] int wert() const { return nummer_; }

  private:
    int nummer_;
};

struct stat nurRegulaer(const struct stat& zustand) {
    if (!S_ISREG(zustand.st_mode)) {
        throw systemfehler(S_ISDIR(zustand.st_mode) ? EISDIR : EINVAL);
    }
    return zustand;
}

/// Opens a regular file and nothing else. Asked before opening, since opening a device may do something, and again
/// afterwards, since the path may by then lead elsewhere; not blocking, since a FIFO may have slipped in between.
int oeffneQuelle(const std::string& quelle) {
    struct stat zustand {};
    if (::stat(quelle.c_str(), &zustand) != 0) {
        throw systemfehler(errno);
    }
    (void)nurRegulaer(zustand);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    const int nummer = ::open(quelle.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (nummer < 0) {
        throw systemfehler(errno);
    }
    return nummer;
}

/// Copies at most `rest` bytes by way of this program's memory, up to the end of the source.
void schaufle(int quelle, int ziel, std::size_t rest) {
    constexpr std::size_t kSchaufel = std::size_t{1} << 16U;
    std::array<char, kSchaufel> puffer;  // NOLINT(cppcoreguidelines-pro-type-member-init): read() fills it
    while (rest > 0) {
        const ssize_t gelesen = ::read(quelle, puffer.data(), std::min(rest, puffer.size()));
        if (gelesen < 0 && errno == EINTR) {
            continue;
        }
        if (gelesen < 0) {
            throw systemfehler(errno);
        }
        if (gelesen == 0) {
            return;
        }
        std::string_view bytes(puffer.data(), static_cast<std::size_t>(gelesen));
        rest -= bytes.size();
        while (!bytes.empty()) {
            const ssize_t geschrieben = ::write(ziel, bytes.data(), bytes.size());
            if (geschrieben < 0 && errno != EINTR) {
                throw systemfehler(errno);
            }
            bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(geschrieben, 0)));
        }
    }
}

/// Copies the first `groesse` bytes, or as many as there are, in the cheapest way that the file systems offer.
void uebertrage(int quelle, int ziel, std::size_t groesse) {
    std::size_t rest = groesse;
#ifdef __linux__
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to ask for it
    if (::ioctl(ziel, FICLONE, quelle) == 0) {
        return;
    }
    while (rest > 0) {
        const ssize_t kopiert = ::copy_file_range(quelle, nullptr, ziel, nullptr, rest, 0);
        if (kopiert < 0 && errno == EINTR) {
            continue;
        }
        if (kopiert < 0 && !kenntDasNicht(errno) && errno != EXDEV && errno != EPERM) {
            throw systemfehler(errno);
        }
        if (kopiert <= 0) {
            break;  // not here, or the end, which some file systems see too early
        }
        rest -= static_cast<std::size_t>(kopiert);
    }
#endif
    schaufle(quelle, ziel, rest);
}

/// The path by which the system knows an open file that has no name.
std::string ueberNummer(int nummer) {
    return "/proc/self/fd/" + std::to_string(nummer);
}

int oeffneVorlaeufig(const std::string& ordner, mode_t rechte, std::string& name) {
#ifdef __linux__
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    const int namenlos = ::open(ordner.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, rechte);
    if (namenlos >= 0 && ::access(ueberNummer(namenlos).c_str(), F_OK) == 0) {
        return namenlos;
    }
    if (namenlos >= 0) {
        ::close(namenlos);  // without /proc it could never get a name
    }
#endif
    for (;;) {
        const std::string versuch = vorlaeufigerName(ordner);
        // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
        const int nummer = ::open(versuch.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, rechte);
        if (nummer < 0 && errno != EEXIST) {
            throw systemfehler(errno);
        }
        if (nummer >= 0) {
            ::flock(nummer, LOCK_EX);  // raeumeAuf() leaves alone what somebody still writes
            struct stat zustand {};
            if (::fstat(nummer, &zustand) == 0 && zustand.st_nlink > 0) {
                name = versuch;
                return nummer;
            }
            ::close(nummer);  // somebody cleaned it away in the moment before it was locked
        }
    }
}

}  // namespace

Kopie::Kopie(const std::string& quelle, const std::string& ordner) {
    pruefe(quelle);
    pruefe(ordner);
    const Nummer offen(oeffneQuelle(quelle));
    struct stat zustand {};
    if (::fstat(offen.wert(), &zustand) != 0) {
        throw systemfehler(errno);
    }
    (void)nurRegulaer(zustand);
    constexpr mode_t niemandFuehrtAus = 0666;
    constexpr mode_t eigentuemer = 0600;
    nummer_ = oeffneVorlaeufig(ordner, (zustand.st_mode & niemandFuehrtAus) | eigentuemer, vorlaeufig_);
    try {
        uebertrage(offen.wert(), nummer_, static_cast<std::size_t>(zustand.st_size));
        const std::array<timespec, 2> zeiten{timespec{0, UTIME_OMIT}, zustand.st_mtim};
        ::futimens(nummer_, zeiten.data());  // a copy with today's date is a copy all the same
        // File systems without nameless files are often far away, and tell only now that they are full.
        if (!vorlaeufig_.empty() && ::fsync(nummer_) != 0) {
            throw systemfehler(errno);
        }
    } catch (...) {
        schliesse();
        throw;
    }
}

Kopie::~Kopie() {
    schliesse();
}

void Kopie::schliesse() {
    if (nummer_ >= 0) {
        ::close(std::exchange(nummer_, -1));
    }
    if (!vorlaeufig_.empty()) {
        ::unlink(std::exchange(vorlaeufig_, {}).c_str());
    }
}

bool Kopie::stelleHin(const std::string& ziel) {
    pruefe(ziel);
    int fehler = 0;
    if (vorlaeufig_.empty()) {
        const std::string namenlos = ueberNummer(nummer_);
        fehler = ::linkat(AT_FDCWD, namenlos.c_str(), AT_FDCWD, ziel.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
    } else {
        fehler = verschiebeIrgendwie(vorlaeufig_, ziel);
        if (fehler == 0) {
            vorlaeufig_.clear();
        }
    }
    if (fehler != 0 && fehler != EEXIST) {
        throw systemfehler(fehler);
    }
    return fehler == 0;
}

}  // namespace spurkiste::dateien
