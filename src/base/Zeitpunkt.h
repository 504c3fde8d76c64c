#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace spurkiste {

/// An instant: seconds, with fraction, since 2001-01-01 00:00:00 UTC, without leap seconds. Always finite.
/// A double keeps today's instants to about a tenth of a microsecond, and its JSON number reads back exactly.
struct Zeitpunkt {
    double sekunden = 0.0;

    friend bool operator==(const Zeitpunkt&, const Zeitpunkt&) = default;
    friend auto operator<=>(const Zeitpunkt&, const Zeitpunkt&) = default;

    /// From seconds since 1970-01-01 00:00:00 UTC and nanoseconds (0 to 999 999 999).
    [[nodiscard]] static Zeitpunkt ausUnix(std::int64_t sekunden, long nanosekunden);

    /// Whole seconds since 1970-01-01 00:00:00 UTC, rounded down; clamped to the range of the type.
    [[nodiscard]] std::int64_t alsUnix() const;

    /// Reads exactly YYYY-MM-DDTHH:MM:SS, an optional fraction (a point and one digit or more) and Z or ±HH:MM
    /// (ISO 8601 / RFC 3339 without its lower-case letters). Dates are those of the proleptic Gregorian calendar,
    /// years 0000 to 9999; hour 24, second 60 and days that do not exist are nothing. Any thread.
    [[nodiscard]] static std::optional<Zeitpunkt> ausIso8601(std::string_view text);
};

}  // namespace spurkiste
