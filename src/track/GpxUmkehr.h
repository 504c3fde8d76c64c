#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/Dateien.h"
#include "track/GpxSpleisse.h"

namespace spurkiste {

/// A sum over bytes that come in pieces: other bytes have another one, but for a chance of one to 2^64. FNV-1a,
/// http://www.isthe.com/chongo/tech/comp/fnv/. Not against those who mean harm.
class Bytesumme {
  public:
    void nimm(std::string_view bytes) {
        constexpr std::uint64_t primzahl = 0x100000001b3;
        for (const char zeichen : bytes) {
            wert_ = (wert_ ^ static_cast<unsigned char>(zeichen)) * primzahl;
        }
    }

    friend bool operator==(const Bytesumme&, const Bytesumme&) = default;

  private:
    std::uint64_t wert_ = 0xcbf29ce484222325;
};

/// What takes one writing of a file back to the bytes that were there before: only those that were replaced are kept.
/// A value that belongs to one state of one file.
struct GpxUmkehr {
    std::vector<GpxSpleisse::Spleiss> spleisse;  ///< in the written file; none when the writing changed no byte
    dateien::Stand stand;                        ///< of the written file
    dateien::Stand vorher;                       ///< of the file that it took the place of
    Bytesumme summe;                             ///< of the written bytes

    /// The splices that undo these, which are in file order, on the content that they have not been made in yet.
    [[nodiscard]] static std::vector<GpxSpleisse::Spleiss> gegen(const std::vector<GpxSpleisse::Spleiss>& spleisse,
                                                                 std::string_view inhalt);

    /// Roughly how much memory it takes, in bytes.
    [[nodiscard]] std::size_t gewicht() const;

    friend bool operator==(const GpxUmkehr&, const GpxUmkehr&) = default;
};

}  // namespace spurkiste
