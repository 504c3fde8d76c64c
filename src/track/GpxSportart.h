#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace spurkiste {

/// One of the closed list of sports. A value like an enumerator: compare it, switch over it.
class GpxSportart {
  public:
    /// In the order of the sport menu. `auto_` and `inline_` because the words alone belong to the language.
    enum Wert {
        rad,
        laufen,
        motorrad,
        auto_,
        wandern,
        gehen,
        mountainbike,
        gravel,
        eBike,
        trailrunning,
        schwimmen,
        ski,
        inline_,
        rudern,
        kajak,
    };

    // NOLINTNEXTLINE(google-explicit-constructor): the enumerators are the sports
    constexpr GpxSportart(Wert wert) : wert_(wert) {}
    // NOLINTNEXTLINE(google-explicit-constructor): lets a switch name the enumerators
    constexpr operator Wert() const { return wert_; }

    /// All sports in menu order.
    [[nodiscard]] static const std::array<GpxSportart, 15>& allCases();

    /// The sport with this identifier; exact, case-sensitive. Nothing for any other text.
    [[nodiscard]] static std::optional<GpxSportart> ausRawValue(std::string_view rawValue);

    /// The sport that a file's <type> text stands for: lower-cased, trimmed, compared with a table of aliases.
    /// Nothing for an absent, empty or unknown text.
    [[nodiscard]] static std::optional<GpxSportart> aus(const std::optional<std::string>& text);

    /// The identifier that is written into files and that names the label in the language table ("cycling").
    [[nodiscard]] std::string_view rawValue() const;

    /// The same as rawValue(): the sport's identity in lists.
    [[nodiscard]] std::string_view id() const { return rawValue(); }

    /// The label in the current language (the name is history). Main thread, as it asks AppSprache.
    [[nodiscard]] std::string deutsch() const;

    /// The name of the sport's icon. Some sports share one.
    [[nodiscard]] std::string_view symbol() const;

  private:
    Wert wert_;
};

/// The guess of a sport from speed.
class GpxSport {
  public:
    GpxSport() = delete;

    /// The sport that an average speed in km/h suggests; nothing from 160 on and for a NaN. Any thread.
    [[nodiscard]] static std::optional<GpxSportart> schaetzung(double kmh);
};

}  // namespace spurkiste
