#include "track/GpxUmkehr.h"

#include <numeric>
#include <string>
#include <utility>

namespace spurkiste {

Bytesumme Bytesumme::von(const XmlInhalt& inhalt) {
    constexpr std::size_t stueck = std::size_t{256} << 10U;
    Bytesumme summe;
    std::vector<char> puffer(stueck);
    for (std::uint64_t stelle = 0;;) {
        const std::size_t anzahl = inhalt(stelle, puffer);
        summe.nimm({puffer.data(), anzahl});
        stelle += anzahl;
        if (anzahl < puffer.size()) {
            return summe;
        }
    }
}

std::optional<std::vector<GpxSpleisse::Spleiss>> GpxUmkehr::gegen(const std::vector<GpxSpleisse::Spleiss>& spleisse,
                                                                  const XmlInhalt& inhalt) {
    std::vector<GpxSpleisse::Spleiss> ergebnis;
    std::size_t platz = GpxSpleisse::kHoechstens;
    std::size_t dazu = 0;  // by the splices before
    std::size_t weg = 0;
    for (const auto& spleiss : spleisse) {
        const std::size_t laenge = spleiss.stelle.bis - spleiss.stelle.von;
        const std::size_t von = spleiss.stelle.von + dazu - weg;
        if (laenge > platz || sizeof spleiss > platz - laenge) {
            return std::nullopt;
        }
        platz -= laenge + sizeof spleiss;
        std::string bisher(laenge, '\0');
        bisher.resize(inhalt(spleiss.stelle.von, bisher));
        ergebnis.push_back({{von, von + spleiss.text.size()}, std::move(bisher)});
        dazu += spleiss.text.size();
        weg += laenge;
    }
    return ergebnis;
}

std::size_t GpxUmkehr::gewicht() const {
    return std::accumulate(
        spleisse.begin(), spleisse.end(), sizeof(GpxUmkehr),
        [](std::size_t bisher, const auto& spleiss) { return bisher + sizeof spleiss + spleiss.text.capacity(); });
}

}  // namespace spurkiste
