#include "base/Dateiumzug.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <random>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "base/Dateien.h"
#include "base/Dateinummer.h"

namespace spurkiste::dateien {

namespace {

/// A name for a whole file between two others. Whoever is killed then finds it as a track of an odd name: as a hidden
/// or temporary file it would be lost, or even cleaned away.
std::string zwischenname(const std::string& neu) {
    std::random_device zufall;
    return ordnerVon(neu) + "Umbenennung " + std::to_string(zufall()) + "." + std::string(endung(letzterTeil(neu)));
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
    if (!Dateinummer(neu, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, 0600).offen()) {
        return errno;
    }
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
    pruefePfad(alt);
    pruefePfad(neu);
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

}  // namespace spurkiste::dateien
