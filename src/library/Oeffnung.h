#pragma once

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <utility>

/// What there is to find out about a file that the user opens from outside. Paths are absolute. Any thread.
namespace spurkiste::oeffnung {

/// Why the file cannot be opened, in a few words that follow its name; absent when it can. It must exist, be no folder,
/// be called as a GPX file and be readable.
[[nodiscard]] std::optional<std::string> einwand(const std::string& pfad);

/// The name of the file and the objection, one line that is safe to show.
[[nodiscard]] std::string meldung(const std::string& pfad, const std::string& einwand);

/// Whether the file lies directly in the folder, whatever way both paths take there.
[[nodiscard]] bool liegtIn(const std::string& ordner, const std::string& pfad);

/// The GPX files of a folder by their sizes. The folder is looked into once, however many files are asked about: what
/// comes meanwhile must be told. One thread at a time.
class Bestand {
  public:
    explicit Bestand(std::string ordner) : ordner_(std::move(ordner)) {}

    /// The first by its name of the folder's GPX files that hold the same bytes as the file at the path; nothing when
    /// there is none, or when the folder or the file cannot be read.
    [[nodiscard]] std::optional<std::string> gleiche(const std::string& pfad);

    /// A file has come to the folder. What memory does not suffice for is as if it were not there.
    void kommt(const std::string& pfad);

  private:
    void sieheNach();

    std::string ordner_;
    bool bekannt_ = false;
    std::unordered_map<std::int64_t, std::set<std::string>> namen_;  // by size in bytes
};

}  // namespace spurkiste::oeffnung
