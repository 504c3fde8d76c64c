#include "library/Oeffnung.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Dateinummer.h"
#include "base/Text.h"

namespace spurkiste::oeffnung {

namespace {

namespace fs = std::filesystem;

bool heisstGpx(std::string_view pfad) {
    return text::klein(dateien::endung(dateien::letzterTeil(pfad))) == "gpx";
}

/// Whether both files hold these many bytes, and the same ones.
bool sindGleich(const std::string& eine, const std::string& andere, std::int64_t groesse) {
    std::ifstream a(eine, std::ios::binary);
    std::ifstream b(andere, std::ios::binary);
    std::array<char, std::size_t{64} * 1024> vonA{};
    std::array<char, vonA.size()> vonB{};
    std::int64_t verglichen = 0;
    while (a && b) {
        a.read(vonA.data(), vonA.size());
        b.read(vonB.data(), vonB.size());
        if (a.gcount() != b.gcount() || !std::equal(vonA.begin(), vonA.begin() + a.gcount(), vonB.begin())) {
            return false;
        }
        verglichen += a.gcount();
    }
    return verglichen == groesse;
}

}  // namespace

std::optional<std::string> einwand(const std::string& pfad) {
    std::error_code fehler;
    const fs::file_status zustand = fs::status(pfad, fehler);
    if (zustand.type() == fs::file_type::not_found) {
        return "gibt es nicht";
    }
    if (zustand.type() == fs::file_type::directory) {
        return "ist ein Ordner";
    }
    if (!heisstGpx(pfad)) {
        return "ist keine GPX-Datei";
    }
    try {
        (void)dateien::Dateinummer::regulaere(pfad);
        return std::nullopt;
    } catch (const std::system_error& grund) {
        return grund.code().message();
    }
}

std::string meldung(const std::string& pfad, const std::string& einwand) {
    const std::string_view name = dateien::letzterTeil(pfad);
    return text::einzeilig(name.empty() ? pfad : name) + ": " + einwand;
}

bool liegtIn(const std::string& ordner, const std::string& pfad) {
    std::error_code fehlt;
    return fs::equivalent(dateien::ordnerVon(pfad), ordner, fehlt) && !fehlt;
}

void Bestand::kommt(const std::string& pfad) try {
    const auto angaben = dateien::angaben(pfad);
    if (angaben && heisstGpx(pfad)) {
        namen_[angaben->groesse].emplace(dateien::letzterTeil(pfad));
    }
} catch (const std::bad_alloc&) {
    return;
}

void Bestand::sieheNach() {
    try {
        for (const std::string& name : dateien::liste(ordner_)) {
            if (heisstGpx(name)) {
                kommt(dateien::kindPfad(ordner_, name));
            }
        }
    } catch (const std::system_error&) {
        namen_.clear();
    }
}

std::optional<std::string> Bestand::gleiche(const std::string& pfad) {
    if (!std::exchange(bekannt_, true)) {
        sieheNach();
    }
    const auto gesucht = dateien::angaben(pfad);
    const auto gleichGrosse = gesucht ? namen_.find(gesucht->groesse) : namen_.end();
    if (gleichGrosse == namen_.end()) {
        return std::nullopt;
    }
    for (const std::string& name : gleichGrosse->second) {
        std::string hier = dateien::kindPfad(ordner_, name);
        if (sindGleich(hier, pfad, gesucht->groesse)) {
            return hier;
        }
    }
    return std::nullopt;
}

}  // namespace spurkiste::oeffnung
