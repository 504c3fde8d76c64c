// Two readers, one result. Makes records and from them a cache text of the bytes, damages it in many ways, and lets the
// straight reader and the general one read it: what the straight one takes, the general one must take alike, and what
// nobody damaged, the straight one must take. An input that begins with a brace is such a text itself.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "library/Cache.h"
#include "track/GpxMetadatenJson.h"
#include "track/JsonText.h"

namespace {

using namespace spurkiste;

void verlange(bool bedingung) {
    if (!bedingung) {
        std::abort();
    }
}

/// Helpers that come before the caller, all of them or none.
class Sofort final : public Ausfuehrer {
  public:
    void fuehreAus(Aufgabe aufgabe) override { aufgabe(); }
};

/// Hands out the input piece by piece; zeros when nothing is left.
class Vorrat {
  public:
    explicit Vorrat(std::string_view bytes) : bytes_(bytes) {}

    [[nodiscard]] bool leer() const { return bytes_.empty(); }

    std::uint64_t zahl(std::size_t bytes) {
        std::uint64_t ergebnis = 0;
        for (std::size_t i = 0; i < bytes && !bytes_.empty(); ++i) {
            ergebnis = ergebnis << 8U | static_cast<unsigned char>(bytes_.front());
            bytes_.remove_prefix(1);
        }
        return ergebnis;
    }

    std::string text() {
        const std::size_t gewuenscht = zahl(1) % 24;
        const std::size_t laenge = std::min(gewuenscht, bytes_.size());
        const std::string roh(bytes_.substr(0, laenge));
        bytes_.remove_prefix(laenge);
        std::string ergebnis = JsonText::inUtf8(roh);
        std::replace(ergebnis.begin(), ergebnis.end(), '\0', '0');  // the straight reader leaves those to the other
        return ergebnis;
    }

    double gleitzahl() {
        const std::uint64_t art = zahl(1);
        const auto ganz = static_cast<std::int32_t>(zahl(4));
        switch (art % 6) {
            case 0:
                return std::round(ganz / 12.0) / 1e7;
            case 1: {
                const auto wert = std::bit_cast<double>(zahl(8));
                return std::isfinite(wert) && !(std::fabs(wert) >= 1e18 && std::fabs(wert) < 1e25) ? wert : 0.5;
            }
            case 2:
                return ganz;
            case 3:
                return ganz / 3.0;
            case 4:
                return -0.0;
            default:
                return std::round(ganz * 1e5) / 1e12;
        }
    }

    Koordinate ort() {
        const double breite = gleitzahl();
        return {breite, gleitzahl()};
    }

    template <class Wert>
    std::optional<Wert> vielleicht(Wert wert) {
        return zahl(1) % 2 == 0 ? std::optional(std::move(wert)) : std::nullopt;
    }

  private:
    std::string_view bytes_;
};

Eintrag baueEintrag(Vorrat& vorrat, std::size_t nummer) {
    GpxMetadaten eintrag;
    eintrag.pfad = vorrat.text() + "/" + std::to_string(nummer);
    eintrag.dateiName = vorrat.text();
    eintrag.spurName = vorrat.vielleicht(vorrat.text());
    eintrag.datum = vorrat.vielleicht(Zeitpunkt{vorrat.gleitzahl()});
    eintrag.dateiDatum = Zeitpunkt{vorrat.gleitzahl()};
    eintrag.dateiGroesse = static_cast<std::int64_t>(vorrat.zahl(5));
    eintrag.streckeMeter = vorrat.gleitzahl();
    eintrag.punkte = -static_cast<std::int64_t>(vorrat.zahl(1));
    eintrag.start = vorrat.vielleicht(vorrat.ort());
    eintrag.rundkurs = vorrat.zahl(1) % 2 == 0;
    eintrag.zielOrt = vorrat.vielleicht(vorrat.text());
    Skizze::Bau skizze;
    for (auto linien = vorrat.zahl(1) % 4; linien > 0; --linien) {
        skizze.beginneLinie();
        for (auto punkte = vorrat.zahl(1) % 12; punkte > 0; --punkte) {
            skizze.haengeAn(vorrat.ort());
        }
    }
    eintrag.skizze = std::move(skizze).fertig();
    if (vorrat.zahl(1) % 4 == 0) {
        GpxWetter wetter;
        wetter.windKmh = vorrat.vielleicht(vorrat.gleitzahl());
        wetter.lage = vorrat.vielleicht(vorrat.text());
        wetter.messpunkte = 1;
        eintrag.wetter = wetter;
    }
    return std::make_shared<const GpxMetadaten>(std::move(eintrag));
}

std::string baueText(Vorrat& vorrat) {
    std::string text(CacheEigenform::kAnfang);
    for (std::size_t i = 0; i < 20 && !vorrat.leer(); ++i) {
        const Eintrag eintrag = baueEintrag(vorrat, i);
        text.append(i == 0 ? "" : ",");
        JsonText::haengeAn(text, eintrag->pfad);
        text += ':';
        verlange(GpxMetadatenJson::haengeAn(text, *eintrag) == GpxMetadatenJson::Ergebnis::geschrieben);
    }
    return text.append(CacheEigenform::kEnde);
}

/// Whether the straight reader took the text.
bool vergleiche(const std::string& text, std::size_t abschnitt, unsigned helfer) {
    const CacheEigenform::Text quelle{[&text](std::uint64_t stelle, std::span<char> puffer) {
                                          return text.copy(puffer.data(), puffer.size(), stelle);
                                      },
                                      text.size()};
    Sofort sofort;
    const auto gerade = CacheEigenform::lies(quelle, {&sofort, helfer, {}}, abschnitt);
    if (!gerade) {
        return false;
    }
    const auto allgemein = Cache::ausJson(text);
    verlange(allgemein && allgemein->version == Cache::kVersion);
    std::unordered_map<std::string, Eintrag> letzte;
    std::uint64_t bis = CacheEigenform::kAnfang.size() - 1;
    for (const auto& stelle : *gerade) {
        verlange(stelle.ab == bis + 1);
        bis = stelle.ab + stelle.laenge;
        letzte.insert_or_assign(stelle.eintrag->pfad, stelle.eintrag);
    }
    verlange(letzte.size() == allgemein->eintraege.size());
    for (const auto& [pfad, eintrag] : allgemein->eintraege) {
        const auto fund = letzte.find(pfad);
        verlange(fund != letzte.end() && *fund->second == *eintrag);
    }
    const auto bekannt = CacheEigenform::lies(
        quelle, {nullptr, 0, [&letzte](const std::string& pfad) { return letzte.at(pfad); }}, abschnitt);
    verlange(bekannt && std::ranges::all_of(*bekannt, [&letzte](const auto& stelle) {
                 const Eintrag& eintrag = letzte.at(stelle.eintrag->pfad);
                 return stelle.eintrag == eintrag || *stelle.eintrag != *eintrag;
             }));
    return true;
}

/// What a damaged file may have in place of what belongs there.
constexpr std::string_view kFremdes[] = {"0",
                                         "-",
                                         ".",
                                         "e",
                                         "E5",
                                         "1e999",
                                         "\"",
                                         "\\",
                                         "\\u0041",
                                         "\\n",
                                         "null",
                                         " ",
                                         ",",
                                         "{",
                                         "}",
                                         "[",
                                         "]",
                                         ":",
                                         "-0",
                                         "0.0",
                                         "1.50",
                                         "007",
                                         "\xff",
                                         "é",
                                         "\x1f",
                                         "\\/",
                                         "true",
                                         "false",
                                         "\"pfad\":\"",
                                         "},\"",
                                         "[],",
                                         "{}",
                                         "123456789",
                                         "99999999999999999999",
                                         "\":{\"pfad\":\"",
                                         "\\\""};

std::string beschaedige(std::string text, std::mt19937& zufall) {
    const auto unter = [&zufall](std::size_t grenze) { return grenze == 0 ? 0 : zufall() % grenze; };
    for (auto anzahl = 1 + unter(2); anzahl > 0; --anzahl) {
        const std::size_t stelle = unter(text.size());
        const std::size_t laenge = unter(2) == 0 ? 1 : unter(40);
        const std::string_view fremdes = kFremdes[unter(std::size(kFremdes))];
        switch (unter(7)) {
            case 0:
                text.erase(stelle, laenge);
                break;
            case 1:
                text.insert(stelle, fremdes);
                break;
            case 2:
                text.replace(stelle, std::min(laenge, fremdes.size()), fremdes);
                break;
            case 3:
                text.insert(unter(text.size()), text.substr(stelle, unter(400)));
                break;
            case 4:
                text.resize(unter(2) == 0 ? text.size() - unter(std::min<std::size_t>(text.size(), 8))
                                          : std::min(text.size(), text.find("},\"", stelle) + 2));  // behind a record
                break;
            case 5:
                text[stelle] = static_cast<char>(text[stelle] ^ (1 << unter(8)));
                break;
            default:
                text[stelle] = static_cast<char>('0' + unter(10));
        }
        if (text.empty()) {
            break;
        }
    }
    return text;
}

}  // namespace

// The name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* daten, std::size_t groesse) {
    const std::string_view eingabe(reinterpret_cast<const char*>(daten), groesse);
    constexpr std::size_t ganz = std::size_t{1} << 20;
    if (eingabe.starts_with('{')) {
        const std::string text(eingabe);
        verlange(vergleiche(text, ganz, 0) == vergleiche(text, 64, 1));
        return 0;
    }
    Vorrat vorrat(eingabe);
    const std::string text = baueText(vorrat);
    verlange(vergleiche(text, ganz, 0));
    verlange(vergleiche(text, 32 + groesse % 1000, groesse % 2));
    std::mt19937 zufall(static_cast<unsigned>(std::hash<std::string_view>()(eingabe)));
    for (int i = 0; i < 40; ++i) {
        const std::string schaden = beschaedige(text, zufall);
        verlange(vergleiche(schaden, ganz, 0) == vergleiche(schaden, 32 + zufall() % 600, zufall() % 2));
    }
    return 0;
}
