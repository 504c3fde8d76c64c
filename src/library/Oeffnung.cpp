#include "library/Oeffnung.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <vector>

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

std::optional<std::string> gleiche(const std::string& ordner, const std::string& pfad) {
    const auto gesucht = dateien::angaben(pfad);
    if (!gesucht) {
        return std::nullopt;
    }
    std::vector<std::string> namen;
    try {
        namen = dateien::liste(ordner);
    } catch (const std::system_error&) {
        return std::nullopt;
    }
    std::erase_if(namen, [](const std::string& name) { return !heisstGpx(name); });
    std::sort(namen.begin(), namen.end());
    for (const std::string& name : namen) {
        std::string hier = dateien::kindPfad(ordner, name);
        const auto angaben = dateien::angaben(hier);
        if (angaben && angaben->groesse == gesucht->groesse && sindGleich(hier, pfad, gesucht->groesse)) {
            return hier;
        }
    }
    return std::nullopt;
}

}  // namespace spurkiste::oeffnung
