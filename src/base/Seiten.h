#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace spurkiste {

/// Fresh memory, zeroed, straight from the system and given back to it as a whole. From kGrosseSeite on it asks for the
/// processor's large pages, one touch of which costs less than a dozen of the small ones; the size should then be a
/// multiple of it. Throws std::bad_alloc. Any thread.
class Seiten {
  public:
    static constexpr std::size_t kGrosseSeite = std::size_t{2} << 20;

    explicit Seiten(std::size_t groesse);

    [[nodiscard]] std::span<std::byte> bytes() const { return {anfang_.get(), groesse_}; }

  private:
    struct Rueckgabe {
        std::size_t groesse = 0;
        void operator()(std::byte* anfang) const;
    };

    std::size_t groesse_;
    std::unique_ptr<std::byte, Rueckgabe> anfang_;
};

}  // namespace spurkiste
