#include "ui/teile/KistePapier.h"

namespace spurkiste {

QColor KistePapier::sportFarbe(const std::optional<GpxSportart>& art) {
    if (!art) {
        return gold;
    }
    switch (*art) {
        case GpxSportart::rad:
        case GpxSportart::mountainbike:
        case GpxSportart::gravel:
        case GpxSportart::eBike:
            return gruen;
        case GpxSportart::laufen:
        case GpxSportart::trailrunning:
            return orange;
        case GpxSportart::motorrad:
        case GpxSportart::auto_:
            return violett;
        case GpxSportart::wandern:
        case GpxSportart::gehen:
            return goldDunkel;
        case GpxSportart::schwimmen:
        case GpxSportart::rudern:
        case GpxSportart::kajak:
            return blau;
        case GpxSportart::ski:
        case GpxSportart::inline_:
            return cyan;
    }
    return gold;
}

QColor KistePapier::mitDeckkraft(QColor farbe, double deckkraft) {
    farbe.setAlphaF(static_cast<float>(deckkraft));
    return farbe;
}

}  // namespace spurkiste
