#include "base/VorlaeufigeDatei.h"

#include <cerrno>
#include <cstdio>
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

/// Lets `nimm` try names that nobody else uses until it takes one: it returns 0 then, EEXIST for a taken one, or why
/// there is none to be had. The names are short, since the later one may already be as long as the system allows.
template <typename Nimm>
std::string freierName(const std::string& ordner, const Nimm& nimm) {
    constexpr int versuche = 100;
    std::random_device zufall;
    int fehler = EEXIST;
    for (int i = 0; i < versuche && fehler == EEXIST; ++i) {
        const std::string einmalig = std::to_string(zufall()) + std::to_string(zufall());
        std::string name = kindPfad(ordner, std::string(kVorsilbe).append(einmalig).append(kNachsilbe));
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

Dateinummer oeffne(const std::string& ordner, mode_t rechte, std::string& name) {
    pruefePfad(ordner);
#ifdef O_TMPFILE
    Dateinummer namenlos(ordner, O_WRONLY | O_TMPFILE, rechte);
    if (namenlos.offen() && gibtEs(ueberNummer(namenlos))) {  // without /proc it could never get a name
        ::flock(namenlos.wert(), LOCK_EX);
        return namenlos;
    }
#endif
    Dateinummer nummer;
    name = freierName(ordner, [&](const std::string& versuch) {
        nummer = Dateinummer(versuch, O_WRONLY | O_CREAT | O_EXCL, rechte);
        if (!nummer.offen()) {
            return errno;
        }
        ::flock(nummer.wert(), LOCK_EX);
        return nummer.zustand().st_nlink > 0 ? 0 : EEXIST;  // cleaned away in the moment before it was locked
    });
    return nummer;
}

}  // namespace

VorlaeufigeDatei::VorlaeufigeDatei(const std::string& ordner, mode_t rechte)
    : ordner_(ordner), nummer_(oeffne(ordner, rechte, name_)) {}

VorlaeufigeDatei::~VorlaeufigeDatei() {
    (void)nummer_.schliesse();
    if (hatNamen()) {
        ::unlink(name_.c_str());
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
        name_ = freierName(ordner_, [this](const std::string& name) { return verlinke(nummer_, name); });
    }
    if (std::rename(name_.c_str(), ziel.c_str()) != 0) {
        throw systemfehler(errno);
    }
    name_.clear();
    if (!nummer_.schliesse()) {
        throw systemfehler(errno);
    }
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
