#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "track/GpxSportart.h"
#include "track/XmlLauf.h"

namespace spurkiste {

/// What has to change in the bytes of a GPX file so that its tracks and routes have a sport type. A value, of bounded
/// size however large the file is and however many tracks it has.
struct GpxSpleisse {
    /// Bytes to take out and bytes to put in their place; either may be none.
    struct Spleiss {
        XmlBereich stelle;
        std::string text;  ///< in the encoding of the file

        friend bool operator==(const Spleiss&, const Spleiss&) = default;
    };

    /// No more changes are kept than take so many bytes.
    static constexpr std::size_t kHoechstens = std::size_t{8} << 20U;

    GpxSportart art;
    std::vector<Spleiss> spleisse;  ///< in file order, none touching another
    bool alle = true;               ///< false: there were more than can be kept, and they are found again to be applied
    std::size_t ziele = 0;          ///< how many tracks and routes there are below the root element

    /// Finds the changes: each track or route has its first <type> filled with the sport's raw value, or gets one in
    /// front of its extensions, segments or route points, at its end when it has none of them, with the prefix that it
    /// has itself. A <type> that holds exactly the value already needs no change. Nothing when the bytes are not
    /// well-formed XML. Any thread.
    [[nodiscard]] static std::optional<GpxSpleisse> berechne(const XmlInhalt& inhalt, GpxSportart art);

    /// Hands the changed content to `senke` in pieces. The content is to be the one that the changes were found in.
    void wendeAn(const XmlInhalt& inhalt, const std::function<void(std::string_view)>& senke) const;
};

}  // namespace spurkiste
