#include <clocale>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>
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
using spurkiste::schreibeZeile;
using spurkiste::Textform;

int fuehreAus(std::span<char*> argumente) {
    constexpr int falscherAufruf = 2;
    const std::vector<std::string_view> worte(argumente.begin() + (argumente.empty() ? 0 : 1), argumente.end());
    const auto gelesen = Aufruf::lies(worte);
    if (const auto* fehler = std::get_if<Aufruf::Fehler>(&gelesen)) {
        schreibeZeile(stderr, fehler->text);
        return falscherAufruf;
    }
    const auto& aufruf = std::get<Aufruf>(gelesen);
    const Textform form = aufruf.roh ? Textform::roh : Textform::sicher;
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
            return spurkiste::sport(*aufruf.sport, aufruf.dateien, form);
        case Aufruf::Befehl::pruefe:
            return spurkiste::pruefe(aufruf.dateien, aufruf.json, form);
        case Aufruf::Befehl::doppelte:
            return spurkiste::doppelte(aufruf.ordner, form);
    }
    return spurkiste::schliesseAusgabeAb(0);
}

constexpr std::string_view kKeinSpeicher = "spurkiste-cli: Der Speicher reicht nicht.\n";

/// The last resort for memory that runs out where nobody can say so, in the middle of a thread's own business. Files
/// are whole or not there at all at any moment, so ending is safe. All else that nobody caught is a bug.
[[noreturn]] void endeOhneSpeicher() {
    try {
        if (const auto ausnahme = std::current_exception()) {
            std::rethrow_exception(ausnahme);
        }
    } catch (const std::bad_alloc&) {
        schreibe(stderr, kKeinSpeicher);  // unbuffered: needs no memory
        std::_Exit(1);
    } catch (...) {
        std::abort();
    }
    std::abort();
}

}  // namespace

int main(int anzahl, char** argumente) {
    // The system's error descriptions in the user's language; numbers stay as they are. No other thread runs yet.
    std::setlocale(LC_MESSAGES, "");  // NOLINT(concurrency-mt-unsafe)
    std::set_terminate(endeOhneSpeicher);
    try {
        return fuehreAus({argumente, static_cast<std::size_t>(anzahl)});
    } catch (const std::bad_alloc&) {
        schreibe(stderr, kKeinSpeicher);
        return 1;
    } catch (const std::exception& fehler) {
        schreibeZeile(stderr, std::string("spurkiste-cli: ") + fehler.what());
        return 1;
    }
}
