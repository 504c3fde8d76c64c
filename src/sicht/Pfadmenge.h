#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <string>
#include <unordered_set>
#include <utility>

namespace spurkiste {

/// A set of paths that costs nothing to copy, however large: copies share it until one of them is changed. The texts
/// are shared with whoever gave them, and hashed once for all sets. Bound to one thread.
class Pfadmenge {
  public:
    /// A path that may belong to somebody else, a record say, and its hash.
    class Glied {
      public:
        explicit Glied(std::string pfad) : Glied(std::make_shared<const std::string>(std::move(pfad))) {}
        explicit Glied(std::shared_ptr<const std::string> pfad) : pfad_(std::move(pfad)), hash_(hash(*pfad_)) {}
        /// `hash` is that of the path, by the function below.
        Glied(std::shared_ptr<const std::string> pfad, std::size_t hash) : pfad_(std::move(pfad)), hash_(hash) {}

        [[nodiscard]] static std::size_t hash(const std::string& pfad) { return std::hash<std::string>{}(pfad); }
        [[nodiscard]] const std::string& pfad() const { return *pfad_; }
        [[nodiscard]] std::size_t hash() const { return hash_; }

        friend bool operator==(const Glied& a, const Glied& b) {
            return a.hash_ == b.hash_ && (a.pfad_ == b.pfad_ || *a.pfad_ == *b.pfad_);
        }

      private:
        std::shared_ptr<const std::string> pfad_;
        std::size_t hash_;
    };

    /// Hashes and compares the paths of a set, and a text with them.
    struct Vergleich {
        using is_transparent = void;

        std::size_t operator()(const Glied& glied) const noexcept { return glied.hash(); }
        std::size_t operator()(const std::string& pfad) const noexcept { return Glied::hash(pfad); }
        bool operator()(const Glied& a, const Glied& b) const { return a == b; }
        bool operator()(const Glied& glied, const std::string& pfad) const { return glied.pfad() == pfad; }
        bool operator()(const std::string& pfad, const Glied& glied) const { return glied.pfad() == pfad; }
    };
    using Menge = std::unordered_set<Glied, Vergleich, Vergleich>;

    /// Goes through the paths, in no order.
    class const_iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = std::string;
        using difference_type = std::ptrdiff_t;
        using pointer = const std::string*;
        using reference = const std::string&;

        const_iterator() = default;
        explicit const_iterator(Menge::const_iterator stelle) : stelle_(stelle) {}

        reference operator*() const { return stelle_->pfad(); }
        pointer operator->() const { return &stelle_->pfad(); }
        const_iterator& operator++() {
            ++stelle_;
            return *this;
        }
        const_iterator operator++(int) { return const_iterator(stelle_++); }
        friend bool operator==(const const_iterator&, const const_iterator&) = default;

      private:
        Menge::const_iterator stelle_;
    };
    using iterator = const_iterator;
    using value_type = std::string;

    Pfadmenge() = default;
    Pfadmenge(std::initializer_list<std::string> pfade) {
        for (const std::string& pfad : pfade) {
            insert(pfad);
        }
    }
    explicit Pfadmenge(const std::unordered_set<std::string>& pfade) {
        for (const std::string& pfad : pfade) {
            insert(pfad);
        }
    }
    Pfadmenge(Menge pfade)
        : menge_(std::make_shared<Menge>(std::move(pfade))) {}  // NOLINT(google-explicit-constructor)

    /// A copy of all texts.
    [[nodiscard]] std::unordered_set<std::string> texte() const { return {begin(), end()}; }
    [[nodiscard]] std::size_t size() const { return menge_->size(); }
    [[nodiscard]] bool empty() const { return menge_->empty(); }
    [[nodiscard]] bool contains(const std::string& pfad) const { return menge_->contains(pfad); }
    [[nodiscard]] bool contains(const Glied& glied) const { return menge_->contains(glied); }
    [[nodiscard]] const_iterator begin() const { return const_iterator(menge_->begin()); }
    [[nodiscard]] const_iterator end() const { return const_iterator(menge_->end()); }
    void insert(Glied glied) { eigene().insert(std::move(glied)); }
    void insert(const std::string& pfad) { insert(Glied(pfad)); }
    void erase(const Glied& glied) { eigene().erase(glied); }

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
