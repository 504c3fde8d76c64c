#include "base/Dateien.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <random>
#include <system_error>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace spurkiste::dateien {

namespace {

std::system_error systemfehler(int nummer) {
    return {nummer, std::generic_category()};
}

std::size_t punktVorEndung(std::string_view name) {
    const auto punkt = name.rfind('.');
    return punkt == 0 || punkt == std::string_view::npos ? name.size() : punkt;
}

/// The path that symbolic links lead to, or the path itself where nothing is yet.
std::string hinterVerweisen(const std::string& pfad) {
    std::error_code fehlt;
    const auto echt = std::filesystem::canonical(pfad, fehlt);
    return fehlt ? pfad : echt.native();
}

constexpr std::string_view kVorsilbe = ".spurkiste-";
constexpr std::string_view kNachsilbe = ".tmp";

/// The folder of a path, with the slash at its end; empty for the current one.
std::string ordnerVon(const std::string& pfad) {
    return pfad.substr(0, pfad.size() - letzterTeil(pfad).size());
}

/// A name that nobody else uses. It is short, since the target's may already be as long as the system allows.
std::string vorlaeufigerName(const std::string& ordner) {
    std::random_device zufall;
    return ordner + std::string(kVorsilbe) + std::to_string(zufall()) + std::to_string(zufall()) +
           std::string(kNachsilbe);
}

int oeffneNummer(const std::string& pfad, int wie) {
    constexpr mode_t rechteEinerNeuenDatei = 0666;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    return ::open(pfad.c_str(), wie | O_CLOEXEC, rechteEinerNeuenDatei);
}

/// The path by which the system knows an open file that has no name.
std::string ueberNummer(int nummer) {
    return "/proc/self/fd/" + std::to_string(nummer);
}

/// Whether the system refused because it knows no files without a name, here or at all.
bool kenntKeineNamenlosen(int fehler) {
    return fehler == EOPNOTSUPP || fehler == EISDIR || fehler == EINVAL || fehler == ENOENT;
}

/// A file in the folder of the target, without a name where the system can do that: then `name` stays empty. It is
/// locked, so that raeumeAuf() knows that somebody still writes it.
int oeffneVorlaeufig(const std::string& ziel, std::string& name) {
    const std::string ordner = ordnerVon(ziel);
#ifdef O_TMPFILE
    const int namenlos = oeffneNummer(ordner.empty() ? "." : ordner, O_WRONLY | O_TMPFILE);
    if (namenlos >= 0 && gibtEs(ueberNummer(namenlos))) {
        ::flock(namenlos, LOCK_EX);
        return namenlos;
    }
    if (namenlos >= 0) {
        ::close(namenlos);  // without /proc it could never get a name
    } else if (!kenntKeineNamenlosen(errno)) {
        throw systemfehler(errno);
    }
#endif
    constexpr int versuche = 100;
    for (int i = 0; i < versuche; ++i) {
        const std::string versuch = vorlaeufigerName(ordner);
        const int nummer = oeffneNummer(versuch, O_WRONLY | O_CREAT | O_EXCL);
        if (nummer < 0 && errno != EEXIST) {
            throw systemfehler(errno);
        }
        if (nummer >= 0) {
            ::flock(nummer, LOCK_EX);
            struct stat zustand {};
            if (::fstat(nummer, &zustand) == 0 && zustand.st_nlink > 0) {
                name = versuch;
                return nummer;
            }
            ::close(nummer);  // somebody cleaned it away in the moment before it was locked
        }
    }
    throw systemfehler(EEXIST);
}

/// Gives the new file the permissions of the one that it replaces; some file systems know none, and that is fine.
void uebernimmRechte(int nummer, const std::string& ziel) {
    constexpr mode_t rechte = 07777;
    struct stat altes {};
    if (::stat(ziel.c_str(), &altes) == 0) {
        ::fchmod(nummer, altes.st_mode & rechte);
    }
}

/// Gives a file without a name a temporary one.
std::string benenne(int nummer, const std::string& ziel) {
    const std::string selbst = ueberNummer(nummer);
    constexpr int versuche = 100;
    for (int i = 0; i < versuche; ++i) {
        std::string name = vorlaeufigerName(ordnerVon(ziel));
        if (::linkat(AT_FDCWD, selbst.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0) {
            return name;
        }
        if (errno != EEXIST) {
            throw systemfehler(errno);
        }
    }
    throw systemfehler(EEXIST);
}

std::optional<Stand> alsStand(int ergebnis, const struct stat& zustand) {
    if (ergebnis != 0) {
        return std::nullopt;
    }
    return Stand{zustand.st_dev, zustand.st_ino, zustand.st_size, zustand.st_mtim.tv_sec, zustand.st_mtim.tv_nsec};
}

}  // namespace

std::optional<Angaben> angaben(const std::string& pfad) {
    struct stat zustand {};
    if (::stat(pfad.c_str(), &zustand) != 0 || !S_ISREG(zustand.st_mode)) {
        return std::nullopt;
    }
    return Angaben{zustand.st_size, Zeitpunkt::ausUnix(zustand.st_mtim.tv_sec, zustand.st_mtim.tv_nsec)};
}

std::optional<Stand> stand(const std::string& pfad) {
    struct stat zustand {};
    const int ergebnis = ::stat(pfad.c_str(), &zustand);
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

std::string_view letzterTeil(std::string_view pfad) {
    const auto strich = pfad.rfind('/');
    return strich == std::string_view::npos ? pfad : pfad.substr(strich + 1);
}

std::string_view endung(std::string_view name) {
    const auto punkt = punktVorEndung(name);
    return punkt == name.size() ? std::string_view() : name.substr(punkt + 1);
}

std::string_view ohneEndung(std::string_view name) {
    return name.substr(0, punktVorEndung(name));
}

std::optional<Leser> Leser::oeffne(const std::string& pfad) {
    struct stat zustand {};
    // Asked before opening, since opening a device may do something, and again afterwards, since the path may by
    // then lead elsewhere. O_NONBLOCK keeps a FIFO that slipped in between from waiting for its writer.
    if (::stat(pfad.c_str(), &zustand) != 0 || !S_ISREG(zustand.st_mode)) {
        return std::nullopt;
    }
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system has no other way to open
    const int nummer = ::open(pfad.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (nummer < 0) {
        return std::nullopt;
    }
    Leser leser(nummer);
    if (::fstat(nummer, &zustand) != 0 || !S_ISREG(zustand.st_mode)) {
        return std::nullopt;
    }
    return leser;
}

Leser::Leser(Leser&& anderer) noexcept : nummer_(std::exchange(anderer.nummer_, -1)) {}

Leser::~Leser() {
    if (nummer_ >= 0) {
        ::close(nummer_);
    }
}

std::size_t Leser::lies(std::span<char> puffer) {
    std::size_t gelesen = 0;
    while (gelesen < puffer.size()) {
        const ssize_t anzahl = ::read(nummer_, puffer.data() + gelesen, puffer.size() - gelesen);
        if (anzahl < 0 && errno == EINTR) {
            continue;
        }
        if (anzahl <= 0) {
            break;
        }
        gelesen += static_cast<std::size_t>(anzahl);
    }
    return gelesen;
}

std::size_t Leser::groesse() const {
    struct stat zustand {};
    return ::fstat(nummer_, &zustand) == 0 ? static_cast<std::size_t>(zustand.st_size) : 0;
}

std::optional<Stand> Leser::stand() const {
    struct stat zustand {};
    const int ergebnis = ::fstat(nummer_, &zustand);
    return alsStand(ergebnis, zustand);
}

std::optional<std::string> liesGanz(const std::string& pfad) {
    auto leser = Leser::oeffne(pfad);
    constexpr std::size_t grenze = std::size_t{1} << 32U;
    const std::size_t groesse = leser ? leser->groesse() : grenze;
    if (groesse >= grenze) {
        return std::nullopt;
    }
    std::string inhalt(groesse, '\0');
    inhalt.resize(leser->lies(inhalt));
    return inhalt;
}

AtomareDatei::AtomareDatei(const std::string& ziel)
    : ziel_(hinterVerweisen(ziel)), nummer_(oeffneVorlaeufig(ziel_, vorlaeufig_)) {
    uebernimmRechte(nummer_, ziel_);
}

AtomareDatei::~AtomareDatei() {
    if (nummer_ >= 0) {
        ::close(nummer_);
    }
    if (!vorlaeufig_.empty()) {
        ::unlink(vorlaeufig_.c_str());
    }
}

void AtomareDatei::schreibe(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t anzahl = ::write(nummer_, bytes.data(), bytes.size());
        if (anzahl < 0) {
            if (errno == EINTR) {
                continue;
            }
            throw systemfehler(errno);
        }
        bytes.remove_prefix(static_cast<std::size_t>(anzahl));
    }
}

void AtomareDatei::sichere() {
    if (::fsync(nummer_) != 0) {
        throw systemfehler(errno);
    }
}

void AtomareDatei::uebernimm() {
    if (vorlaeufig_.empty()) {
        vorlaeufig_ = benenne(nummer_, ziel_);
    }
    if (std::rename(vorlaeufig_.c_str(), ziel_.c_str()) != 0) {
        throw systemfehler(errno);
    }
    vorlaeufig_.clear();
    if (::close(std::exchange(nummer_, -1)) != 0) {
        throw systemfehler(errno);
    }
}

void AtomareDatei::sichereOrdner() const {
    const std::string ordner = ordnerVon(ziel_);
    const int nummer = oeffneNummer(ordner.empty() ? "." : ordner, O_RDONLY | O_DIRECTORY);
    if (nummer >= 0) {
        ::fsync(nummer);
        ::close(nummer);
    }
}

bool istVorlaeufig(std::string_view name) {
    return name.starts_with(kVorsilbe) && name.ends_with(kNachsilbe);
}

void raeumeAuf(const std::string& pfad) {
    constexpr int nurHier = O_NONBLOCK | O_NOFOLLOW;
    int nummer = oeffneNummer(pfad, O_WRONLY | nurHier);
    if (nummer < 0 && errno == EACCES) {
        nummer = oeffneNummer(pfad, O_RDONLY | nurHier);  // it was to replace a read-only file
    }
    if (nummer < 0) {
        return;
    }
    struct stat zustand {};
    if (::fstat(nummer, &zustand) == 0 && S_ISREG(zustand.st_mode) && ::flock(nummer, LOCK_EX | LOCK_NB) == 0) {
        ::unlink(pfad.c_str());
    }
    ::close(nummer);
}

}  // namespace spurkiste::dateien
