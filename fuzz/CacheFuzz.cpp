// Any bytes as a cache file. What is accepted must be valid JSON in the eyes of a full parser, and must read back equal
// after it was written.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <simdjson.h>

#include "Verlange.h"
#include "hilfe/TempOrdner.h"
#include "library/Cache.h"
#include "library/CacheSchreiber.h"

namespace {

using spurkiste::Cache;
using spurkiste::CacheSchreiber;
using spurkiste::Eintrag;
using spurkiste::verlange;

/// The text with at most 18 digits of each run of them: the full parser refuses integers beyond 64 bits although they
/// are valid.
std::string mitKurzenZahlen(std::string_view text) {
    std::string ergebnis;
    std::size_t laenge = 0;
    std::copy_if(text.begin(), text.end(), std::back_inserter(ergebnis), [&laenge](char zeichen) {
        laenge = zeichen >= '0' && zeichen <= '9' ? laenge + 1 : 0;
        return laenge <= 18;
    });
    return ergebnis;
}

bool istJson(std::string_view text) {
    simdjson::dom::parser parser;
    return parser.parse(mitKurzenZahlen(text)).error() == simdjson::SUCCESS;
}

}  // namespace

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view text(reinterpret_cast<const char*>(daten), groesse);
    const auto cache = Cache::ausJson(text);
    if (!cache) {
        return 0;
    }
    verlange(istJson(text));

    std::vector<Eintrag> liste;
    std::unordered_map<std::string, Eintrag> erwartet;  // by the record's own path, which the file's key may contradict
    for (const auto& [pfad, eintrag] : cache->eintraege) {
        liste.push_back(eintrag);
        erwartet.insert_or_assign(eintrag->pfad, eintrag);
    }
    static const spurkiste::TempOrdner ordner;
    verlange(Cache::schreibeNach(ordner.pfad(), liste));
    const Cache zurueck = Cache::liesAus(ordner.pfad());
    verlange(zurueck.eintraege.size() == erwartet.size());
    for (const auto& [pfad, eintrag] : erwartet) {
        const auto stelle = zurueck.eintraege.find(pfad);
        verlange(stelle != zurueck.eintraege.end() && *stelle->second == *eintrag);
    }
    // Nothing to write when it is written again, whether or not the writer knows what the file holds.
    const std::string datei = ordner.pfad() + "/" + std::string(Cache::kDateiname);
    verlange(CacheSchreiber::schreibe(datei, liste, nullptr).ausgang == CacheSchreiber::Ausgang::unveraendert);
    if (zurueck.abdruck) {
        std::vector<Eintrag> gelesene;
        for (const auto& stelle : zurueck.abdruck->stellen) {
            gelesene.push_back(stelle.eintrag);
        }
        const auto ergebnis = CacheSchreiber::schreibe(datei, gelesene, zurueck.abdruck.get());
        verlange(ergebnis.ausgang == CacheSchreiber::Ausgang::unveraendert);
    }
    return 0;
}
