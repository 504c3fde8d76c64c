#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "library/Bibliotheksaufbau.h"

namespace spurkiste {

/// A library and a folder beside it from which files are imported.
class Importaufbau : public Bibliotheksaufbau {
  protected:
    TempOrdner fremd;

    /// Writes files outside the library and returns their paths.
    std::vector<std::string> fremde(const Namen& alle) const {
        std::vector<std::string> pfade;
        for (const std::string& name : alle) {
            std::filesystem::create_directories(std::filesystem::path(fremd.in(name)).parent_path());
            pfade.push_back(fremd.schreibe(name, gpx(47, 8)));
        }
        return pfade;
    }
};

}  // namespace spurkiste
