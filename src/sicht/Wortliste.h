#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace spurkiste {

/// Texts that many records share, as small numbers: comparing them and marking them as seen costs next to nothing.
/// Texts are the same when they are canonically equivalent. A text lives while it is counted; then its number is used
/// again. Bound to one thread.
class Wortliste {
  public:
    using Nummer = std::uint32_t;
    static constexpr Nummer kKeine = 0xffffffff;      ///< of an absent text
    static constexpr Nummer kUnbekannt = 0xfffffffe;  ///< of a text that is not in the list

    /// Counts the text once more and returns its number.
    Nummer nimm(std::string_view text);
    /// Counts it once less; nothing for kKeine.
    void lasse(Nummer nummer);

    /// The number of a text, or kUnbekannt.
    [[nodiscard]] Nummer suche(std::string_view text) const;
    /// All numbers are below it.
    [[nodiscard]] std::size_t umfang() const { return eintraege_.size(); }

    using Worte = std::map<std::string, Nummer, std::less<>>;
    /// The texts, in canonical composition, by code points.
    [[nodiscard]] const Worte& worte() const { return worte_; }

  private:
    struct Zaehler {
        Worte::iterator wort;
        std::size_t anzahl = 0;
    };

    Worte worte_;
    std::vector<Zaehler> eintraege_;  // by number
    std::vector<Nummer> frei_;
};

}  // namespace spurkiste
