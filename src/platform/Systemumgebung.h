#pragma once

#include <optional>
#include <string>
#include <vector>

namespace spurkiste {

/// What the operating system says about the user. Bound to the main thread.
class Systemumgebung {
  public:
    Systemumgebung() = default;
    Systemumgebung(const Systemumgebung&) = delete;
    Systemumgebung& operator=(const Systemumgebung&) = delete;
    virtual ~Systemumgebung() = default;

    /// The user's preferred languages, most wanted first, as BCP 47 tags ("de-CH"). The C and POSIX locales are no
    /// preference: with them alone the list is empty.
    [[nodiscard]] virtual std::vector<std::string> bevorzugteSprachen() const = 0;

    /// Absolute path of the user's documents folder (it need not exist); nothing when the system knows none.
    [[nodiscard]] virtual std::optional<std::string> dokumenteOrdner() const = 0;
};

}  // namespace spurkiste
