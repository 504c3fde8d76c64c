#pragma once

#include <optional>
#include <string>

/// What there is to find out about a file that the user opens from outside. Paths are absolute. Any thread.
namespace spurkiste::oeffnung {

/// Why the file cannot be opened, in a few words that follow its name; absent when it can. It must exist, be no folder,
/// be called as a GPX file and be readable.
[[nodiscard]] std::optional<std::string> einwand(const std::string& pfad);

/// The name of the file and the objection, one line that is safe to show.
[[nodiscard]] std::string meldung(const std::string& pfad, const std::string& einwand);

/// Whether the file lies directly in the folder, whatever way both paths take there.
[[nodiscard]] bool liegtIn(const std::string& ordner, const std::string& pfad);

/// The first by its name of the folder's GPX files that hold the same bytes; nothing when there is none, or when the
/// folder or the file cannot be read.
[[nodiscard]] std::optional<std::string> gleiche(const std::string& ordner, const std::string& pfad);

}  // namespace spurkiste::oeffnung
