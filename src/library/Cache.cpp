#include "library/Cache.h"

#include <cmath>
#include <cstddef>
#include <memory>
#include <new>
#include <utility>

#include "base/AtomareDatei.h"
#include "base/Dateien.h"
#include "library/CacheSchreiber.h"
#include "library/JsonStuecke.h"
#include "track/GpxMetadatenJson.h"

namespace spurkiste {

namespace {

static_assert(CacheEigenform::kAnfang.find(static_cast<char>('0' + Cache::kVersion)) != std::string_view::npos);

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

Cache Cache::liesAus(const std::string& ordner, const CacheEigenform::Helfer& helfer) try {
    auto datei = dateien::Leser::oeffne(dateiIn(ordner), dateien::Verweise::lehneAb);
    if (!datei) {
        return {};
    }
    if (auto abdruck = liesGerade(*datei, helfer)) {
        return aus(std::make_shared<const CacheAbdruck>(std::move(*abdruck)));
    }
    auto cache = CacheLeser([&datei](std::span<char> puffer) { return datei->lies(puffer); }).lies();
    return cache && cache->version == kVersion ? std::move(*cache) : Cache{};
} catch (const std::bad_alloc&) {
    return {};
}

Cache Cache::aus(std::shared_ptr<const CacheAbdruck> abdruck) {
    Cache cache;
    cache.eintraege.reserve(abdruck->stellen.size());
    for (const auto& stelle : abdruck->stellen) {
        cache.eintraege.insert_or_assign(stelle.eintrag->pfad, stelle.eintrag);
    }
    cache.abdruck = std::move(abdruck);
    return cache;
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
    return CacheSchreiber::schreibe(dateiIn(ordner), eintraege, nullptr).ausgang !=
           CacheSchreiber::Ausgang::gescheitert;
}

}  // namespace spurkiste
