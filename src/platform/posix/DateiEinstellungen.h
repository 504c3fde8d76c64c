#pragma once

#include <map>
#include <string>

#include "platform/Einstellungen.h"

namespace spurkiste {

/// Settings in one text file, a line "key=value" each: "\\" and "\n" inside a value are written as backslash
/// sequences; a key holds neither "=" nor a line break. Read once; every change is written at once and atomically, on
/// top of what other programs have written meanwhile, so that programs that run side by side never see half a file.
/// A new file is its owner's alone. A symbolic link is read through, but replaced by the first change. A file that
/// cannot be read for the moment is left alone; one above 1 MiB holds no settings.
class DateiEinstellungen final : public Einstellungen {
  public:
    /// `pfad` is the file; it need not exist and its folders are made at the first change.
    explicit DateiEinstellungen(std::string pfad);

    [[nodiscard]] std::optional<std::string> lies(std::string_view schluessel) const override;
    void schreibe(std::string_view schluessel, std::string_view wert) override;

    /// The file of a suite of settings in the user's configuration folder: $XDG_CONFIG_HOME, else ~/.config
    /// (freedesktop.org Base Directory Specification 0.8). Nothing when neither is known.
    [[nodiscard]] static std::optional<std::string> ortDerSuite(std::string_view suite);

    /// The suite of this program, and the one that its predecessor wrote and that is only ever read.
    static constexpr std::string_view kSuite = "spurkiste";
    static constexpr std::string_view kAltbestand = "ch.korvo.gpx-library";

  private:
    using Werte = std::map<std::string, std::string, std::less<>>;
    /// Takes over what the file holds. False when it holds something that cannot be read just now.
    bool liesDatei();
    void schreibeDatei() const;

    std::string pfad_;
    Werte werte_;
    Werte offen_;  // changes of this run that no file holds yet
};

}  // namespace spurkiste
