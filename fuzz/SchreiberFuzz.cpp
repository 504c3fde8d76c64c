// Any bytes as a GPX file whose sport is set. What is written must be well-formed again, say the sport, have the same
// points, and stay the same when the sport is set once more or changed and set back.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Verlange.h"
#include "track/GpxLeser.h"
#include "track/GpxSpleisse.h"

namespace {

using spurkiste::GpxLeser;
using spurkiste::GpxSpleisse;
using spurkiste::GpxSportart;
using spurkiste::verlange;
using spurkiste::xmlInhalt;

std::string wende(std::string_view inhalt, GpxSportart art, std::size_t& ziele) {
    const auto spleisse = GpxSpleisse::berechne(xmlInhalt(inhalt), art);
    verlange(spleisse.has_value());
    ziele = spleisse->ziele;
    std::string neu;
    std::size_t stand = 0;
    for (const auto& spleiss : spleisse->spleisse) {
        verlange(spleiss.stelle.von >= stand && spleiss.stelle.bis >= spleiss.stelle.von);
        stand = spleiss.stelle.bis;
    }
    verlange(stand <= inhalt.size());
    spleisse->wendeAn(xmlInhalt(inhalt), [&neu](std::string_view stueck) { neu += stueck; });
    return neu;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view inhalt(reinterpret_cast<const char*>(daten), groesse);
    const auto spleisse = GpxSpleisse::berechne(xmlInhalt(inhalt), GpxSportart::rad);
    if (!spleisse) {
        return 0;
    }
    std::size_t ziele = 0;
    std::size_t danach = 0;
    const std::string rad = wende(inhalt, GpxSportart::rad, ziele);
    verlange(ziele > 0 || rad == inhalt);
    verlange(wende(rad, GpxSportart::rad, danach) == rad);
    verlange(danach == ziele);
    verlange(wende(wende(rad, GpxSportart::ski, danach), GpxSportart::rad, danach) == rad);
    for (const auto& spleiss : spleisse->spleisse) {
        const auto weg = inhalt.substr(spleiss.stelle.von, spleiss.stelle.bis - spleiss.stelle.von);
        if (weg.find_first_of("<&") != std::string_view::npos) {
            return 0;  // points inside a <type> go with it
        }
    }
    const auto vorher = GpxLeser::ausInhalt(inhalt);
    const auto nachher = GpxLeser::ausInhalt(rad);
    verlange(nachher.punkte == vorher.punkte && nachher.skizze == vorher.skizze);
    return 0;
}
