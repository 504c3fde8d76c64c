// Documents above 8 MiB, which are read in pieces: the input with many megabytes of one kind put into the middle of it.
// Whatever their size, and read from memory or from a file, the record is the same.
//
// The first byte says what is put in, the next two where; the rest is the document.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "Verlange.h"
#include "hilfe/TempOrdner.h"
#include "track/GpxLeser.h"

namespace {

using spurkiste::GpxLeser;
using spurkiste::verlange;

constexpr std::array<std::string_view, 8> kFuellungen{
    " ",
    "\n",
    "<!-- so lang -->",
    "<extensions><wert art='x'>1 &lt; 2</wert></extensions>",
    R"(<trkpt lat="47.1" lon="8.2"><ele>400</ele><time>2024-05-01T17:00:00Z</time></trkpt>)",
    "</trkseg><trkseg><trkpt lat='47' lon='8'/>",
    "Ein langer Text \xc3\xa4\xe2\x82\xac ",
    "<![CDATA[ ]] ]]>",
};

std::string aufgeblasen(std::string_view inhalt, std::string_view fuellung, std::size_t stelle) {
    constexpr std::size_t genug = (std::size_t{8} << 20U) + 12345;  // no piece ends where a filling does
    std::string gross;
    gross.reserve(genug + inhalt.size() + fuellung.size());
    gross += inhalt.substr(0, stelle);
    while (gross.size() < genug) {
        gross += fuellung;
    }
    gross += inhalt.substr(stelle);
    return gross;
}

}  // namespace

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    constexpr std::size_t kopf = 3;
    if (groesse < kopf) {
        return 0;
    }
    const std::string_view inhalt(reinterpret_cast<const char*>(daten) + kopf, groesse - kopf);
    const std::size_t stelle = (daten[1] * std::size_t{256} + daten[2]) % (inhalt.size() + 1);
    const std::string gross = aufgeblasen(inhalt, kFuellungen.at(daten[0] % kFuellungen.size()), stelle);
    const auto eintrag = GpxLeser::ausInhalt(gross);
    verlange(GpxLeser::ausInhalt(gross, 1 + stelle) == eintrag);
    static const spurkiste::TempOrdner ordner;
    auto gelesen = GpxLeser::lese(ordner.schreibe("gross.gpx", gross));
    verlange(gelesen.has_value());
    verlange(gelesen->dateiGroesse == static_cast<std::int64_t>(gross.size()));
    gelesen->pfad.clear();
    gelesen->dateiName.clear();
    gelesen->dateiGroesse = eintrag.dateiGroesse;
    gelesen->dateiDatum = eintrag.dateiDatum;
    verlange(*gelesen == eintrag);
    return 0;
}
