#include "track/XmlVerweis.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace spurkiste {

namespace {

/// The number of a character reference ("#8364" or "#x20AC"), or 0 for what is none or beyond Unicode.
std::uint32_t nummer(std::string_view verweis) {
    const bool sechzehn = verweis.starts_with("#x");
    verweis.remove_prefix(sechzehn ? 2 : 1);
    std::uint32_t wert = 0;
    for (const char zeichen : verweis) {
        std::uint32_t ziffer = 0;
        if (zeichen >= '0' && zeichen <= '9') {
            ziffer = static_cast<std::uint32_t>(zeichen - '0');
        } else if (sechzehn && zeichen >= 'a' && zeichen <= 'f') {
            ziffer = static_cast<std::uint32_t>(zeichen - 'a') + 10;
        } else if (sechzehn && zeichen >= 'A' && zeichen <= 'F') {
            ziffer = static_cast<std::uint32_t>(zeichen - 'A') + 10;
        } else {
            return 0;
        }
        wert = wert * (sechzehn ? 16 : 10) + ziffer;
        if (wert > 0x10FFFF) {
            return 0;
        }
    }
    return wert;
}

/// Appends the character as UTF-8. False when XML does not allow it.
bool haengeAn(std::uint32_t zeichen, std::string& ziel) {
    const auto folge = [&](unsigned bits) { ziel += static_cast<char>(0x80U | ((zeichen >> bits) & 0x3FU)); };
    const auto erstes = [&](unsigned kennung, unsigned bits) {
        ziel += static_cast<char>(kennung | (zeichen >> bits));
    };
    if (zeichen < 0x80) {
        ziel += static_cast<char>(zeichen);
        return zeichen >= 0x20 || zeichen == '\t' || zeichen == '\n' || zeichen == '\r';
    }
    if (zeichen < 0x800) {
        erstes(0xC0, 6);
        folge(0);
        return true;
    }
    if (zeichen < 0x10000) {
        erstes(0xE0, 12);
        folge(6);
        folge(0);
        return (zeichen < 0xD800 || zeichen > 0xDFFF) && zeichen < 0xFFFE;
    }
    erstes(0xF0, 18);
    folge(12);
    folge(6);
    folge(0);
    return true;
}

}  // namespace

bool loeseXmlVerweis(std::string_view verweis, std::string& ziel) {
    constexpr std::array<std::pair<std::string_view, char>, 5> entitaeten = {
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    if (verweis.starts_with('#')) {
        return haengeAn(nummer(verweis), ziel);
    }
    const auto* const fund = std::find_if(entitaeten.begin(), entitaeten.end(),
                                          [verweis](const auto& entitaet) { return entitaet.first == verweis; });
    if (fund == entitaeten.end()) {
        return false;
    }
    ziel += fund->second;
    return true;
}

}  // namespace spurkiste
