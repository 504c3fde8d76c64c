#include "track/GpxLeser.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <span>
#include <system_error>
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

/// Out of a source that is no longer wanted.
struct Abbruch {};

/// Whether there was nothing at the path, rather than something that cannot be had.
bool istFort(const std::error_code& fehler) {
    return fehler == std::errc::no_such_file_or_directory || fehler == std::errc::not_a_directory ||
           fehler == std::errc::too_many_symbolic_link_levels;
}

/// Does what reads a file; when that fails, `fehler` says why and nothing has been read.
template <typename Wert, typename Lies>
Wert versuche(std::error_code& fehler, Lies lies) {
    fehler.clear();
    try {
        return lies();
    } catch (const std::system_error& ausnahme) {
        fehler = ausnahme.code();
    } catch (const std::bad_alloc&) {
        fehler = std::make_error_code(std::errc::not_enough_memory);
    }
    return {};
}

/// The bytes of a file. Where reading fails they end, and `fehler` says so.
XmlLauf::Quelle quelleAus(dateien::Leser& leser, std::error_code& fehler) {
    return [&](std::span<char> puffer) { return fehler ? 0 : leser.lies(puffer, fehler); };
}

}  // namespace

std::optional<GpxMetadaten> GpxLeser::lese(const std::string& pfad) {
    std::error_code unbekannt;
    return lese(pfad, unbekannt);
}

std::optional<GpxMetadaten> GpxLeser::lese(const std::string& pfad, std::error_code& fehler,
                                           const Abgebrochen& abgebrochen) {
    const auto angaben = dateien::angaben(pfad, fehler);
    if (!angaben) {
        fehler = istFort(fehler) ? std::error_code() : fehler;
        return std::nullopt;
    }
    std::error_code mitten;
    GpxMetadaten eintrag;
    try {
        eintrag = versuche<GpxMetadaten>(fehler, [&] {
            dateien::Leser leser(pfad);
            const auto quelle = [&, aus = quelleAus(leser, mitten)](std::span<char> puffer) {
                if (abgebrochen && abgebrochen()) {
                    throw Abbruch{};
                }
                return aus(puffer);
            };
            return leseAus(quelle, static_cast<std::size_t>(angaben->groesse), nimmErgebnis);
        });
    } catch (const Abbruch&) {
        fehler = std::make_error_code(std::errc::operation_canceled);
        return std::nullopt;
    }
    if (istFort(fehler)) {
        fehler.clear();
        return std::nullopt;
    }
    fehler = fehler ? fehler : mitten;
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

std::vector<Koordinate> GpxLeser::orte(const std::string& pfad, std::error_code& fehler) {
    return versuche<std::vector<Koordinate>>(fehler, [&] {
        dateien::Leser leser(pfad);
        std::error_code mitten;
        auto gelesen = leseAus(quelleAus(leser, mitten), leser.groesse(), [](const GpxSammler& sammler) {
            const auto& punkte = sammler.punkte().punkte;
            std::vector<Koordinate> orte;
            orte.reserve(punkte.size());
            std::transform(punkte.begin(), punkte.end(), std::back_inserter(orte),
                           [](const GpxPunkt& punkt) { return punkt.ort; });
            return orte;
        });
        if (mitten) {
            throw std::system_error(mitten);
        }
        return gelesen;
    });
}

std::optional<std::vector<GpxBefund>> GpxLeser::befunde(const std::string& pfad, std::error_code& fehler) {
    using Befunde = std::optional<std::vector<GpxBefund>>;
    return versuche<Befunde>(fehler, [&]() -> Befunde {
        dateien::Leser leser(pfad);
        std::error_code mitten;
        GpxStrichliste maengel;
        leseAus(
            quelleAus(leser, mitten), leser.groesse(), [](const GpxSammler& /*sammler*/) {}, &maengel);
        if (mitten) {
            throw std::system_error(mitten);
        }
        return maengel.ergebnis();
    });
}

std::optional<Zeitpunkt> GpxLeser::datumAus(std::string_view text) {
    return GpxSammler::datumAus(text);
}

}  // namespace spurkiste
