#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

/// The read-only files that come with the program: the place list, the language table.
namespace spurkiste::ressourcen {

/// Names the folder to look in first. To be called before the first finde(), from the main thread.
void setzeOrdner(std::string ordner);

/// The path of the resource "name.endung". Looked for in this order: the folder of setzeOrdner(), the folder that the
/// environment variable SPURKISTE_RESSOURCEN names, "../share/spurkiste" beside the folder of the running program,
/// the installed place. Nothing when none of them holds it. Any thread once setzeOrdner() is over.
[[nodiscard]] std::optional<std::string> finde(std::string_view name, std::string_view endung);

/// The same; when there is nothing, `fehler` says why nobody knows whether one of them holds it, if that is so.
[[nodiscard]] std::optional<std::string> finde(std::string_view name, std::string_view endung, std::error_code& fehler);

}  // namespace spurkiste::ressourcen
