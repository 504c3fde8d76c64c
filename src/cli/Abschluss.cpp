#include "cli/Abschluss.h"

#include <cerrno>
#include <string>
#include <system_error>

namespace spurkiste {

void schreibe(std::FILE* strom, std::string_view text) {
    (void)std::fwrite(text.data(), 1, text.size(), strom);
}

int schliesseAusgabeAb(int ende) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return ende;
    }
    schreibe(stderr, "Ausgabe nicht geschrieben: " + std::generic_category().message(errno) + "\n");
    return 1;
}

}  // namespace spurkiste
