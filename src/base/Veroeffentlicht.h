#pragma once

#include <functional>
#include <utility>

#include "base/Meldestelle.h"

namespace spurkiste {

/// A value that tells its observers just before it changes. The owner changes it; everybody may read and observe it.
/// An observer that wants the new value asks for it in a later turn of its loop, never inside the notification.
/// Bound to the owner's thread.
template <typename T>
class Veroeffentlicht {
  public:
    explicit Veroeffentlicht(T anfang) : wert_(std::move(anfang)) {}

    [[nodiscard]] const T& wert() const { return wert_; }

    /// `beobachter` is called before every change until the Abo ends.
    [[nodiscard]] Abo beobachte(std::function<void()> beobachter) const {
        return meldestelle_.beobachte(std::move(beobachter));
    }

    /// Announces one change, then replaces the value. Announced even when the new value equals the old one.
    void setze(T neu) {
        meldestelle_.melde();
        wert_ = std::move(neu);
    }

    /// Announces one change, then lets `aenderung` change the value in place.
    template <typename F>
    void aendere(F&& aenderung) {
        meldestelle_.melde();
        std::forward<F>(aenderung)(wert_);
    }

  private:
    T wert_;
    Meldestelle meldestelle_;
};

}  // namespace spurkiste
