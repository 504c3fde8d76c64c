#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace spurkiste::text {

/// The order in which a file manager of a language shows names: letter case is ignored, digits compare by the number
/// that they form ("Tour 2" before "Tour 10").
class Namensordnung {
  public:
    /// The order of a language (BCP 47); unknown ones get the order that fits all languages.
    explicit Namensordnung(std::string_view sprache);
    Namensordnung(Namensordnung&& andere) noexcept;
    Namensordnung& operator=(Namensordnung&& andere) noexcept;
    ~Namensordnung();

    /// Bytes that compare (std::string's `<`) as the texts stand in this order; equal for texts that share a place.
    /// Bytes that are not UTF-8 count as U+FFFD. Any thread.
    [[nodiscard]] std::string schluessel(std::string_view text) const;

  private:
    struct Regeln;
    std::unique_ptr<const Regeln> regeln_;
};

}  // namespace spurkiste::text
