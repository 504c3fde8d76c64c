#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as text, always in the C locale, whatever the process has set.
namespace spurkiste::zahl {

/// The decimal number that is the whole text ("47.5", "-3e2", "+8"), or nothing: no blanks, no comma, no unit,
/// no hexadecimal, nothing that is not finite ("nan", "inf") and nothing beyond a double's range ("1e999", "1e-999").
[[nodiscard]] std::optional<double> lies(std::string_view text);

/// As printf's "%.*f": `stellen` digits (0 to 20) after the point, never an exponent. `wert` must be finite.
[[nodiscard]] std::string fest(double wert, int stellen);

/// Room for the longest text of schreibe().
using Puffer = std::array<char, 32>;

/// Writes a finite number in a short form that reads back to the same double, as JSON wants it
/// ("12.5", "-0", "1e+300"), and returns the text within `puffer`.
[[nodiscard]] std::string_view schreibe(double wert, Puffer& puffer);

/// Truncates toward zero to a whole number. What does not fit into 64 bits becomes the nearest limit, a NaN 0.
[[nodiscard]] long long ganz(double wert);

}  // namespace spurkiste::zahl
