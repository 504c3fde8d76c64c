#pragma once

#include <string>
#include <string_view>

#include "erzeuge/Vorhaben.h"
#include "erzeuge/Zufall.h"

namespace spurkiste::erzeuge {

/// What the owner calls the track: "Uetliberg Feierabendlauf", "Zürich – Zug". UTF-8, composed.
[[nodiscard]] std::string erfindeTitel(const Vorhaben& vorhaben, Zufall& zufall);

/// The name of its file without extension: the title, composed or decomposed, or what a device would take
/// ("Track_2024-09-28 161203", "activity_1234567890"). UTF-8, at most 120 bytes, no slash.
[[nodiscard]] std::string erfindeDateinamen(const std::string& titel, const Vorhaben& vorhaben, Zufall& zufall);

/// The text with its umlauts and accents as letters followed by combining marks, as some systems store file names.
[[nodiscard]] std::string zerlegt(std::string_view text);

}  // namespace spurkiste::erzeuge
