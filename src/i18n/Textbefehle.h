#pragma once

#include <string_view>

namespace spurkiste {

/// What every program offers to do with a text.
enum class Textbefehl { rueckgaengig, wiederholen, ausschneiden, kopieren, einfuegen, loeschen, allesAuswaehlen };

/// What the command is called in a language, as the desktops say it there. For a code that the program does not know
/// (Sprachtabelle::code() passes on whatever was set) the English word. UTF-8, of static lifetime; any thread.
[[nodiscard]] std::string_view textbefehl(Textbefehl befehl, std::string_view code);

}  // namespace spurkiste
