// The place file: whatever its bytes are, it loads, and searching it gives a name of it or nothing.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>

#include "Verlange.h"
#include "places/Ortsbuch.h"

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view inhalt(reinterpret_cast<const char*>(daten), groesse);
    const spurkiste::Ortsbuch buch(inhalt);
    const spurkiste::Koordinate punkte[] = {{47.37, 8.54},   {0.0, -0.0},        {90.0, 180.0},
                                            {-90.0, -180.0}, {9999.0, -99999.0}, {-1e300, 1e15}};
    bool gefunden = false;
    for (const spurkiste::Koordinate& punkt : punkte) {
        for (const double meter : {0.0, 15000.0, std::numeric_limits<double>::infinity()}) {
            const auto name = buch.naechster(punkt, meter);
            gefunden = gefunden || name;
            spurkiste::verlange(!name || (!name->empty() && inhalt.find(*name) != std::string_view::npos));
        }
    }
    spurkiste::verlange(!gefunden || buch.anzahl() > 0);
    return 0;
}
