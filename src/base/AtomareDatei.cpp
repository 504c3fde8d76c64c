#include "base/AtomareDatei.h"

#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace spurkiste::dateien {

namespace {

constexpr mode_t kNeueDatei = 0666;

/// The path that symbolic links lead to, or the path itself where nothing is yet.
std::string hinterVerweisen(const std::string& pfad) {
    std::error_code fehlt;
    const auto echt = std::filesystem::canonical(pfad, fehlt);
    return fehlt ? pfad : echt.native();
}

}  // namespace

AtomareDatei::AtomareDatei(const std::string& ziel)
    : ziel_(hinterVerweisen(ziel)), datei_(ordnerVon(ziel_), kNeueDatei) {
    constexpr mode_t rechte = 07777;
    struct stat altes {};
    if (::stat(ziel_.c_str(), &altes) == 0) {
        ::fchmod(datei_.nummer(), altes.st_mode & rechte);  // some file systems know no permissions, and that is fine
    }
}

void AtomareDatei::sichereOrdner() const {
    const Dateinummer ordner(ordnerVon(ziel_), O_RDONLY | O_DIRECTORY);
    if (ordner.offen()) {
        ::fsync(ordner.wert());
    }
}

}  // namespace spurkiste::dateien
