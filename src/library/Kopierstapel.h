#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace spurkiste {

/// What came of copying files into a library folder: a batch, whose copies wait for the disk together.
struct Kopierstapel {
    /// One copy.
    struct Kopie {
        std::string quelle;
        std::string ziel;    ///< its path; empty when there is none
        std::string fehler;  ///< why, in one line for the user
    };
    std::vector<Kopie> kopien;      ///< of the first sources, in their order, at least one
    std::vector<std::string> rest;  ///< the sources that a later batch is to take: these were enough for one

    /// Copies files into the folder, in the order given, each under the first free one of its names ("a.gpx",
    /// "a 2.gpx"). What has a path afterwards is on the disk, even through a power failure. After `abbruch` is set the
    /// copy in hand is finished and no other begun. Any thread, one call at a time for each folder.
    [[nodiscard]] static Kopierstapel kopiere(const std::string& ordner, const std::vector<std::string>& quellen,
                                              const std::atomic<bool>& abbruch);
};

}  // namespace spurkiste
