#include <charconv>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "erzeuge/Erzeuger.h"

namespace {

using namespace spurkiste::erzeuge;

constexpr std::string_view kHilfe =
    "spurkiste-erzeuge FOLDER [OPTIONS]: writes a made-up library of GPX files into a new or empty folder. The same\n"
    "options give the same bytes on every machine.\n"
    "\n"
    "  --art bibliothek   what people collect: all sports, exporters and oddities, some broken files (default)\n"
    "  --art beispiel     for showing: complete tracks of all sports with weather, 60 files unless told\n"
    "  --art spuren       pretty-printed recordings with heart rates of about 1 MB each, for measuring\n"
    "  --anzahl N         number of files (default 1000)\n"
    "  --punkte N         points per file on average (default 500, beispiel 1500)\n"
    "  --megabyte N       size of all files together, for spuren only (default 300)\n"
    "  --defekt N         broken files in percent, for bibliothek only (default 1)\n"
    "  --saat N           seed (default 1)\n";

/// The arguments, read. Numbers stay absent when they were not given.
struct Aufruf {
    std::string ordner;
    std::string_view art = "bibliothek";
    std::optional<std::uint64_t> anzahl;
    std::optional<std::uint64_t> punkte;
    std::optional<std::uint64_t> megabyte;
    std::optional<std::uint64_t> defekt;
    std::optional<std::uint64_t> saat;
};

std::optional<std::uint64_t> zahl(std::string_view text) {
    std::uint64_t wert = 0;
    const auto [ende, fehler] = std::from_chars(text.data(), text.data() + text.size(), wert);
    if (fehler != std::errc() || ende != text.data() + text.size() || wert > 1'000'000'000) {
        return std::nullopt;
    }
    return wert;
}

std::optional<Aufruf> lies(int anzahl, char** texte) {
    Aufruf aufruf;
    for (int i = 1; i < anzahl; ++i) {
        const std::string_view text = texte[i];
        if (!text.starts_with("--")) {
            if (!aufruf.ordner.empty() || text.empty()) {
                return std::nullopt;
            }
            aufruf.ordner = text;
            continue;
        }
        if (++i == anzahl) {
            return std::nullopt;
        }
        const std::string_view wert = texte[i];
        if (text == "--art") {
            aufruf.art = wert;
            continue;
        }
        auto* ziel = text == "--anzahl"     ? &aufruf.anzahl
                     : text == "--punkte"   ? &aufruf.punkte
                     : text == "--megabyte" ? &aufruf.megabyte
                     : text == "--defekt"   ? &aufruf.defekt
                     : text == "--saat"     ? &aufruf.saat
                                            : nullptr;
        if (ziel == nullptr || !(*ziel = zahl(wert))) {
            return std::nullopt;
        }
    }
    const bool spuren = aufruf.art == "spuren";
    const bool bibliothek = aufruf.art == "bibliothek";
    const bool bekannt = spuren || bibliothek || aufruf.art == "beispiel";
    const bool passt = (spuren ? !aufruf.anzahl && !aufruf.punkte : !aufruf.megabyte) && (bibliothek || !aufruf.defekt);
    if (aufruf.ordner.empty() || !bekannt || !passt || aufruf.defekt.value_or(0) > 100) {
        return std::nullopt;
    }
    return aufruf;
}

Umfang fuehreAus(const Aufruf& aufruf) {
    if (std::filesystem::exists(aufruf.ordner) && !std::filesystem::is_empty(aufruf.ordner)) {
        throw std::system_error(std::make_error_code(std::errc::directory_not_empty), aufruf.ordner);
    }
    std::filesystem::create_directories(aufruf.ordner);
    Wunsch wunsch;
    wunsch.saat = aufruf.saat.value_or(wunsch.saat);
    if (aufruf.art == "spuren") {
        return schreibeSpuren(aufruf.ordner, wunsch.saat, aufruf.megabyte.value_or(300) * 1'000'000);
    }
    wunsch.beispiel = aufruf.art == "beispiel";
    wunsch.anzahl = aufruf.anzahl.value_or(wunsch.beispiel ? 60 : 1000);
    wunsch.punkte = aufruf.punkte.value_or(wunsch.beispiel ? 1500 : 500);
    wunsch.defekt = static_cast<double>(aufruf.defekt.value_or(1)) / 100.0;
    return schreibeBibliothek(aufruf.ordner, wunsch);
}

}  // namespace

int main(int anzahl, char** texte) {
    if (anzahl == 2 && std::string_view(texte[1]) == "--help") {
        std::cout << kHilfe;
        return 0;
    }
    const std::optional<Aufruf> aufruf = lies(anzahl, texte);
    if (!aufruf) {
        std::cerr << kHilfe;
        return 2;
    }
    try {
        const Umfang umfang = fuehreAus(*aufruf);
        std::cout << umfang.dateien << " files, " << umfang.bytes << " bytes\n";
    } catch (const std::system_error& fehler) {
        std::cerr << "spurkiste-erzeuge: " << fehler.what() << '\n';
        return 1;
    }
    return 0;
}
