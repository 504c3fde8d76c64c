#include "base/Kopie.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#ifdef __linux__
#include <linux/fs.h>
#include <sys/ioctl.h>
#endif

#include "base/Dateirechte.h"

namespace spurkiste::dateien {

namespace {

/// Copies at most `rest` bytes by way of this program's memory, up to the end of the source.
void schaufle(int quelle, VorlaeufigeDatei& ziel, std::size_t rest) {
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
        const std::string_view bytes(puffer.data(), static_cast<std::size_t>(gelesen));
        ziel.schreibe(bytes);
        rest -= bytes.size();
    }
}

/// Copies the first `groesse` bytes, or as many as there are, in the cheapest way that the file systems offer.
void uebertrage(int quelle, VorlaeufigeDatei& ziel, std::size_t groesse) {
    std::size_t rest = groesse;
#ifdef __linux__
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to ask for it
    if (::ioctl(ziel.nummer(), FICLONE, quelle) == 0) {
        return;
    }
    while (rest > 0) {
        const ssize_t kopiert = ::copy_file_range(quelle, nullptr, ziel.nummer(), nullptr, rest, 0);
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

}  // namespace

Kopie::Kopie(const Dateinummer& quelle, const std::string& ordner) : datei_(ordner) {
    const struct stat zustand = quelle.zustand();
    groesse_ = zustand.st_size;
    uebertrage(quelle.wert(), datei_, static_cast<std::size_t>(zustand.st_size));
    const std::array<timespec, 2> zeiten{timespec{0, UTIME_OMIT}, zustand.st_mtim};
    ::futimens(datei_.nummer(), zeiten.data());  // a copy with today's date is a copy all the same
    ::fchmod(datei_.nummer(), rechteEinerKopie(quelle.wert()));
#ifdef __linux__
    // The disk may begin at once, while the next file is copied: waiting for many together then takes little longer
    // than for one.
    ::sync_file_range(datei_.nummer(), 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

bool Kopie::stelleHin(const std::string& ziel) {
    if (!gesichert_) {
        datei_.sichere();
        gesichert_ = true;
    }
    return datei_.stelleHin(ziel);
}

}  // namespace spurkiste::dateien
