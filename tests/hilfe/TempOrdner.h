#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>

namespace spurkiste {

/// A folder of its own for one test, removed with everything in it at the end.
class TempOrdner {
  public:
    TempOrdner() {
        std::string muster = (std::filesystem::temp_directory_path() / "spurkiste-test-XXXXXX").native();
        if (::mkdtemp(muster.data()) == nullptr) {
            throw std::runtime_error("no temporary folder");
        }
        pfad_ = muster;
    }
    TempOrdner(const TempOrdner&) = delete;
    TempOrdner& operator=(const TempOrdner&) = delete;
    ~TempOrdner() {
        std::error_code egal;
        std::filesystem::remove_all(pfad_, egal);
    }

    [[nodiscard]] const std::string& pfad() const { return pfad_; }

    /// The path of a name inside the folder.
    [[nodiscard]] std::string in(std::string_view name) const { return pfad_ + "/" + std::string(name); }

    /// Writes a file inside the folder, whole, and returns its path.
    std::string schreibe(std::string_view name, std::string_view inhalt) const {
        const std::string ort = in(name);
        std::ofstream strom(ort, std::ios::binary);
        strom.write(inhalt.data(), static_cast<std::streamsize>(inhalt.size()));
        if (!strom.flush()) {
            throw std::runtime_error("cannot write " + ort);
        }
        return ort;
    }

    /// The content of a file inside the folder.
    [[nodiscard]] std::string lies(std::string_view name) const {
        std::ifstream strom(in(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(strom), {}};
    }

  private:
    std::string pfad_;
};

}  // namespace spurkiste
