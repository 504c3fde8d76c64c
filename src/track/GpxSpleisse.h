#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "track/GpxSportart.h"
#include "track/XmlLauf.h"

namespace spurkiste {

/// What has to change in the bytes of a GPX file so that its tracks and routes have a sport type. A value.
struct GpxSpleisse {
    /// Bytes to take out and bytes to put in their place; either may be none.
    struct Spleiss {
        XmlBereich stelle;
        std::string text;  ///< in the encoding of the file

        friend bool operator==(const Spleiss&, const Spleiss&) = default;
    };

    std::vector<Spleiss> spleisse;  ///< in file order, none touching another
    std::size_t ziele = 0;          ///< how many tracks and routes there are below the root element

    /// Finds the changes: each track or route has its first <type> filled with the sport's raw value, or gets one in
    /// front of its extensions, segments or route points, at its end when it has none of them, with the prefix that it
    /// has itself. A <type> that holds exactly the value already needs no change. Nothing when the bytes are not
    /// well-formed XML. Any thread.
    [[nodiscard]] static std::optional<GpxSpleisse> berechne(std::string_view inhalt, GpxSportart art);

    /// Hands the changed content to `senke` in pieces.
    template <typename Senke>
    void wendeAn(std::string_view inhalt, Senke senke) const {
        std::size_t stand = 0;
        for (const Spleiss& spleiss : spleisse) {
            senke(inhalt.substr(stand, spleiss.stelle.von - stand));
            senke(std::string_view(spleiss.text));
            stand = spleiss.stelle.bis;
        }
        senke(inhalt.substr(stand));
    }
};

}  // namespace spurkiste
