#include "platform/posix/Dateischloss.h"

#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>

namespace spurkiste {

Dateischloss::Ausgang Dateischloss::nimm(const std::string& pfad) {
    constexpr mode_t nurIch = 0600;
    dateien::Dateinummer datei(pfad, O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK, nurIch);
    if (!datei.offen()) {
        return Ausgang::unmoeglich;
    }
    if (::flock(datei.wert(), LOCK_EX | LOCK_NB) != 0) {
        return errno == EWOULDBLOCK ? Ausgang::vergeben : Ausgang::unmoeglich;
    }
    datei_ = std::move(datei);
    return Ausgang::genommen;
}

}  // namespace spurkiste
