#include "library/Cache.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <system_error>
#include <unordered_set>
#include <utility>
#include <vector>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "library/JsonStuecke.h"
#include "track/GpxMetadatenJson.h"
#include "track/JsonText.h"

namespace spurkiste {

namespace {

std::string dateiIn(const std::string& ordner) {
    return dateien::kindPfad(ordner, Cache::kDateiname);
}

/// Reads a cache from its text, record by record, so that the memory it takes is that of the records alone.
class CacheLeser {
  public:
    explicit CacheLeser(JsonStuecke::Quelle quelle) : stuecke_(std::move(quelle), GpxMetadatenJson::Leser::kPolster) {}

    std::optional<Cache> lies() {
        const bool lesbar = liesObjekt([this](const std::string& name) { return liesMitglied(name); });
        return lesbar && stuecke_.amEnde() && hatVersion_ && hatEintraege_ ? std::optional(std::move(cache_))
                                                                           : std::nullopt;
    }

  private:
    /// Reads an object; `liesWert` gets the name of each member and has to read its value.
    template <class LiesWert>
    bool liesObjekt(const LiesWert& liesWert) {
        if (!stuecke_.nimm('{')) {
            return false;
        }
        if (stuecke_.nimm('}')) {
            return true;
        }
        do {
            const auto stueck = stuecke_.wert();
            const auto name = stueck ? leser_.text(*stueck) : std::nullopt;
            if (!name || !stuecke_.nimm(':') || !liesWert(*name)) {
                return false;
            }
        } while (stuecke_.nimm(','));
        return stuecke_.nimm('}');
    }

    bool liesMitglied(const std::string& name) {
        if (name == "eintraege") {
            hatEintraege_ = true;
            cache_.eintraege.clear();
            return liesObjekt([this](const std::string& pfad) { return liesEintrag(pfad); });
        }
        const auto stueck = stuecke_.wert();
        if (!stueck) {
            return false;
        }
        if (name != "version") {
            return leser_.istGueltig(*stueck);
        }
        const auto version = leser_.ganzzahl(*stueck);
        hatVersion_ = version.has_value();
        cache_.version = version.value_or(0);
        return hatVersion_;
    }

    bool liesEintrag(const std::string& pfad) {
        const auto stueck = stuecke_.wert();
        Eintrag eintrag = stueck ? leser_.eintrag(*stueck) : nullptr;
        const bool lesbar = eintrag != nullptr;
        cache_.eintraege.insert_or_assign(pfad, std::move(eintrag));
        return lesbar;
    }

    JsonStuecke stuecke_;
    GpxMetadatenJson::Leser leser_;
    Cache cache_;
    bool hatVersion_ = false;
    bool hatEintraege_ = false;
};

/// What the file holds when it is as this program writes it, and nobody writes into it meanwhile.
std::optional<CacheAbdruck> liesGerade(const dateien::Leser& datei, const CacheEigenform::Helfer& helfer) {
    const auto stand = datei.stand();
    if (!stand || stand->groesse <= 0) {
        return std::nullopt;
    }
    const CacheEigenform::Text text{
        [&datei](std::uint64_t stelle, std::span<char> puffer) { return datei.liesAb(stelle, puffer); },
        static_cast<std::uint64_t>(stand->groesse)};
    auto stellen = CacheEigenform::lies(text, helfer);
    return stellen && datei.stand() == stand ? std::optional(CacheAbdruck{*stand, std::move(*stellen)}) : std::nullopt;
}

/// The records in list order, of those with the same path only the last.
std::vector<const GpxMetadaten*> ohneDoppelte(std::span<const Eintrag> eintraege) {
    std::unordered_set<std::string_view> gesehen(eintraege.size());
    std::vector<const GpxMetadaten*> ergebnis;
    ergebnis.reserve(eintraege.size());
    for (std::size_t i = eintraege.size(); i-- > 0;) {
        if (gesehen.insert(eintraege[i]->pfad).second) {
            ergebnis.push_back(eintraege[i].get());
        }
    }
    std::reverse(ergebnis.begin(), ergebnis.end());
    return ergebnis;
}

}  // namespace

Eintrag Cache::passend(const std::string& pfad) const {
    const auto stelle = eintraege.find(pfad);
    if (stelle == eintraege.end() || stelle->second->pfad != pfad) {
        return nullptr;
    }
    const auto angaben = dateien::angaben(pfad);
    const GpxMetadaten& eintrag = *stelle->second;
    const bool unveraendert = angaben && angaben->groesse == eintrag.dateiGroesse &&
                              std::fabs(angaben->geaendert.sekunden - eintrag.dateiDatum.sekunden) < 1.0;
    return unveraendert ? stelle->second : nullptr;
}

Cache Cache::liesAus(const std::string& ordner, const CacheEigenform::Helfer& helfer) {
    auto datei = dateien::Leser::oeffne(dateiIn(ordner));
    if (!datei) {
        return {};
    }
    if (auto abdruck = liesGerade(*datei, helfer)) {
        Cache cache;
        cache.eintraege.reserve(abdruck->stellen.size());
        for (const auto& stelle : abdruck->stellen) {
            cache.eintraege.insert_or_assign(stelle.eintrag->pfad, stelle.eintrag);
        }
        cache.abdruck = std::make_shared<const CacheAbdruck>(std::move(*abdruck));
        return cache;
    }
    auto cache = CacheLeser([&datei](std::span<char> puffer) { return datei->lies(puffer); }).lies();
    return cache && cache->version == kVersion ? std::move(*cache) : Cache{};
}

std::optional<Cache> Cache::ausJson(std::string_view json) {
    return CacheLeser([&json](std::span<char> puffer) {
               const std::size_t anzahl = json.copy(puffer.data(), puffer.size());
               json.remove_prefix(anzahl);
               return anzahl;
           })
        .lies();
}

bool Cache::schreibeNach(const std::string& ordner, std::span<const Eintrag> eintraege) {
    // Small enough to stay in the processor's own cache: fresh memory costs more than the system calls it saves.
    constexpr std::size_t portion = std::size_t{64} * 1024;
    try {
        dateien::AtomareDatei datei(dateiIn(ordner));
        std::string puffer = "{\"version\":" + std::to_string(kVersion) + ",\"eintraege\":{";
        bool erster = true;
        for (const GpxMetadaten* eintrag : ohneDoppelte(eintraege)) {
            const std::size_t vorher = puffer.size();
            puffer.append(erster ? "" : ",");
            JsonText::haengeAn(puffer, eintrag->pfad);
            puffer += ':';
            const auto ergebnis = GpxMetadatenJson::haengeAn(puffer, *eintrag);
            if (ergebnis == GpxMetadatenJson::Ergebnis::nichtEndlich) {
                return false;
            }
            // A record that could not be read back is left out: its file is read again each time, which is better
            // than one odd file that keeps all others from being cached.
            if (ergebnis == GpxMetadatenJson::Ergebnis::keinUtf8 || puffer.size() - vorher > JsonStuecke::kHoechstens) {
                puffer.resize(vorher);
                continue;
            }
            erster = false;
            if (puffer.size() >= portion) {
                datei.schreibe(puffer);
                puffer.clear();
            }
        }
        datei.schreibe(puffer.append("}}"));
        datei.uebernimm();
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

}  // namespace spurkiste
