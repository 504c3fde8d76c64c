#pragma once

#include <concepts>

namespace spurkiste {

/// A member that every row of a table must give: a designated initialiser that leaves it out does not compile, where
/// a plain member would silently be zero. Reads and is called like the value itself.
template <typename T>
class Pflicht {
  public:
    template <std::convertible_to<T> Wert>
    // It stands for the value, which may be a text's view of a literal.
    // NOLINTNEXTLINE(google-explicit-constructor, cppcoreguidelines-pro-bounds-array-to-pointer-decay)
    constexpr Pflicht(const Wert& wert) : wert_(wert) {}
    // NOLINTNEXTLINE(google-explicit-constructor): it stands for the value
    constexpr operator const T&() const { return wert_; }

    [[nodiscard]] constexpr const T& operator*() const { return wert_; }
    [[nodiscard]] constexpr const T* operator->() const { return &wert_; }

  private:
    T wert_;
};

}  // namespace spurkiste
