#include <clocale>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "cli/Abschluss.h"
#include "cli/Aufruf.h"
#include "cli/Doppelte.h"
#include "cli/Liste.h"
#include "cli/Pruefe.h"
#include "cli/Sport.h"

namespace {

using spurkiste::Aufruf;
using spurkiste::schreibe;

int fuehreAus(std::span<char*> argumente) {
    constexpr int falscherAufruf = 2;
    const std::vector<std::string_view> worte(argumente.begin() + (argumente.empty() ? 0 : 1), argumente.end());
    const auto gelesen = Aufruf::lies(worte);
    if (const auto* fehler = std::get_if<Aufruf::Fehler>(&gelesen)) {
        schreibe(stderr, fehler->text + "\n");
        return falscherAufruf;
    }
    const auto& aufruf = std::get<Aufruf>(gelesen);
    switch (aufruf.befehl) {
        case Aufruf::Befehl::hilfe:
            schreibe(stdout, Aufruf::hilfe());
            break;
        case Aufruf::Befehl::version:
            schreibe(stdout, Aufruf::version());
            break;
        case Aufruf::Befehl::liste:
            return spurkiste::liste(aufruf);
        case Aufruf::Befehl::sport:
            return spurkiste::sport(*aufruf.sport, aufruf.dateien);
        case Aufruf::Befehl::pruefe:
            return spurkiste::pruefe(aufruf.dateien, aufruf.json);
        case Aufruf::Befehl::doppelte:
            return spurkiste::doppelte(aufruf.ordner);
    }
    return spurkiste::schliesseAusgabeAb(0);
}

}  // namespace

int main(int anzahl, char** argumente) {
    // The system's error descriptions in the user's language; numbers stay as they are. No other thread runs yet.
    std::setlocale(LC_MESSAGES, "");  // NOLINT(concurrency-mt-unsafe)
    try {
        return fuehreAus({argumente, static_cast<std::size_t>(anzahl)});
    } catch (const std::exception& fehler) {
        schreibe(stderr, "spurkiste-cli: ");
        schreibe(stderr, fehler.what());
        schreibe(stderr, "\n");
        return 1;
    }
}
