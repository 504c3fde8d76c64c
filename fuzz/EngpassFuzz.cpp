// Any bytes as a GPX file on a disk that fails: reading it, giving it a sport, and writing its record into a cache
// while calls of the system fail or move fewer bytes than asked. What says that it succeeded has succeeded, what failed
// left the old bytes, nothing else is left, and afterwards all is as if nothing had been.
//
// The first byte says how many calls are disturbed; each takes three more: which, the how manieth, and how.

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "Verlange.h"
#include "base/Dateien.h"
#include "hilfe/TempOrdner.h"
#include "library/Cache.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace {

using spurkiste::Cache;
using spurkiste::Eintrag;
using spurkiste::GpxLeser;
using spurkiste::GpxSportart;
using spurkiste::verlange;

enum Aufruf : std::size_t { lesen, lesenAb, schreiben, zustand, sichern, umbenennen, verlinken, kAufrufe };

struct Stoerung {
    std::size_t aufruf;
    unsigned nummer;  ///< counted from 0
    int fehler;       ///< 0: half of the bytes, where bytes are moved
};

constexpr std::array kFehler{0, EIO, ENOSPC, EINTR, EACCES, ENOMEM, EMFILE, ESTALE};

std::vector<Stoerung> stoerungen;
std::array<unsigned, kAufrufe> gezaehlt{};
bool scharf = false;

/// What is to become of this call: nothing (-1), half of it (0), or an error.
int naechste(Aufruf aufruf) {
    if (!scharf) {
        return -1;
    }
    const unsigned nummer = gezaehlt.at(aufruf)++;
    for (const Stoerung& stoerung : stoerungen) {
        if (stoerung.aufruf == aufruf && stoerung.nummer == nummer) {
            return stoerung.fehler;
        }
    }
    return -1;
}

template <typename... Werte>
long rufe(Aufruf aufruf, long nummer, Werte... werte) {
    const int fehler = naechste(aufruf);
    if (fehler > 0) {
        errno = fehler;
        return -1;
    }
    return ::syscall(nummer, werte...);
}

/// The same of a call that moves bytes.
template <typename Zeiger, typename... Werte>
ssize_t bewege(Aufruf aufruf, long nummer, int datei, Zeiger puffer, std::size_t anzahl, Werte... werte) {
    const int fehler = naechste(aufruf);
    if (fehler > 0) {
        errno = fehler;
        return -1;
    }
    return ::syscall(nummer, datei, puffer, fehler == 0 ? (anzahl + 1) / 2 : anzahl, werte...);
}

}  // namespace

// These stand in the place of the system library's. NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)
extern "C" ssize_t read(int datei, void* puffer, size_t anzahl) {
    return bewege(lesen, SYS_read, datei, puffer, anzahl);
}
extern "C" ssize_t pread(int datei, void* puffer, size_t anzahl, off_t ab) {
    return bewege(lesenAb, SYS_pread64, datei, puffer, anzahl, ab);
}
extern "C" ssize_t write(int datei, const void* puffer, size_t anzahl) {
    return bewege(schreiben, SYS_write, datei, puffer, anzahl);
}
extern "C" int fstat(int datei, struct stat* was) noexcept {
    return static_cast<int>(rufe(zustand, SYS_fstat, datei, was));
}
extern "C" int fsync(int datei) {
    return naechste(sichern) > 0 ? (errno = EIO, -1) : (void(datei), 0);  // the disk of a fuzzer may be lost
}
extern "C" int rename(const char* alt, const char* neu) noexcept {
    return static_cast<int>(rufe(umbenennen, SYS_rename, alt, neu));
}
extern "C" int linkat(int von, const char* alt, int nach, const char* neu, int wie) noexcept {
    return static_cast<int>(rufe(verlinken, SYS_linkat, von, alt, nach, neu, wie));
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

namespace {

/// Everything within is done on a disk that fails.
class Scharf {
  public:
    Scharf() {
        gezaehlt = {};
        scharf = true;
    }
    Scharf(const Scharf&) = delete;
    Scharf& operator=(const Scharf&) = delete;
    ~Scharf() { scharf = false; }
};

void pruefeLesen(const std::string& pfad) {
    std::error_code fehler;
    const auto ganz = GpxLeser::lese(pfad, fehler);
    verlange(ganz.has_value() && !fehler);
    std::optional<spurkiste::GpxMetadaten> gelesen;
    {
        const Scharf hier;
        gelesen = GpxLeser::lese(pfad, fehler);
    }
    verlange(fehler || gelesen == ganz);
    verlange(GpxLeser::lese(pfad, fehler) == ganz && !fehler);
}

/// The bytes with the sport set, by a disk that does not fail; the old ones where it cannot be set.
std::string mitSport(const spurkiste::TempOrdner& ordner, std::string_view inhalt) {
    const std::string pfad = ordner.schreibe("vorbild.gpx", inhalt);
    try {
        (void)spurkiste::GpxSchreiber::setzeSportart(GpxSportart::rad, pfad);
    } catch (const std::exception&) {
        return std::string(inhalt);
    }
    return *spurkiste::dateien::liesGanz(pfad);
}

void pruefeSport(const spurkiste::TempOrdner& ordner, const std::string& pfad, std::string_view inhalt) {
    const std::string erwartet = mitSport(ordner, inhalt);
    bool gelungen = false;
    try {
        const Scharf hier;
        (void)spurkiste::GpxSchreiber::setzeSportart(GpxSportart::rad, pfad);
        gelungen = true;
    } catch (const std::exception&) {
        gelungen = false;
    }
    const auto da = *spurkiste::dateien::liesGanz(pfad);
    verlange(da == erwartet || (!gelungen && da == inhalt));
}

void pruefeCache(const spurkiste::TempOrdner& ordner, const std::string& pfad) {
    std::error_code fehler;
    const std::vector<Eintrag> vorher{std::make_shared<const spurkiste::GpxMetadaten>()};
    const std::vector<Eintrag> neu{std::make_shared<const spurkiste::GpxMetadaten>(*GpxLeser::lese(pfad, fehler))};
    verlange(Cache::schreibeNach(ordner.pfad(), vorher));
    bool gelungen = false;
    {
        const Scharf hier;
        gelungen = Cache::schreibeNach(ordner.pfad(), neu);
    }
    const auto gelesen = Cache::liesAus(ordner.pfad());
    const auto& erwartet = gelungen ? neu.front() : vorher.front();
    verlange(gelesen.eintraege.size() == 1 && *gelesen.eintraege.begin()->second == *erwartet);
}

}  // namespace

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    constexpr std::size_t jeStoerung = 3;
    const std::size_t anzahl = groesse == 0 ? 0 : daten[0] % 5U;
    if (groesse < 1 + anzahl * jeStoerung) {
        return 0;
    }
    stoerungen.clear();
    for (const auto* plan = daten + 1; stoerungen.size() < anzahl; plan += jeStoerung) {
        stoerungen.push_back({plan[0] % kAufrufe, plan[1] % 8U, kFehler.at(plan[2] % kFehler.size())});
    }
    const std::string inhalt(daten + 1 + anzahl * jeStoerung, daten + groesse);
    static const spurkiste::TempOrdner ordner;
    const std::string pfad = ordner.schreibe("spur.gpx", inhalt);
    pruefeLesen(pfad);
    pruefeSport(ordner, pfad, inhalt);
    pruefeCache(ordner, pfad);
    verlange(spurkiste::dateien::liste(ordner.pfad()).size() == 3);  // both tracks and the cache
    return 0;
}
