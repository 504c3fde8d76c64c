#include "base/ArbeiterPool.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace spurkiste {

ArbeiterPool::ArbeiterPool(unsigned arbeiter, AmEnde amEnde) : amEnde_(amEnde) {
    const unsigned anzahl = std::max(1U, arbeiter == 0 ? std::thread::hardware_concurrency() : arbeiter);
    faeden_.reserve(anzahl);
    for (unsigned i = 0; i < anzahl; ++i) {
        try {
            faeden_.emplace_back([this] { arbeite(); });
        } catch (const std::system_error&) {
            if (faeden_.empty()) {
                throw;
            }
            break;  // the system gives no more; leaving by the exception would wait for threads that nobody ends
        }
    }
}

ArbeiterPool::~ArbeiterPool() {
    schlange_.schliesse(amEnde_);
    faeden_.clear();  // joins while the queue still lives
}

void ArbeiterPool::arbeite() {
    while (const auto aufgabe = schlange_.nimm()) {
        (*aufgabe)();
    }
}

void ArbeiterPool::fuehreAus(Aufgabe aufgabe) {
    schlange_.stelleEin(std::move(aufgabe));
}

}  // namespace spurkiste
