#pragma once

#include "platform/Systemumgebung.h"

namespace spurkiste {

/// The user's languages and folders by the POSIX and freedesktop.org conventions, from the environment.
class PosixSystemumgebung final : public Systemumgebung {
  public:
    /// From LANGUAGE (a list, when the locale is not C), else LC_ALL, LC_MESSAGES and LANG, the first one that is set
    /// (POSIX.1-2017, XBD 8.2; GNU gettext for LANGUAGE). "de_CH.UTF-8@euro" gives "de-CH".
    [[nodiscard]] std::vector<std::string> bevorzugteSprachen() const override;

    /// XDG_DOCUMENTS_DIR of user-dirs.dirs in the configuration folder (xdg-user-dirs), else ~/Documents.
    /// Nothing when HOME is not set.
    [[nodiscard]] std::optional<std::string> dokumenteOrdner() const override;
};

}  // namespace spurkiste
