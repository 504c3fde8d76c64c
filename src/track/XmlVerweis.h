#pragma once

#include <string>
#include <string_view>

namespace spurkiste {

/// Appends what a reference stands for: a character by its number ("#8364", "#x20AC") or one of the five entities that
/// every document has ("amp"). `verweis` is what stands between '&' and ';'. False, with anything appended, for every
/// other text and for characters that XML 1.0 does not allow. Any thread.
[[nodiscard]] bool loeseXmlVerweis(std::string_view verweis, std::string& ziel);

}  // namespace spurkiste
