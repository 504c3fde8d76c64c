#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "track/GpxMetadaten.h"

/// The words and the icon for a record's weather. German in every language: they are the words that weather samples
/// come with. Any thread.
namespace spurkiste::wettertexte {

/// The name of the icon for a condition text; a cloud for what is unknown or absent.
[[nodiscard]] std::string_view wetterSymbol(const std::optional<std::string>& lage);

/// The condition in words: "Leicht bewölkt" for "leicht_bewoelkt"; an unknown one with its words capitalised, "Wetter"
/// for none.
[[nodiscard]] std::string wetterLage(const std::optional<std::string>& lage);

/// What the tile says in large: the temperature in whole degrees, without one the condition.
[[nodiscard]] std::string wetterWert(const GpxWetter& wetter);

/// What it says below: condition, humidity, wind, as far as there are any, between dots. May be empty.
[[nodiscard]] std::string wetterDetails(const GpxWetter& wetter);

}  // namespace spurkiste::wettertexte
