#pragma once

#include <concepts>
#include <utility>

namespace spurkiste {

/// A member that every row of a table must give: a designated initialiser that leaves it out does not compile, where
/// a plain member would silently be zero. Reads and is called like the value itself.
template <typename T>
class Pflicht {
  public:
    template <std::convertible_to<T> Wert>
    // NOLINTNEXTLINE(google-explicit-constructor): it stands for the value
    constexpr Pflicht(Wert&& wert) : wert_(std::forward<Wert>(wert)) {}
    // NOLINTNEXTLINE(google-explicit-constructor): it stands for the value
    constexpr operator const T&() const { return wert_; }

    [[nodiscard]] constexpr const T& operator*() const { return wert_; }
    [[nodiscard]] constexpr const T* operator->() const { return &wert_; }

  private:
    T wert_;
};

}  // namespace spurkiste
