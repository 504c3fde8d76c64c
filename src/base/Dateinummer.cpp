#include "base/Dateinummer.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace spurkiste::dateien {

namespace {

void pruefeRegulaer(const struct stat& zustand) {
    if (!S_ISREG(zustand.st_mode)) {
        throw systemfehler(S_ISDIR(zustand.st_mode) ? EISDIR : EINVAL);
    }
}

}  // namespace

std::system_error systemfehler(int nummer) {
    return {nummer, std::generic_category()};
}

void pruefePfad(const std::string& pfad) {
    if (pfad.find('\0') != std::string::npos) {
        throw systemfehler(EINVAL);
    }
}

bool kenntDasNicht(int fehler) {
    return fehler == ENOSYS || fehler == EINVAL || fehler == EOPNOTSUPP;
}

Dateinummer::Dateinummer(const std::string& pfad, int wie, mode_t rechte)
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    : nummer_(ungestoert([&] { return ::open(pfad.c_str(), wie | O_CLOEXEC, rechte); })) {}

Dateinummer Dateinummer::regulaere(const std::string& pfad, Verweise verweise) {
    pruefePfad(pfad);
    const bool folge = verweise == Verweise::folge;
    struct stat davor {};
    // Asked before opening, since opening a device may do something, and again afterwards, since the path may by
    // then lead elsewhere. O_NONBLOCK keeps a FIFO that slipped in between from waiting for its writer.
    if (ungestoert([&] { return folge ? ::stat(pfad.c_str(), &davor) : ::lstat(pfad.c_str(), &davor); }) != 0) {
        throw systemfehler(errno);
    }
    pruefeRegulaer(davor);
    Dateinummer nummer(pfad, O_RDONLY | O_NONBLOCK | O_NOCTTY | (folge ? 0 : O_NOFOLLOW));
    if (!nummer.offen()) {
        throw systemfehler(errno);
    }
    pruefeRegulaer(nummer.zustand());
    return nummer;
}

struct stat Dateinummer::zustand() const {
    struct stat zustand {};
    if (ungestoert([&] { return ::fstat(nummer_, &zustand); }) != 0) {
        throw systemfehler(errno);
    }
    return zustand;
}

bool Dateinummer::schliesse() {
    return nummer_ < 0 || ::close(std::exchange(nummer_, -1)) == 0;
}

}  // namespace spurkiste::dateien
