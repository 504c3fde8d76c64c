#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/Dateien.h"
#include "platform/Papierkorb.h"
#include "track/GpxUmkehr.h"

namespace spurkiste {

/// A file is to get another path.
struct Umzug {
    std::string von;
    std::string nach;
    std::optional<dateien::Stand> stand;  ///< the file, as it must still be
};

/// Bytes of a file are to be replaced by those that were there before.
struct Umschrift {
    std::string pfad;
    GpxUmkehr umkehr;
};

/// A file is to go to the trash.
struct Wegwurf {
    std::string pfad;
    std::optional<dateien::Stand> stand;  ///< the file, as it must still be
};

/// A file is to come back from the trash.
struct Rueckholung {
    Papierkorb::Fund fund;
};

/// What takes back something that was done to one file. A value; doing it gives its inverse, which is one again.
using Tat = std::variant<Umzug, Umschrift, Wegwurf, Rueckholung>;

/// Whether a step is taken back or done again.
enum class Richtung { zurueck, wieder };

/// What was done to the library's files and can be taken back, step by step, and what was taken back and can be done
/// again. A step is what the user sees as one: its deeds concern different files. Knows nothing of how deeds are done.
/// A value; its memory is bounded.
class Verlauf {
  public:
    using Schritt = std::vector<Tat>;
    using Nummer = std::uint64_t;

    /// At most so many steps can be taken back, and so many bytes are kept for it; the oldest steps go first.
    static constexpr std::size_t kSchritte = 200;
    static constexpr std::size_t kGewicht = std::size_t{32} << 20U;

    /// Begins a step, which has its place from now on, however long what belongs to it takes.
    [[nodiscard]] Nummer beginne();
    /// Something of the step has been done, which `tat` takes back; there is nothing to be done again any more. Steps
    /// that are forgotten meanwhile stay so.
    void ergaenze(Nummer nummer, Tat tat);
    /// The step is complete; one without deeds never was.
    void beende(Nummer nummer);
    /// A step of one deed, done already.
    void tue(Tat tat);

    /// Whether no step is being done.
    [[nodiscard]] bool ruht() const;

    /// Takes the step out that comes next in this direction; nothing when there is none. To be called when it rests.
    [[nodiscard]] std::optional<Schritt> nimm(Richtung richtung);
    /// That step has been done in this direction; these are the inverse deeds, of whichever of its deeds succeeded.
    void legeAb(Richtung richtung, Schritt gegentaten);

    /// A file has another state, by a writing that leaves it the bytes that deeds of this direction count on: they
    /// follow it. `pfad` is where it is now. Only those of steps after `bis`, where that is given.
    void verfolge(Richtung richtung, std::string_view pfad, const dateien::Stand& alt, const dateien::Stand& neu,
                  std::optional<Nummer> bis = std::nullopt);

    void vergiss();

  private:
    struct Ablage {
        Nummer nummer = 0;
        bool offen = false;
        Schritt taten;
    };

    [[nodiscard]] std::deque<Ablage>::iterator stelle(Nummer nummer);
    void begrenze();

    std::deque<Ablage> zurueck_;  // the newest at the end, those being done among them
    std::deque<Ablage> wieder_;   // the next at the end
    Nummer letzte_ = 0;
};

}  // namespace spurkiste
