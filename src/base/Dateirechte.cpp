#include "base/Dateirechte.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include "base/Dateien.h"
#include "base/Dateinummer.h"

namespace spurkiste::dateien {

namespace {

constexpr mode_t kEigentuemer = 0600;
constexpr const char* kZugriffsliste = "system.posix_acl_access";

/// Fills a text by a system call that is asked for the size first; nothing, with errno, when it fails.
template <typename Aufruf>
std::optional<std::string> frage(Aufruf rufe) {
    std::string antwort;
    for (;;) {
        const ssize_t groesse = rufe(nullptr, std::size_t{0});
        if (groesse <= 0) {
            return groesse == 0 ? std::optional(std::string()) : std::nullopt;
        }
        antwort.resize(static_cast<std::size_t>(groesse));
        const ssize_t gekommen = rufe(antwort.data(), antwort.size());
        if (gekommen >= 0) {
            antwort.resize(static_cast<std::size_t>(gekommen));
            return antwort;
        }
        if (errno != ERANGE) {  // it has grown in between
            return std::nullopt;
        }
    }
}

std::optional<std::string> merkmal(int nummer, const char* name) {
    return frage([&](char* platz, std::size_t groesse) { return ::fgetxattr(nummer, name, platz, groesse); });
}

bool gibtEsNicht(int fehler) {
    return fehler == ENODATA || fehler == ENOTSUP;
}

/// What the last answer but an answer means: no list, rather than one that cannot be read.
std::optional<std::string> zugriffsliste(int nummer) {
    auto liste = merkmal(nummer, kZugriffsliste);
    return !liste && gibtEsNicht(errno) ? std::optional(std::string()) : liste;
}

/// Takes from everybody in a list what the file may not have at all, the right to execute. The form is the kernel's
/// (linux/posix_acl_xattr.h): a version of four bytes, then entries of kind, rights and number, little-endian.
std::string beschraenkt(std::string liste, mode_t hoechstens) {
    constexpr std::size_t kopf = 4;
    constexpr std::size_t eintrag = 8;
    constexpr std::size_t stelleDerRechte = 2;
    for (std::size_t i = kopf + stelleDerRechte; i < liste.size(); i += eintrag) {
        liste[i] = static_cast<char>(static_cast<unsigned char>(liste[i]) & (hoechstens >> 6U));
    }
    return liste;
}

/// Takes away a list that the folder has given to a new file.
bool entferneListe(int nummer) {
    return ::fremovexattr(nummer, kZugriffsliste) == 0 || gibtEsNicht(errno);
}

/// The owner's rights, and of the others' those that both the group and all the rest have: right for whoever is in a
/// group that is not the same, or in a list that is lost.
mode_t ohneGruppe(mode_t rechte) {
    constexpr mode_t drei = 07;
    const mode_t alle = rechte & (rechte >> 3U) & drei;
    return (rechte & 0700U) | (alle << 3U) | alle;
}

Dateinummer oeffneOrdner(const std::string& ordner) {
    return {ordner, O_RDONLY | O_DIRECTORY};
}

/// Whether others than its owner may write to the folder: they keep what is in it together then.
bool istGeteilt(const Dateinummer& ordner) {
    constexpr mode_t andereSchreiben = 0022;
    struct stat zustand {};
    return ::fstat(ordner.wert(), &zustand) == 0 && (zustand.st_mode & andereSchreiben) != 0;
}

mode_t maske() {
    constexpr mode_t eng = 077;
    std::array<char, 1024> puffer{};
    auto status = Leser::oeffne("/proc/self/status");  // the system has no other way to ask without changing it
    const std::string_view text(puffer.data(), status ? status->lies(puffer) : 0);
    constexpr std::string_view wort = "\nUmask:\t";
    const auto stelle = text.find(wort);
    mode_t wert = eng;
    if (stelle != std::string_view::npos) {
        constexpr int achter = 8;
        std::from_chars(text.data() + stelle + wort.size(), text.data() + text.size(), wert, achter);
    }
    return wert;
}

}  // namespace

bool uebernimmEigentuemer(int von, int nach) {
    struct stat altes {};
    struct stat neues {};
    if (::fstat(von, &altes) != 0) {
        return false;
    }
    constexpr auto derselbe = static_cast<uid_t>(-1);
    if (::fchown(nach, altes.st_uid, altes.st_gid) != 0 && ::fchown(nach, derselbe, altes.st_gid) != 0) {
        return ::fstat(nach, &neues) == 0 && neues.st_gid == altes.st_gid;
    }
    return true;
}

std::error_code uebernimmRechte(int von, int nach, mode_t hoechstens) {
    const auto warum = [](int fehler) { return std::error_code(fehler, std::system_category()); };
    struct stat altes {};
    struct stat neues {};
    if (::fstat(von, &altes) != 0) {
        return warum(errno);
    }
    bool ganz = uebernimmEigentuemer(von, nach);
    const auto liste = zugriffsliste(von);
    ganz = ganz && liste;
    if (ganz && !liste->empty()) {
        const std::string neue = beschraenkt(*liste, hoechstens);
        ganz = ::fsetxattr(nach, kZugriffsliste, neue.data(), neue.size(), 0) == 0;
    }
    const mode_t rechte = altes.st_mode & hoechstens & 0777U;
    const bool gesetzt =
        ((ganz && !liste->empty()) || entferneListe(nach)) && ::fchmod(nach, ganz ? rechte : ohneGruppe(rechte)) == 0;
    const int fehler = gesetzt ? EPERM : errno;
    if (::fstat(nach, &neues) != 0) {
        return warum(errno);
    }
    return (neues.st_mode & 07777U & ~rechte) == 0 ? std::error_code() : warum(fehler);
}

void uebernimmMerkmale(int von, int nach) {
    const auto namen = frage([&](char* platz, std::size_t groesse) { return ::flistxattr(von, platz, groesse); });
    std::string_view rest = namen ? std::string_view(*namen) : std::string_view();
    while (!rest.empty()) {
        const std::string name(rest.substr(0, rest.find('\0')));
        if (const auto wert = name.starts_with("user.") ? merkmal(von, name.c_str()) : std::nullopt) {
            ::fsetxattr(nach, name.c_str(), wert->data(), wert->size(), 0);
        }
        rest.remove_prefix(std::min(rest.size(), name.size() + 1));
    }
}

mode_t rechteEinerKopie(int von) {
    struct stat altes {};
    if (::fstat(von, &altes) != 0) {
        return kEigentuemer;
    }
    const auto liste = zugriffsliste(von);
    const mode_t rechte = liste && liste->empty() ? altes.st_mode : ohneGruppe(altes.st_mode);
    return (rechte & kLesenUndSchreiben & ~maske()) | kEigentuemer;
}

void gibRechteDesOrdners(const std::string& ordner, int nach) {
    const auto nummer = oeffneOrdner(ordner);
    if (istGeteilt(nummer)) {
        (void)uebernimmRechte(nummer.wert(), nach, kLesenUndSchreiben);
    } else {
        uebernimmEigentuemer(nummer.wert(), nach);
    }
}

void verschliesseWieOrdner(const std::string& ordner, int nummer) {
    constexpr mode_t andere = 0077;
    struct stat zustand {};
    if (::fstat(nummer, &zustand) == 0 && (zustand.st_mode & andere) != 0 && !istGeteilt(oeffneOrdner(ordner))) {
        ::fchmod(nummer, kEigentuemer);
    }
}

}  // namespace spurkiste::dateien
