#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace spurkiste::erzeuge {

/// Appends the number with at least `stellen` digits ("007").
void haengeGanz(std::string& text, std::int64_t zahl, int stellen = 1);

/// Appends the number with `stellen` digits (0 to 12) after the point, rounded half away from zero.
void haengeFest(std::string& text, double zahl, int stellen);

/// Appends an instant by a pattern in which Y m d H M S stand for its UTC year, month, day, hour, minute and second in
/// usual width; everything else stands for itself.
void haengeZeit(std::string& text, std::int64_t sekundenSeit1970, std::string_view muster);

}  // namespace spurkiste::erzeuge
