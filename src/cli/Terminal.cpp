#include "cli/Terminal.h"

#include <cstdlib>
#include <string_view>

#include <sys/ioctl.h>
#include <unistd.h>

namespace spurkiste::terminal {

bool istTerminal(Strom strom) {
    return ::isatty(static_cast<int>(strom)) == 1;
}

std::optional<std::size_t> breite(Strom strom) {
    winsize groesse{};
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system call is declared so
    if (!istTerminal(strom) || ::ioctl(static_cast<int>(strom), TIOCGWINSZ, &groesse) != 0 || groesse.ws_col == 0) {
        return std::nullopt;
    }
    return groesse.ws_col;
}

bool mitFarben(Strom strom) {
    const char* art = std::getenv("TERM");
    const char* farblos = std::getenv("NO_COLOR");
    const bool dumm = art == nullptr || std::string_view(art) == "dumb";
    return istTerminal(strom) && !dumm && (farblos == nullptr || *farblos == '\0');
}

}  // namespace spurkiste::terminal
