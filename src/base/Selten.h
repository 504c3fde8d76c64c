#pragma once

#include <memory>
#include <optional>
#include <utility>

namespace spurkiste {

/// A value that is mostly absent: like std::optional, but what is absent takes no more room than a pointer. Copies are
/// deep. Any thread, as a plain value.
template <class Wert>
class Selten {
  public:
    using value_type = Wert;  // NOLINT(readability-identifier-naming): std

    Selten() = default;
    // Implicit, as those of std::optional are.
    Selten(std::nullopt_t /*absent*/) {}                                   // NOLINT(google-explicit-constructor)
    Selten(Wert wert) : wert_(std::make_unique<Wert>(std::move(wert))) {}  // NOLINT(google-explicit-constructor)
    Selten(std::optional<Wert> wert)                                       // NOLINT(google-explicit-constructor)
        : wert_(wert ? std::make_unique<Wert>(std::move(*wert)) : nullptr) {}
    Selten(const Selten& andere) : wert_(andere.wert_ ? std::make_unique<Wert>(*andere.wert_) : nullptr) {}
    Selten(Selten&& andere) noexcept = default;
    Selten& operator=(Selten andere) noexcept {
        wert_ = std::move(andere.wert_);
        return *this;
    }
    ~Selten() = default;

    [[nodiscard]] bool has_value() const { return wert_ != nullptr; }  // NOLINT(readability-identifier-naming): std
    explicit operator bool() const { return has_value(); }
    // There must be one.
    [[nodiscard]] Wert& operator*() { return *wert_; }
    [[nodiscard]] const Wert& operator*() const { return *wert_; }
    [[nodiscard]] Wert* operator->() { return wert_.get(); }
    [[nodiscard]] const Wert* operator->() const { return wert_.get(); }
    void reset() { wert_.reset(); }

    friend bool operator==(const Selten& a, const Selten& b) {
        return a.has_value() == b.has_value() && (!a.has_value() || *a == *b);
    }

  private:
    std::unique_ptr<Wert> wert_;
};

}  // namespace spurkiste
