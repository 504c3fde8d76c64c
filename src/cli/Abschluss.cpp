#include "cli/Abschluss.h"

#include <cerrno>
#include <string>
#include <system_error>

#include "base/Text.h"

namespace spurkiste {

void schreibe(std::FILE* strom, std::string_view text) {
    (void)std::fwrite(text.data(), 1, text.size(), strom);
}

std::string gezeigt(std::string_view text, Textform form) {
    return form == Textform::roh ? std::string(text) : text::einzeilig(text);
}

void schreibeZeile(std::FILE* strom, std::string_view zeile, Textform form) {
    schreibe(strom, gezeigt(zeile, form) + "\n");
}

int schliesseAusgabeAb(int ende) {
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) {
        return ende;
    }
    schreibeZeile(stderr, "Ausgabe nicht geschrieben: " + std::generic_category().message(errno));
    return 1;
}

}  // namespace spurkiste
