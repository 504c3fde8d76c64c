#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "erzeuge/Fahrt.h"
#include "erzeuge/Gpx.h"
#include "track/GpxMetadaten.h"

/// Made-up libraries for tests, benchmarks and demonstrations: believable, of any size, and byte for byte the same for
/// the same wish on every machine.
namespace spurkiste::erzeuge {

/// What a library is to be like.
struct Wunsch {
    std::size_t anzahl = 1000;  ///< files
    std::size_t punkte = 500;   ///< points per file on average; single files have a quarter to seven quarters of it
    std::uint64_t saat = 1;     ///< another seed, another library
    double defekt = 0.01;       ///< share of broken files, 0 to 1
    bool beispiel = false;      ///< for showing: every sport in turn, everything complete, much weather
};

/// How a broken file is broken.
enum class Defekt { keiner, abgeschnitten, leer, fremd };

/// One file of a library, not yet on disk.
struct Datei {
    std::string name;            ///< with extension; no other file of the library has the same bytes as name
    std::string inhalt;          ///< the bytes
    Fahrt fahrt;                 ///< what was to be told; a broken file tells less or nothing
    const Stil* stil = nullptr;  ///< how it is told
    Defekt defekt = Defekt::keiner;
    std::int64_t geaendert = 0;  ///< believable date of the last change, seconds since 1970-01-01 00:00:00 UTC
};

/// Makes the files of one library one after the other. One thread at a time.
class Erzeuger {
  public:
    explicit Erzeuger(const Wunsch& wunsch);

    /// The next file; to be called at most Wunsch::anzahl times.
    [[nodiscard]] Datei naechste();

  private:
    [[nodiscard]] std::string eindeutig(const std::string& name);

    Wunsch wunsch_;
    Mensch mensch_;
    std::size_t nummer_ = 0;
    std::unordered_set<std::string> namen_;
};

/// The bytes of one pretty-printed recording with heart rates, of about `bytes` bytes: half of them to half as many
/// again.
[[nodiscard]] std::string erzeugeSpur(std::uint64_t saat, std::size_t bytes);

/// Records as the reader would make them of such a library, without any file: for measuring what works on records.
/// With sketches of about 300 points each, or without any. Their paths lie in "/bibliothek" and are all different, in
/// no order. The place labels are the names the tracks were made up with.
[[nodiscard]] std::vector<Eintrag> erzeugeEintraege(std::size_t anzahl, std::uint64_t saat, bool mitSkizze = true);

/// What was written to disk.
struct Umfang {
    std::size_t dateien = 0;
    std::uint64_t bytes = 0;
};

/// Writes a whole library into the folder, which must be there. Throws std::system_error when that fails.
Umfang schreibeBibliothek(const std::string& ordner, const Wunsch& wunsch);

/// Writes recordings of erzeugeSpur(), 1 MB each, until together they have at least `gesamt` bytes. Likewise.
Umfang schreibeSpuren(const std::string& ordner, std::uint64_t saat, std::uint64_t gesamt);

}  // namespace spurkiste::erzeuge
