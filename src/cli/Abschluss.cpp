#include "cli/Abschluss.h"

#include <cerrno>
#include <cstdio>
#include <string>
#include <system_error>

namespace spurkiste {

int schliesseAusgabeAb(int ende) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return ende;
    }
    const std::string warum = std::generic_category().message(errno);
    (void)std::fputs(("Ausgabe nicht geschrieben: " + warum + "\n").c_str(), stderr);
    return 1;
}

}  // namespace spurkiste
