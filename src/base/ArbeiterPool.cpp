#include "base/ArbeiterPool.h"

#include <algorithm>
#include <utility>

namespace spurkiste {

ArbeiterPool::ArbeiterPool(unsigned arbeiter) {
    const unsigned anzahl = std::max(1U, arbeiter == 0 ? std::thread::hardware_concurrency() : arbeiter);
    faeden_.reserve(anzahl);
    for (unsigned i = 0; i < anzahl; ++i) {
        faeden_.emplace_back([this] {
            while (const auto aufgabe = schlange_.nimm()) {
                (*aufgabe)();
            }
        });
    }
}

ArbeiterPool::~ArbeiterPool() {
    schlange_.schliesse();
    faeden_.clear();  // joins while the queue still lives
}

void ArbeiterPool::fuehreAus(Aufgabe aufgabe) {
    schlange_.stelleEin(std::move(aufgabe));
}

}  // namespace spurkiste
