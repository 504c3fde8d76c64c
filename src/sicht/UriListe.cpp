#include "sicht/UriListe.h"

#include <optional>

#include "base/Text.h"

namespace spurkiste::uriliste {

namespace {

int alsZiffer(char zeichen) {
    if (zeichen >= '0' && zeichen <= '9') {
        return zeichen - '0';
    }
    const char klein = static_cast<char>(zeichen | 0x20);
    return klein >= 'a' && klein <= 'f' ? klein - 'a' + 10 : -1;
}

/// The bytes behind a percent-encoded text; a percent sign that encodes nothing stands for itself.
std::string entschluessle(std::string_view text) {
    constexpr int basis = 16;
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '%' && i + 2 < text.size() && alsZiffer(text[i + 1]) >= 0 && alsZiffer(text[i + 2]) >= 0) {
            bytes += static_cast<char>(alsZiffer(text[i + 1]) * basis + alsZiffer(text[i + 2]));
            i += 2;
        } else {
            bytes += text[i];
        }
    }
    return bytes;
}

std::optional<std::string> pfad(std::string_view adresse) {
    constexpr std::string_view schema = "file:";
    if (text::klein(adresse.substr(0, schema.size())) != schema) {
        return std::nullopt;
    }
    adresse.remove_prefix(schema.size());
    if (adresse.starts_with("//")) {
        adresse.remove_prefix(2);
        const auto ende = adresse.find('/');
        const std::string rechner = text::klein(adresse.substr(0, ende));
        if (ende == std::string_view::npos || (!rechner.empty() && rechner != "localhost")) {
            return std::nullopt;
        }
        adresse.remove_prefix(ende);
    }
    std::string ergebnis = entschluessle(adresse);
    if (!ergebnis.starts_with('/') || ergebnis.find('\0') != std::string::npos) {
        return std::nullopt;
    }
    return ergebnis;
}

}  // namespace

std::vector<std::string> pfade(std::string_view liste) {
    std::vector<std::string> ergebnis;
    while (!liste.empty()) {
        const auto ende = liste.find_first_of(std::string_view("\r\n\0", 3));
        const std::string_view zeile = text::trimme(liste.substr(0, ende));
        liste.remove_prefix(ende == std::string_view::npos ? liste.size() : ende + 1);
        if (auto gefunden = pfad(zeile)) {
            ergebnis.push_back(std::move(*gefunden));
        }
    }
    return ergebnis;
}

}  // namespace spurkiste::uriliste
