#include "sicht/Ordnung.h"

#include <bit>
#include <cmath>

namespace spurkiste {

std::uint64_t Ordnung::alsWort(double wert) {
    constexpr std::uint64_t vorzeichen = std::uint64_t{1} << 63U;
    if (std::isnan(wert)) {
        return ~std::uint64_t{0};
    }
    const auto bits = std::bit_cast<std::uint64_t>(wert + 0.0);
    return (bits & vorzeichen) != 0 ? ~bits : bits | vorzeichen;
}

std::uint64_t Ordnung::alsWort(std::int64_t wert) {
    return static_cast<std::uint64_t>(wert) ^ (std::uint64_t{1} << 63U);
}

}  // namespace spurkiste
