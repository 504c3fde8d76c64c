#include "base/AtomareDatei.h"

#include <array>
#include <cstdint>

#include <fcntl.h>
#include <sys/stat.h>

namespace spurkiste::dateien {

void AtomareDatei::datiereNach(const Stand& altes) const {
    constexpr std::int64_t abstand = 2;  // whole seconds, also for file systems that know only every other one
    const auto neues = stand();
    if (neues && neues->sekunden < altes.sekunden + abstand) {
        const std::array<timespec, 2> zeiten{timespec{0, UTIME_OMIT}, timespec{altes.sekunden + abstand, 0}};
        ::futimens(datei_.nummer(), zeiten.data());
    }
}

}  // namespace spurkiste::dateien
