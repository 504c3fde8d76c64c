#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"

namespace spurkiste {

/// Replaces a file by new content, and only when that differs: as long as what comes is what the file already holds,
/// nothing is written. Neither reads nor writes through a symbolic link at the path. The file is its owner's alone
/// (0600) in a folder that only its owner may write to, else it has the folder's read and write bits. One object per
/// content, one thread; failures throw std::system_error and leave the old file.
class CacheAbgleich {
  public:
    explicit CacheAbgleich(std::string pfad);
    CacheAbgleich(const CacheAbgleich&) = delete;
    CacheAbgleich& operator=(const CacheAbgleich&) = delete;
    ~CacheAbgleich();

    /// The state of the old file, and after schliesse() of the file that is in place; nothing when there is none that
    /// can be read.
    [[nodiscard]] const std::optional<dateien::Stand>& stand() const { return stand_; }

    /// How many bytes have come so far.
    [[nodiscard]] std::uint64_t laenge() const { return laenge_; }

    /// The next bytes of the content.
    void haengeAn(std::string_view bytes);

    /// The same, when they stand in the old file.
    void uebernimm(std::uint64_t ab, std::uint64_t laenge);

    /// Puts the new content in place; false when it was in place already.
    bool schliesse();

  private:
    [[nodiscard]] bool istGleich(std::string_view bytes);
    void trenne();
    void kopiere(std::uint64_t ab, std::uint64_t anzahl);

    std::string pfad_;
    std::optional<dateien::Leser> altes_;
    std::optional<dateien::Stand> stand_;
    std::unique_ptr<dateien::AtomareDatei> neues_;  // from the first difference on
    std::string puffer_;
    std::uint64_t laenge_ = 0;
};

}  // namespace spurkiste
