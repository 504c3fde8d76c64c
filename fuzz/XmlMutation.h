#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>
#include <string>

/// Believable GPX documents with everything that XML knows, and small damage to any document.
class XmlMutation {
  public:
    explicit XmlMutation(std::uint32_t saat) : zufall_(saat) {}

    /// A well-formed document of up to a few hundred elements.
    [[nodiscard]] std::string erfinde();

    /// The document with one thing inserted, taken out, doubled, exchanged or moved, at a place where tokens meet or at
    /// any other.
    [[nodiscard]] std::string veraendere(std::string dokument);

    /// A number from 0 up to but without `grenze`, which must not be 0.
    std::size_t wuerfle(std::size_t grenze) {
        return std::uniform_int_distribution<std::size_t>(0, grenze - 1)(zufall_);
    }

  private:
    template <typename Liste>
    const auto& eines(const Liste& liste) {
        return liste[wuerfle(std::size(liste))];
    }
    std::string name();
    std::string text();
    std::string attribute();
    std::string beiwerk();
    void element(std::string& ziel, std::size_t tiefe);
    std::size_t stelle(const std::string& dokument);

    std::minstd_rand zufall_;
};
