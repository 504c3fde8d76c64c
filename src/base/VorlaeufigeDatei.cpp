#include "base/VorlaeufigeDatei.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <exception>
#include <random>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"

namespace spurkiste::dateien {

namespace {

constexpr std::string_view kVorsilbe = ".spurkiste-";
constexpr std::string_view kNachsilbe = ".tmp";
constexpr std::string_view kDauerhaft = ".sicherung";
constexpr mode_t kNurEigentuemer = 0600;

/// Lets `nimm` try names that nobody else uses until it takes one: it returns 0 then, EEXIST for a taken one, or why
/// there is none to be had. The names are short, since the later one may already be as long as the system allows.
template <typename Nimm>
std::string freierName(const std::string& ordner, std::string_view nachsilbe, const Nimm& nimm) {
    constexpr int versuche = 100;
    std::random_device zufall;
    int fehler = EEXIST;
    for (int i = 0; i < versuche && fehler == EEXIST; ++i) {
        const std::string einmalig = std::to_string(zufall()) + std::to_string(zufall());
        std::string name = kindPfad(ordner, std::string(kVorsilbe).append(einmalig).append(nachsilbe));
        fehler = nimm(name);
        if (fehler == 0) {
            return name;
        }
    }
    throw systemfehler(fehler);
}

/// The path by which the system knows an open file that has no name.
std::string ueberNummer(const Dateinummer& nummer) {
    return "/proc/self/fd/" + std::to_string(nummer.wert());
}

/// Gives a file without a name one that is free. 0, or the error's number.
int verlinke(const Dateinummer& nummer, const std::string& pfad) {
    const std::string selbst = ueberNummer(nummer);
    return ::linkat(AT_FDCWD, selbst.c_str(), AT_FDCWD, pfad.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}

/// Moves in one step, and only where the system knows these flags. 0, or the error's number.
int benenne(const std::string& alt, const std::string& neu, unsigned wie) {
    return ::renameat2(AT_FDCWD, alt.c_str(), AT_FDCWD, neu.c_str(), wie) == 0 ? 0 : errno;
}

/// Removes a file of ours that nobody needs. Where the system refuses that just now, it gets a name that is cleaned up
/// later.
void beseitige(const std::string& ordner, const std::string& pfad) {
    if (::unlink(pfad.c_str()) == 0) {
        return;
    }
    try {
        (void)freierName(ordner, kNachsilbe,
                         [&](const std::string& name) { return benenne(pfad, name, RENAME_NOREPLACE); });
    } catch (const std::exception&) {  // it stays under the name that it has
    }
}

/// Whether nobody has the file open for writing, as far as the system tells: it lends a file, open for reading, for
/// reading alone only then. What somebody writes into a file that has lost its place is lost.
bool schreibtNiemand(int nummer) {
    // NOLINTBEGIN(cppcoreguidelines-pro-type-vararg): the system has no other way to ask for it
    if (::fcntl(nummer, F_SETSIG, SIGURG) != 0) {  // whoever opens it now is told by a signal, which must not end us
        return true;
    }
    if (::fcntl(nummer, F_SETLEASE, F_RDLCK) != 0) {
        return errno != EAGAIN;
    }
    ::fcntl(nummer, F_SETLEASE, F_UNLCK);
    // NOLINTEND(cppcoreguidelines-pro-type-vararg)
    return true;
}

Dateinummer oeffne(const std::string& ordner, std::string& name) {
    pruefePfad(ordner);
#ifdef O_TMPFILE
    Dateinummer namenlos(ordner, O_WRONLY | O_TMPFILE, kNurEigentuemer);
    if (namenlos.offen() && gibtEs(ueberNummer(namenlos))) {  // without /proc it could never get a name
        ::flock(namenlos.wert(), LOCK_EX);
        return namenlos;
    }
#endif
    Dateinummer nummer;
    name = freierName(ordner, kNachsilbe, [&](const std::string& versuch) {
        nummer = Dateinummer(versuch, O_WRONLY | O_CREAT | O_EXCL, kNurEigentuemer);
        if (!nummer.offen()) {
            return errno;
        }
        ::flock(nummer.wert(), LOCK_EX);
        struct stat zustand {};
        if (::fstat(nummer.wert(), &zustand) != 0) {
            const int fehler = errno;
            ::unlink(versuch.c_str());
            return fehler;
        }
        return zustand.st_nlink > 0 ? 0 : EEXIST;  // cleaned away in the moment before it was locked
    });
    return nummer;
}

}  // namespace

VorlaeufigeDatei::VorlaeufigeDatei(const std::string& ordner) : ordner_(ordner), nummer_(oeffne(ordner, name_)) {}

VorlaeufigeDatei::~VorlaeufigeDatei() {
    (void)nummer_.schliesse();
    if (hatNamen()) {
        beseitige(ordner_, name_);
    }
}

void VorlaeufigeDatei::schreibe(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t anzahl = ::write(nummer(), bytes.data(), bytes.size());
        if (anzahl < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw systemfehler(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(anzahl));
    }
}

void VorlaeufigeDatei::sichere() {
    if (::fsync(nummer()) != 0) {
        throw systemfehler(errno);
    }
}

void VorlaeufigeDatei::ersetze(const std::string& ziel) {
    if (!hatNamen()) {
        name_ = freierName(ordner_, kNachsilbe, [this](const std::string& name) { return verlinke(nummer_, name); });
    }
    if (std::rename(name_.c_str(), ziel.c_str()) != 0) {
        throw systemfehler(errno);
    }
    schliesse();
}

bool VorlaeufigeDatei::tausche(const std::string& ziel, int altes, const Stand& stand) {
    const auto istNochDa = [&](const std::string& pfad) {
        return schreibtNiemand(altes) && dateien::stand(pfad, Verweise::lehneAb) == stand;
    };
    const auto eigenes = dateien::stand(nummer());
    if (!istNochDa(ziel)) {
        return false;
    }
    const int fehler = nenneDauerhaft() ? benenne(name_, ziel, RENAME_EXCHANGE) : ENOSYS;
    if (kenntDasNicht(fehler)) {
        ersetze(ziel);
        return true;
    }
    if (fehler == ENOENT) {
        return false;  // gone meanwhile
    }
    if (fehler != 0) {
        throw systemfehler(fehler);
    }
    const std::string dort = std::exchange(name_, {});  // what is there now is removed only when we know what it is
    if (istNochDa(dort)) {
        beseitige(ordner_, dort);
        schliesse();
        return true;
    }
    if (const int zurueck = benenne(dort, ziel, RENAME_EXCHANGE); zurueck != 0) {
        throw systemfehler(zurueck);
    }
    if (eigenes && dateien::stand(dort, Verweise::lehneAb) == eigenes) {
        name_ = dort;
    }
    return false;
}

bool VorlaeufigeDatei::nenneDauerhaft() {
    const auto nimm = [this](const std::string& name) {
        return hatNamen() ? benenne(name_, name, RENAME_NOREPLACE) : verlinke(nummer_, name);
    };
    try {
        name_ = freierName(ordner_, kDauerhaft, nimm);
    } catch (const std::system_error& fehler) {
        if (hatNamen() && kenntDasNicht(fehler.code().value())) {
            return false;
        }
        throw;
    }
    return true;
}

void VorlaeufigeDatei::schliesse() {
    name_.clear();
    (void)nummer_.schliesse();  // in place and, where that matters, on the disk: nothing that it says could be mended
}

bool VorlaeufigeDatei::stelleHin(const std::string& ziel) {
    pruefePfad(ziel);
    try {
        if (hatNamen()) {
            verschiebe(name_, ziel);
            name_.clear();
        } else if (const int fehler = verlinke(nummer_, ziel); fehler != 0) {
            throw systemfehler(fehler);
        }
    } catch (const std::system_error& fehler) {
        if (fehler.code().value() != EEXIST) {
            throw;
        }
        return false;
    }
    return true;
}

void sichereOrdner(const std::string& ordner) {
    const Dateinummer nummer(ordner, O_RDONLY | O_DIRECTORY);
    if (nummer.offen()) {
        ::fsync(nummer.wert());
    }
}

bool istVorlaeufig(std::string_view name) {
    return name.starts_with(kVorsilbe) && name.ends_with(kNachsilbe);
}

void raeumeAuf(const std::string& pfad) {
    constexpr int nurHier = O_NONBLOCK | O_NOFOLLOW;
    Dateinummer nummer(pfad, O_WRONLY | nurHier);
    if (!nummer.offen() && errno == EACCES) {
        nummer = Dateinummer(pfad, O_RDONLY | nurHier);  // it was to replace a read-only file
    }
    struct stat zustand {};
    if (::fstat(nummer.wert(), &zustand) == 0 && S_ISREG(zustand.st_mode) &&
        ::flock(nummer.wert(), LOCK_EX | LOCK_NB) == 0) {
        ::unlink(pfad.c_str());
    }
}

}  // namespace spurkiste::dateien
