#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

namespace spurkiste {

/// A set of paths that costs nothing to copy, however large: copies share it until one of them is changed. Bound to one
/// thread.
class Pfadmenge {
  public:
    using Menge = std::unordered_set<std::string>;
    using value_type = std::string;
    using const_iterator = Menge::const_iterator;
    using iterator = const_iterator;

    Pfadmenge() = default;
    Pfadmenge(std::initializer_list<std::string> pfade) : menge_(std::make_shared<Menge>(pfade)) {}
    Pfadmenge(Menge pfade)
        : menge_(std::make_shared<Menge>(std::move(pfade))) {}  // NOLINT(google-explicit-constructor)

    /// As the standard library's set has them.
    [[nodiscard]] const Menge& menge() const { return *menge_; }
    [[nodiscard]] std::size_t size() const { return menge_->size(); }
    [[nodiscard]] bool empty() const { return menge_->empty(); }
    [[nodiscard]] bool contains(const std::string& pfad) const { return menge_->contains(pfad); }
    [[nodiscard]] const_iterator begin() const { return menge_->begin(); }
    [[nodiscard]] const_iterator end() const { return menge_->end(); }
    void insert(const std::string& pfad) { eigene().insert(pfad); }
    void erase(const std::string& pfad) { eigene().erase(pfad); }

    friend bool operator==(const Pfadmenge& a, const Pfadmenge& b) {
        return a.menge_ == b.menge_ || *a.menge_ == *b.menge_;
    }

  private:
    Menge& eigene() {
        if (menge_.use_count() > 1) {
            menge_ = std::make_shared<Menge>(*menge_);
        }
        return *menge_;
    }

    std::shared_ptr<Menge> menge_ = std::make_shared<Menge>();
};

}  // namespace spurkiste
