#include "track/GpxLeser.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <utility>

#include "base/Dateien.h"
#include "track/GpxSammler.h"

namespace spurkiste {

namespace {

/// What a thread keeps from file to file, since touching fresh memory costs as much as parsing what is in it.
struct Werkbank {
    XmlLauf lauf;
    GpxPunktliste spur;
    GpxPunktliste route;
};

/// Reads a document and returns what `nimm` takes from the GpxSammler that has heard it.
template <typename Nimm>
auto leseAus(const XmlLauf::Quelle& quelle, std::size_t groesse, Nimm nimm, GpxStrichliste* maengel = nullptr,
             std::size_t amStueck = XmlLauf::kAmStueck, XmlWeg weg = XmlWeg::eiligVoran) {
    thread_local Werkbank werkbank;
    std::optional<GpxSammler> sammler;
    const auto frisch = [&]() -> XmlEmpfaenger& {
        // A recorded point seldom takes more bytes; growing would touch the memory of a large file's points twice.
        constexpr std::size_t bytesJePunkt = 256;
        constexpr std::size_t hoechstens = std::size_t{1} << 20U;
        werkbank.spur.leere();
        werkbank.route.leere();
        werkbank.spur.punkte.reserve(std::min(groesse / bytesJePunkt, hoechstens));
        if (maengel != nullptr) {
            *maengel = {};
        }
        return sammler.emplace(werkbank.spur, werkbank.route, maengel);
    };
    werkbank.lauf.lies(quelle, groesse, frisch, amStueck, weg);
    return nimm(*sammler);
}

GpxMetadaten nimmErgebnis(const GpxSammler& sammler) {
    return sammler.ergebnis();
}

}  // namespace

std::optional<GpxMetadaten> GpxLeser::lese(const std::string& pfad) {
    const auto angaben = dateien::angaben(pfad);
    if (!angaben) {
        return std::nullopt;
    }
    GpxMetadaten eintrag;
    if (auto leser = dateien::Leser::oeffne(pfad)) {
        const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
        eintrag = leseAus(quelle, static_cast<std::size_t>(angaben->groesse), nimmErgebnis);
    }
    eintrag.pfad = pfad;
    eintrag.dateiName = dateien::ohneEndung(dateien::letzterTeil(pfad));
    eintrag.dateiDatum = angaben->geaendert;
    eintrag.dateiGroesse = angaben->groesse;
    return eintrag;
}

GpxMetadaten GpxLeser::ausInhalt(std::string_view inhalt, std::size_t amStueck, XmlWeg weg) {
    std::string_view rest = inhalt;
    const auto quelle = [&](std::span<char> puffer) {
        const std::size_t anzahl = rest.copy(puffer.data(), puffer.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
    return leseAus(quelle, inhalt.size(), nimmErgebnis, nullptr, amStueck, weg);
}

std::vector<Koordinate> GpxLeser::orte(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    if (!leser) {
        return {};
    }
    const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
    return leseAus(quelle, leser->groesse(), [](const GpxSammler& sammler) {
        const auto& punkte = sammler.punkte().punkte;
        std::vector<Koordinate> orte;
        orte.reserve(punkte.size());
        std::transform(punkte.begin(), punkte.end(), std::back_inserter(orte),
                       [](const GpxPunkt& punkt) { return punkt.ort; });
        return orte;
    });
}

std::optional<std::vector<GpxBefund>> GpxLeser::befunde(const std::string& pfad) {
    auto leser = dateien::Leser::oeffne(pfad);
    if (!leser) {
        return std::nullopt;
    }
    const auto quelle = [&](std::span<char> puffer) { return leser->lies(puffer); };
    GpxStrichliste maengel;
    leseAus(
        quelle, leser->groesse(), [](const GpxSammler& /*sammler*/) {}, &maengel);
    return maengel.ergebnis();
}

std::optional<Zeitpunkt> GpxLeser::datumAus(std::string_view text) {
    return GpxSammler::datumAus(text);
}

}  // namespace spurkiste
