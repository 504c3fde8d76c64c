#include "track/GpxMetadatenJson.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>
#include <tuple>
#include <utility>

#include <simdjson.h>

#include "base/Text.h"
#include "base/Zahl.h"
#include "track/GpxFelder.h"
#include "track/JsonText.h"

namespace spurkiste {

namespace {

namespace dom = simdjson::dom;

static_assert(GpxMetadatenJson::Leser::kPolster >= simdjson::SIMDJSON_PADDING);

/// Takes the values of one record and notes what was wrong with them.
struct Ausgabe {
    std::string& ziel;
    GpxMetadatenJson::Fremdbytes fremdbytes = GpxMetadatenJson::Fremdbytes::lehneAb;
    bool utf8 = true;
    bool endlich = true;

    template <class Typ>
    void schreibeObjekt(const Typ& objekt);

    template <class Wert>
    void schreibeMitglied(std::string_view name, const Wert& wert) {
        const bool erstes = ziel.back() == '{';
        ziel.append(erstes ? "\"" : ",\"").append(name).append("\":");
        schreibe(wert);
    }

    void schreibe(const std::string& wert) {
        const bool passt = text::istUtf8(wert);
        if (passt || fremdbytes == GpxMetadatenJson::Fremdbytes::ersetze) {
            JsonText::haengeAn(ziel, passt ? wert : JsonText::inUtf8(wert));
        } else {
            utf8 = false;
        }
    }

    void schreibe(double wert) {
        zahl::Puffer puffer{};
        ziel.append(zahlText(wert, puffer));
    }

    void schreibe(std::int64_t wert) { ziel.append(std::to_string(wert)); }
    void schreibe(bool wert) { ziel.append(wert ? "true" : "false"); }
    void schreibe(Zeitpunkt wert) { schreibe(wert.sekunden); }

    /// Nearly all of a cache is coordinates, so each is put together on the stack and appended in one piece.
    void schreibe(const Koordinate& wert) {
        constexpr std::string_view vorn = R"({"breite":)";
        constexpr std::string_view mitte = R"(,"laenge":)";
        zahl::Puffer puffer{};
        std::array<char, vorn.size() + mitte.size() + 2 * puffer.size() + 1> platz{};
        char* stelle = kopiere(vorn, platz.data());
        stelle = kopiere(zahlText(wert.breite, puffer), stelle);
        stelle = kopiere(mitte, stelle);
        stelle = kopiere(zahlText(wert.laenge, puffer), stelle);
        *stelle++ = '}';
        ziel.append(platz.data(), stelle);
    }

    void schreibe(const Skizze& wert) {
        ziel += '[';
        for (std::size_t i = 0; i < wert.linien(); ++i) {
            ziel.append(i == 0 ? "[" : ",[");
            for (const Koordinate punkt : wert.linie(i)) {
                if (ziel.back() != '[') {
                    ziel += ',';
                }
                schreibe(punkt);
            }
            ziel += ']';
        }
        ziel += ']';
    }

    void schreibe(const GpxWetter& wert) { schreibeObjekt(wert); }

  private:
    static char* kopiere(std::string_view text, char* nach) { return std::copy(text.begin(), text.end(), nach); }

    std::string_view zahlText(double wert, zahl::Puffer& puffer) {
        if (!std::isfinite(wert)) {
            endlich = false;
            return {};
        }
        if (wert == 0.0 && std::signbit(wert)) {
            return "-0.0";  // the digits alone are an integer and would lose their sign when they are read
        }
        constexpr double grenze = 9223372036854775808.0;  // 2^63, from where on not every reader takes an integer
        return std::fabs(wert) < grenze ? zahl::schreibe(wert, puffer) : mitExponent(wert, puffer);
    }

    static std::string_view mitExponent(double wert, zahl::Puffer& puffer) {
        const char* const ende =
            std::to_chars(puffer.data(), puffer.data() + puffer.size(), wert, std::chars_format::scientific).ptr;
        return {puffer.data(), ende};
    }
};

bool lies(dom::element json, std::string& wert) {
    std::string_view text;
    if (json.get(text) != simdjson::SUCCESS) {
        return false;
    }
    wert.assign(text);
    return true;
}

bool lies(dom::element json, double& wert) {
    return json.get(wert) == simdjson::SUCCESS;  // takes integers too
}

bool lies(dom::element json, std::int64_t& wert) {
    return json.get(wert) == simdjson::SUCCESS;
}

bool lies(dom::element json, bool& wert) {
    return json.get(wert) == simdjson::SUCCESS;
}

bool lies(dom::element json, Zeitpunkt& wert) {
    return lies(json, wert.sekunden);
}

bool lies(dom::element json, Koordinate& wert);
bool lies(dom::element json, GpxWetter& wert);
bool lies(dom::element json, Skizze& wert);

template <class Wert>
bool lies(dom::element json, std::optional<Wert>& wert) {
    if (json.is_null()) {
        wert.reset();
        return true;
    }
    return lies(json, wert.emplace());
}

template <class Wert>
bool lies(dom::element json, Selten<Wert>& wert) {
    std::optional<Wert> gelesen;
    const bool gelungen = lies(json, gelesen);
    wert = std::move(gelesen);
    return gelungen;
}

/// How one field of a type goes to JSON and back.
template <class Typ>
struct Umgang {
    std::string_view name;
    bool pflicht = false;
    bool (*lies)(dom::element, Typ&) = nullptr;
    void (*schreibe)(Ausgabe&, std::string_view name, const Typ&) = nullptr;
};

template <auto zeiger, class Typ, class Wert>
constexpr Umgang<Typ> umgangMit(std::string_view name, Wert Typ::* /*zeiger*/) {
    return {name, !kOptional<Wert>, [](dom::element json, Typ& objekt) { return lies(json, objekt.*zeiger); },
            [](Ausgabe& ausgabe, std::string_view mitglied, const Typ& objekt) {
                const Wert& wert = objekt.*zeiger;
                if constexpr (!kOptional<Wert>) {
                    ausgabe.schreibeMitglied(mitglied, wert);
                } else if (wert) {
                    ausgabe.schreibeMitglied(mitglied, *wert);
                }
            }};
}

/// The members of a type's object, in order.
template <class Typ>
constexpr std::array kMitglieder = std::apply(
    [](auto... feld) { return std::array{umgangMit<feld.kZeiger>(feld.name, feld.kZeiger)...}; }, gpxFelder<Typ>());

template <class Typ>
void Ausgabe::schreibeObjekt(const Typ& objekt) {
    ziel += '{';
    for (const Umgang<Typ>& f : kMitglieder<Typ>) {
        f.schreibe(*this, f.name, objekt);
    }
    ziel += '}';
}

template <class Typ>
bool liesObjekt(dom::element json, Typ& objekt) {
    constexpr auto& felder = kMitglieder<Typ>;
    dom::object mitglieder;
    if (json.get(mitglieder) != simdjson::SUCCESS) {
        return false;
    }
    std::array<bool, felder.size()> da{};
    std::size_t naechstes = 0;  // members mostly come in field order, so the search begins where the last one ended
    for (const auto mitglied : mitglieder) {
        for (std::size_t versuch = 0; versuch < felder.size(); ++versuch) {
            const std::size_t nummer = naechstes;
            naechstes = nummer + 1 == felder.size() ? 0 : nummer + 1;
            if (mitglied.key == felder[nummer].name) {
                if (!felder[nummer].lies(mitglied.value, objekt)) {
                    return false;
                }
                da[nummer] = true;
                break;
            }
        }
    }
    for (std::size_t i = 0; i < felder.size(); ++i) {
        if (felder[i].pflicht && !da[i]) {
            return false;
        }
    }
    return true;
}

bool lies(dom::element json, Koordinate& wert) {
    return liesObjekt(json, wert);
}

bool lies(dom::element json, GpxWetter& wert) {
    return liesObjekt(json, wert);
}

bool lies(dom::element json, Skizze& wert) {
    dom::array linien;
    if (json.get(linien) != simdjson::SUCCESS) {
        return false;
    }
    Skizze::Bau bau;
    for (const dom::element linie : linien) {
        dom::array punkte;
        if (linie.get(punkte) != simdjson::SUCCESS) {
            return false;
        }
        bau.beginneLinie();
        for (const dom::element punkt : punkte) {
            Koordinate ort;
            if (!lies(punkt, ort)) {
                return false;
            }
            bau.haengeAn(ort);
        }
    }
    wert = std::move(bau).fertig();
    return true;
}

bool passtNicht(std::string_view ganzzahl) {
    std::int64_t wert = 0;
    const char* ende = ganzzahl.data() + ganzzahl.size();
    const auto [stelle, fehler] = std::from_chars(ganzzahl.data(), ende, wert);
    return stelle == ende && fehler == std::errc::result_out_of_range;
}

/// The text with integers beyond 64 bits written as "123e0". The parser refuses them, yet they are valid JSON, and
/// earlier caches hold some.
std::string mitExponenten(std::string_view json) {
    constexpr std::string_view zahlzeichen = "+-.0123456789Ee";
    std::string ergebnis;
    std::size_t i = 0;
    while (i < json.size()) {
        const std::size_t ab = i++;
        if (json[ab] == '"') {
            while (i < json.size() && json[i] != '"') {
                i += json[i] == '\\' ? 2 : 1;
            }
            i = std::min(i + 1, json.size());
        } else if (zahlzeichen.find(json[ab]) != std::string_view::npos) {
            i = std::min(json.find_first_not_of(zahlzeichen, i), json.size());
        }
        const std::string_view stueck = json.substr(ab, i - ab);
        ergebnis.append(stueck).append(passtNicht(stueck) ? "e0" : "");
    }
    return ergebnis;
}

}  // namespace

GpxMetadatenJson::Ergebnis GpxMetadatenJson::haengeAn(std::string& ziel, const GpxMetadaten& eintrag,
                                                      Fremdbytes fremdbytes) {
    const std::size_t vorher = ziel.size();
    Ausgabe ausgabe{ziel, fremdbytes};
    ausgabe.schreibeObjekt(eintrag);
    if (ausgabe.utf8 && ausgabe.endlich) {
        return Ergebnis::geschrieben;
    }
    ziel.resize(vorher);
    return ausgabe.utf8 ? Ergebnis::nichtEndlich : Ergebnis::keinUtf8;
}

struct GpxMetadatenJson::Leser::Zerteiler {
    dom::parser parser;
    std::string umgeschrieben;

    std::optional<dom::element> zerteile(std::string_view json) {
        dom::element ergebnis;
        auto fehler = parser.parse(json.data(), json.size(), false).get(ergebnis);
        if (fehler != simdjson::SUCCESS) {  // which error a large integer is depends on the version
            umgeschrieben = mitExponenten(json);
            if (umgeschrieben.size() != json.size()) {
                fehler = parser.parse(umgeschrieben).get(ergebnis);
            }
        }
        return fehler == simdjson::SUCCESS ? std::optional(ergebnis) : std::nullopt;
    }

    template <class Wert>
    std::optional<Wert> wert(std::string_view json) {
        const auto element = zerteile(json);
        Wert ergebnis{};
        return element && lies(*element, ergebnis) ? std::optional(std::move(ergebnis)) : std::nullopt;
    }
};

GpxMetadatenJson::Leser::Leser() : zerteiler_(std::make_unique<Zerteiler>()) {}
GpxMetadatenJson::Leser::~Leser() = default;

Eintrag GpxMetadatenJson::Leser::eintrag(std::string_view json) {
    const auto element = zerteiler_->zerteile(json);
    auto ergebnis = std::make_shared<GpxMetadaten>();
    return element && liesObjekt(*element, *ergebnis) ? ergebnis : nullptr;
}

std::optional<std::string> GpxMetadatenJson::Leser::text(std::string_view json) {
    return zerteiler_->wert<std::string>(json);
}

std::optional<std::int64_t> GpxMetadatenJson::Leser::ganzzahl(std::string_view json) {
    return zerteiler_->wert<std::int64_t>(json);
}

bool GpxMetadatenJson::Leser::istGueltig(std::string_view json) {
    return zerteiler_->zerteile(json).has_value();
}

}  // namespace spurkiste
