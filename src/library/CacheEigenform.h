#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Ausfuehrer.h"
#include "library/CacheAbdruck.h"
#include "track/GpxMetadatenEigenform.h"

namespace spurkiste {

/// The straight way to read a cache: a text in exactly the form in which this program writes it, in sections on several
/// threads, without ever holding more of it than a section for each of them.
class CacheEigenform {
  public:
    CacheEigenform() = delete;

    /// What such a text begins and ends with.
    static constexpr std::string_view kAnfang = R"({"version":3,"eintraege":{)";
    static constexpr std::string_view kEnde = "}}";

    /// A text that can be read at several places at once.
    struct Text {
        /// Fills the buffer from a position on and returns with how many bytes; fewer than asked only at the end. Is
        /// called by several threads at once.
        std::function<std::size_t(std::uint64_t stelle, std::span<char> puffer)> lies;
        std::uint64_t groesse = 0;
    };

    /// Who helps and with what.
    struct Helfer {
        Ausfuehrer* ausfuehrer = nullptr;  ///< runs the tasks of helpers, see arbeiteGemeinsam(); null: nobody helps
        unsigned anzahl = 0;               ///< how many tasks at most
        GpxMetadatenEigenform::Bekannte bekannte = {};  ///< is called by all threads at once; may be empty
    };

    /// Fits the processor's own cache together with what is made of it.
    static constexpr std::size_t kAbschnitt = std::size_t{512} * 1024;

    /// The records in the order of the text; nothing when a single byte is not as it would be written. Of records with
    /// the same path all come. A section begins at the first record behind a multiple of `abschnitt` bytes. Any thread.
    [[nodiscard]] static std::optional<std::vector<CacheAbdruck::Stelle>> lies(const Text& text, const Helfer& helfer,
                                                                               std::size_t abschnitt = kAbschnitt);
};

}  // namespace spurkiste
