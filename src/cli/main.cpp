#include <clocale>
#include <cstdio>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/Aufruf.h"
#include "cli/Liste.h"

int main(int anzahl, char** argumente) {
    using spurkiste::Aufruf;
    constexpr int falscherAufruf = 2;
    std::setlocale(LC_MESSAGES,
                   "");  // the system's error descriptions in the user's language; numbers stay as they are
    const std::vector<std::string_view> worte(argumente + (anzahl > 0 ? 1 : 0), argumente + anzahl);
    const auto gelesen = Aufruf::lies(worte);
    if (const auto* fehler = std::get_if<Aufruf::Fehler>(&gelesen)) {
        std::fprintf(stderr, "%s\n", fehler->text.c_str());
        return falscherAufruf;
    }
    const auto& aufruf = std::get<Aufruf>(gelesen);
    switch (aufruf.befehl) {
        case Aufruf::Befehl::hilfe:
            std::fputs(Aufruf::hilfe().c_str(), stdout);
            break;
        case Aufruf::Befehl::version:
            std::fputs(Aufruf::version().c_str(), stdout);
            break;
        case Aufruf::Befehl::liste:
            return spurkiste::liste(aufruf);
    }
    return std::fflush(stdout) == 0 ? 0 : 1;
}
