#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace spurkiste {

/// The progress bar of a run of reading on a terminal: one line of stderr, written over again and again.
/// A value without threads; whoever owns it says when there is something new to show.
class Fortschritt {
  public:
    /// `breite` is the terminal's width in columns.
    explicit Fortschritt(std::size_t breite) : breite_(breite) {}

    /// What to write now that `offen` files are still to be read: the line from its start, without a line break.
    /// Nothing when it would look the same. The most that was ever open counts as the whole.
    [[nodiscard]] std::optional<std::string> zeile(std::size_t offen);

    /// What to write to leave the line as if there had been no bar; empty when none was shown.
    [[nodiscard]] std::string raeumeAuf();

  private:
    std::size_t breite_;
    std::size_t ganzes_ = 0;
    std::string zuletzt_;
};

}  // namespace spurkiste
