#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "track/GpxMetadaten.h"

namespace spurkiste {

/// Everything that the detail panel says about a record, in the current language. A value.
struct DetailTexte {
    /// A figure with its caption.
    struct Kachel {
        std::string titel;        ///< in capitals
        std::string_view symbol;  ///< name of the icon, of static lifetime
        std::string wert;
        std::string zusatz = {};  ///< a small line below; may be empty

        friend bool operator==(const Kachel&, const Kachel&) = default;
    };

    /// A line of a card: what, and its value.
    struct Zeile {
        std::string schild;
        std::string wert;
        std::string vorlesetext = {};  ///< what a screen reader says in place of the value; empty: the value

        friend bool operator==(const Zeile&, const Zeile&) = default;
    };

    std::string ueberzeile;       ///< above the title, in capitals
    std::string titel;            ///< the track's name, without one the file's
    std::string datum;            ///< of the first timestamp, without one that of the file, which is said
    std::vector<Kachel> kacheln;  ///< four figures, and the weather when there is any
    std::string einordnung;       ///< the title of the first card, in capitals
    std::string sport;            ///< what the sport menu stands behind there
    std::array<Zeile, 2> einordnungszeilen;
    std::array<Zeile, 2> routenzeilen;
    std::array<Zeile, 2> dateizeilen;
    std::string zeigen;  ///< of the button, in capitals

    friend bool operator==(const DetailTexte&, const DetailTexte&) = default;

    /// `sprache` (BCP 47) decides how letters become capitals; `groesse` is the file's size in words. Main thread, as
    /// it asks AppSprache.
    [[nodiscard]] static DetailTexte aus(const GpxMetadaten& eintrag, std::string_view sprache, std::string groesse);
};

}  // namespace spurkiste
