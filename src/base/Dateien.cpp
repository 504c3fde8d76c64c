#include "base/Dateien.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace spurkiste::dateien {

namespace {

std::size_t punktVorEndung(std::string_view name) {
    const auto punkt = name.rfind('.');
    return punkt == 0 || punkt == std::string_view::npos ? name.size() : punkt;
}

std::optional<Stand> alsStand(int ergebnis, const struct stat& zustand) {
    if (ergebnis != 0) {
        return std::nullopt;
    }
    return Stand{zustand.st_dev, zustand.st_ino, zustand.st_size, zustand.st_mtim.tv_sec, zustand.st_mtim.tv_nsec};
}

/// Fills the buffer by system calls that each get how much is there already, and returns how much came.
template <typename Aufruf>
std::size_t fuelle(std::span<char> puffer, std::error_code& fehler, Aufruf rufe) {
    std::size_t gelesen = 0;
    while (gelesen < puffer.size()) {
        const ssize_t anzahl = ungestoert([&] { return rufe(gelesen); });
        if (anzahl < 0) {
            fehler = systemfehler(errno).code();
        }
        if (anzahl <= 0) {
            break;
        }
        gelesen += static_cast<std::size_t>(anzahl);
    }
    return gelesen;
}

}  // namespace

std::optional<Angaben> angaben(const std::string& pfad) {
    std::error_code unbekannt;
    return angaben(pfad, unbekannt);
}

std::optional<Angaben> angaben(const std::string& pfad, std::error_code& fehler) {
    fehler.clear();
    struct stat zustand {};
    if (ungestoert([&] { return ::stat(pfad.c_str(), &zustand); }) != 0) {
        fehler = systemfehler(errno).code();
        return std::nullopt;
    }
    if (!S_ISREG(zustand.st_mode)) {
        return std::nullopt;
    }
    return Angaben{zustand.st_size, Zeitpunkt::ausUnix(zustand.st_mtim.tv_sec, zustand.st_mtim.tv_nsec)};
}

std::optional<Stand> stand(const std::string& pfad, Verweise verweise) {
    struct stat zustand {};
    const bool folge = verweise == Verweise::folge;
    const int ergebnis = folge ? ::stat(pfad.c_str(), &zustand) : ::lstat(pfad.c_str(), &zustand);
    return alsStand(ergebnis, zustand);
}

std::optional<Stand> stand(int nummer) {
    struct stat zustand {};
    const int ergebnis = ::fstat(nummer, &zustand);
    return alsStand(ergebnis, zustand);
}

bool gibtEs(const std::string& pfad) {
    struct stat zustand {};
    return ::stat(pfad.c_str(), &zustand) == 0;
}

std::vector<std::string> liste(const std::string& ordner) {
    const std::unique_ptr<DIR, int (*)(DIR*)> strom(::opendir(ordner.c_str()), &::closedir);
    if (!strom) {
        throw systemfehler(errno);
    }
    std::vector<std::string> namen;
    for (;;) {
        errno = 0;
        const dirent* eintrag = ::readdir(strom.get());  // one stream per call: no other thread sees it
        if (eintrag == nullptr) {
            break;
        }
        const std::string_view name = static_cast<const char*>(eintrag->d_name);
        if (name != "." && name != "..") {
            namen.emplace_back(name);
        }
    }
    if (errno != 0) {
        throw systemfehler(errno);
    }
    return namen;
}

void erstelleOrdner(const std::string& ordner) {
    std::error_code fehler;
    std::filesystem::create_directories(ordner, fehler);
    if (fehler) {
        throw std::system_error(fehler);
    }
    if (!std::filesystem::is_directory(ordner, fehler)) {
        throw systemfehler(fehler ? fehler.value() : ENOTDIR);
    }
}

std::string absolut(const std::string& pfad) {
    const std::string roh = std::filesystem::absolute(pfad).native();
    std::string ergebnis;
    std::string_view rest = roh;
    while (!rest.empty()) {
        const auto teil = rest.substr(0, rest.find('/'));
        if (!teil.empty() && teil != ".") {
            ergebnis.append("/").append(teil);
        }
        rest.remove_prefix(std::min(rest.size(), teil.size() + 1));
    }
    return ergebnis.empty() ? "/" : ergebnis;
}

std::string hinterVerweisen(const std::string& pfad) {
    std::error_code fehlt;
    const auto echt = std::filesystem::canonical(pfad, fehlt);
    return fehlt ? pfad : echt.native();
}

std::string_view letzterTeil(std::string_view pfad) {
    const auto strich = pfad.rfind('/');
    return strich == std::string_view::npos ? pfad : pfad.substr(strich + 1);
}

std::string ordnerVon(const std::string& pfad) {
    const auto laenge = pfad.size() - letzterTeil(pfad).size();
    return laenge == 0 ? "./" : pfad.substr(0, laenge);
}

std::string kindPfad(const std::string& ordner, std::string_view name) {
    return std::string(ordner).append(ordner.ends_with('/') ? "" : "/").append(name);
}

std::string_view endung(std::string_view name) {
    const auto punkt = punktVorEndung(name);
    return punkt == name.size() ? std::string_view() : name.substr(punkt + 1);
}

std::string_view ohneEndung(std::string_view name) {
    return name.substr(0, punktVorEndung(name));
}

std::optional<Leser> Leser::oeffne(const std::string& pfad, Verweise verweise) {
    try {
        return Leser(pfad, verweise);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

std::size_t Leser::lies(std::span<char> puffer) {
    std::error_code wieEnde;
    return lies(puffer, wieEnde);
}

std::size_t Leser::lies(std::span<char> puffer, std::error_code& fehler) {
    return fuelle(puffer, fehler, [&](std::size_t gelesen) {
        return ::read(nummer_.wert(), puffer.data() + gelesen, puffer.size() - gelesen);
    });
}

std::size_t Leser::liesAb(std::uint64_t stelle, std::span<char> puffer) const {
    std::error_code wieEnde;
    return liesAb(stelle, puffer, wieEnde);
}

std::size_t Leser::liesAb(std::uint64_t stelle, std::span<char> puffer, std::error_code& fehler) const {
    return fuelle(puffer, fehler, [&](std::size_t gelesen) {
        return ::pread(nummer_.wert(), puffer.data() + gelesen, puffer.size() - gelesen,
                       static_cast<off_t>(stelle + gelesen));
    });
}

std::size_t Leser::groesse() const {
    return static_cast<std::size_t>(nummer_.zustand().st_size);
}

std::uint64_t Leser::namen() const {
    struct stat zustand {};
    return ::fstat(nummer_.wert(), &zustand) == 0 && zustand.st_nlink > 0 ? zustand.st_nlink : 1;
}

std::optional<std::string> liesGanz(const std::string& pfad, std::size_t hoechstens) {
    try {
        Leser leser(pfad);
        const std::size_t groesse = leser.groesse();
        if (groesse > hoechstens) {
            return std::nullopt;
        }
        std::string inhalt(groesse, '\0');
        std::error_code fehler;
        inhalt.resize(leser.lies(inhalt, fehler));
        return fehler ? std::nullopt : std::optional(std::move(inhalt));
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

}  // namespace spurkiste::dateien
