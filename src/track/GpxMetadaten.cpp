#include "track/GpxMetadaten.h"

#include "i18n/AppSprache.h"

namespace spurkiste {

std::optional<GpxSportart> GpxMetadaten::sportVorschlag() const {
    if (nenntSport() || !(dauerSekunden > 0.0)) {
        return std::nullopt;
    }
    constexpr double kmhJeMeterProSekunde = 3.6;
    return GpxSport::schaetzung(streckeMeter / dauerSekunden * kmhJeMeterProSekunde);
}

std::string GpxMetadaten::sportAnzeige() const {
    if (const auto sport = GpxSportart::aus(sportRoh)) {
        return sport->deutsch();
    }
    if (nenntSport()) {
        return *sportRoh;
    }
    if (const auto vorschlag = sportVorschlag()) {
        return vorschlag->deutsch();
    }
    return "\u2013";
}

}  // namespace spurkiste
