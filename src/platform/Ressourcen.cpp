#include "platform/Ressourcen.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include "base/Dateien.h"

namespace spurkiste::ressourcen {

namespace {

std::string& vorrang() {
    static std::string ordner;
    return ordner;
}

std::vector<std::string> ordnerDerReiheNach() {
    std::vector<std::string> ordner;
    if (!vorrang().empty()) {
        ordner.push_back(vorrang());
    }
    if (const char* umgebung = std::getenv("SPURKISTE_RESSOURCEN"); umgebung != nullptr && *umgebung != '\0') {
        ordner.emplace_back(umgebung);
    }
    std::error_code fehler;
    const auto programm = std::filesystem::read_symlink("/proc/self/exe", fehler);
    if (!fehler) {
        ordner.push_back((programm.parent_path().parent_path() / "share/spurkiste").native());
    }
    ordner.emplace_back(SPURKISTE_INSTALLIERT);
    return ordner;
}

}  // namespace

void setzeOrdner(std::string ordner) {
    vorrang() = std::move(ordner);
}

std::optional<std::string> finde(std::string_view name, std::string_view endung) {
    std::error_code unbekannt;
    return finde(name, endung, unbekannt);
}

std::optional<std::string> finde(std::string_view name, std::string_view endung, std::error_code& fehler) {
    fehler.clear();
    for (std::string pfad : ordnerDerReiheNach()) {
        pfad.append("/").append(name).append(".").append(endung);
        std::error_code warum;
        if (dateien::angaben(pfad, warum)) {
            fehler.clear();
            return pfad;
        }
        if (warum && warum != std::errc::no_such_file_or_directory && warum != std::errc::not_a_directory) {
            fehler = warum;
        }
    }
    return std::nullopt;
}

}  // namespace spurkiste::ressourcen
