#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace spurkiste {

/// Cuts a JSON text that arrives in portions into values and what stands between them, so that a large file is read
/// with the memory of its largest value. It only looks for where a value ends; whether the value is valid, its reader
/// must find out. One object per text, one thread.
class JsonStuecke {
  public:
    /// Fills the buffer with the next bytes of the text and returns how many; 0 at the end.
    using Quelle = std::function<std::size_t(std::span<char>)>;

    /// No value may be longer, so that a text without an end cannot fill the memory.
    static constexpr std::size_t kHoechstens = std::size_t{64} << 20;

    /// After each value `polster` more bytes will be readable.
    JsonStuecke(Quelle quelle, std::size_t polster);

    /// Skips white space, then the given character; false when another one stands there.
    [[nodiscard]] bool nimm(char zeichen);

    /// The next value from its first to its last byte: an object or array up to its closing bracket, a string, or what
    /// else stands before the next separator. Nothing when the text ends before the value does or the value is longer
    /// than kHoechstens. The bytes are good until the next call of any function.
    [[nodiscard]] std::optional<std::string_view> wert();

    /// Whether nothing but white space is left.
    [[nodiscard]] bool amEnde();

  private:
    [[nodiscard]] bool ueberspringeLeerraum();
    [[nodiscard]] bool holeMehr();
    [[nodiscard]] std::optional<std::size_t> klammerOderTextLaenge();
    [[nodiscard]] std::optional<std::size_t> wortLaenge();

    Quelle quelle_;
    std::size_t polster_;
    std::vector<char> puffer_;
    std::size_t anfang_ = 0;  // of what has not been handed out, in puffer_
    std::size_t ende_ = 0;    // of what has been fetched
};

}  // namespace spurkiste
