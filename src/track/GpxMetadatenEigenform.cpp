#include "track/GpxMetadatenEigenform.h"

#include <array>
#include <cstring>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

#include "base/Text.h"
#include "track/Eigenzahl.h"
#include "track/GpxFelder.h"

namespace spurkiste {

namespace {

/// What ends a run of ordinary characters in a string. The zeros behind the bytes do, too.
constexpr std::array<bool, 256> kBesondere = [] {
    std::array<bool, 256> besondere{};
    for (unsigned i = 0; i < 0x20; ++i) {
        besondere[i] = true;
    }
    besondere['"'] = besondere['\\'] = true;
    return besondere;
}();

const char* sucheBesonderes(const char* stelle) {
    while (!kBesondere[static_cast<unsigned char>(*stelle)]) {
        ++stelle;
    }
    return stelle;
}

/// The character that an escape stands for, of those that are written; 0 for others.
char entziffere(const char*& stelle) {
    constexpr std::string_view ziffern = "0123456789abcdef";
    constexpr std::string_view vorn = "\\u00";
    if (stelle[1] == '"' || stelle[1] == '\\') {
        stelle += 2;
        return stelle[-1];
    }
    const auto niedrig = ziffern.find(stelle[5]);
    if (std::memcmp(stelle, vorn.data(), vorn.size()) != 0 || (stelle[4] != '0' && stelle[4] != '1') ||
        stelle[5] == '\0' || niedrig == std::string_view::npos) {
        return '\0';
    }
    const auto wert = static_cast<char>((stelle[4] - '0') * 16 + static_cast<int>(niedrig));
    stelle += wert == 0 ? 0 : 6;
    return wert;
}

/// Goes through the bytes of one record. Where it stops, `stelle` stays.
struct Lauf {
    const char* stelle;
    Skizze::Bau& bau;

    bool nimm(char zeichen) {
        const bool passt = *stelle == zeichen;
        stelle += passt ? 1 : 0;
        return passt;
    }

    bool nimm(std::string_view text) {
        const bool passt = std::memcmp(stelle, text.data(), text.size()) == 0;
        stelle += passt ? text.size() : 0;
        return passt;
    }

    bool lies(std::string& wert) {
        if (!nimm('"')) {
            return false;
        }
        const char* ende = sucheBesonderes(stelle);
        wert.assign(stelle, ende);
        stelle = ende;
        while (*stelle == '\\') {
            const char zeichen = entziffere(stelle);
            if (zeichen == '\0' && *stelle == '\\') {
                return false;
            }
            ende = sucheBesonderes(stelle);
            wert.append(1, zeichen).append(stelle, ende);
            stelle = ende;
        }
        return nimm('"') && text::istUtf8(wert);
    }

    bool lies(double& wert) { return geheNach(eigenzahl::lies(stelle, wert)); }
    bool lies(std::int64_t& wert) { return geheNach(eigenzahl::lies(stelle, wert)); }
    bool lies(Zeitpunkt& wert) { return lies(wert.sekunden); }

    bool lies(bool& wert) {
        wert = *stelle == 't';
        return nimm(wert ? std::string_view("true") : std::string_view("false"));
    }

    static const char* liesZahl(const char* p, double& wert) { return eigenzahl::lies(p, wert); }
    static const char* liesZahl(const char* p, std::int32_t& wert) { return eigenzahl::liesRund(p, wert); }

    /// Nearly all of a cache is coordinates, so the position stays in a register from the first to the last of a line.
    template <class Ort>
    static const char* liesPunkt(const char* p, Ort& wert) {
        constexpr std::string_view vorn = R"({"breite":)";
        constexpr std::string_view mitte = R"(,"laenge":)";
        p = std::memcmp(p, vorn.data(), vorn.size()) == 0 ? liesZahl(p + vorn.size(), wert.breite) : nullptr;
        if (p == nullptr || std::memcmp(p, mitte.data(), mitte.size()) != 0) {
            return nullptr;
        }
        p = liesZahl(p + mitte.size(), wert.laenge);
        return p != nullptr && *p == '}' ? p + 1 : nullptr;
    }

    /// Reads points and the commas between them. Null behind the last one, with `stelle` there; else where to read on.
    template <class Ort>
    const char* liesPunkte(const char* p) {
        for (;;) {
            Ort punkt;
            const char* const nach = liesPunkt(p, punkt);
            if (nach == nullptr) {
                return p;
            }
            if constexpr (std::is_same_v<Ort, Skizze::Rund>) {
                bau.haengeRundAn(punkt);
            } else {
                bau.haengeAn(punkt);
            }
            if (*nach != ',') {
                stelle = nach;
                return nullptr;
            }
            p = nach + 1;
        }
    }

    bool lies(Koordinate& wert) { return geheNach(liesPunkt(stelle, wert)); }

    bool lies(GpxWetter& wert) { return liesObjekt(wert); }

    bool geheNach(const char* nach) {
        stelle = nach != nullptr ? nach : stelle;
        return nach != nullptr;
    }

    bool liesLinie() {
        bau.beginneLinie();
        if (!nimm('[')) {
            return false;
        }
        if (nimm(']')) {
            return true;
        }
        const char* p = stelle;
        if (bau.istRund()) {
            p = liesPunkte<Skizze::Rund>(p);
        }
        if (p != nullptr) {
            p = liesPunkte<Koordinate>(p);
        }
        if (p != nullptr) {
            stelle = p;
            return false;
        }
        return nimm(']');
    }

    /// The sketch itself is made when the whole record is known.
    bool lies(const Skizze& /*wert*/) {
        bau.leere();
        if (!nimm('[')) {
            return false;
        }
        if (nimm(']')) {
            return true;
        }
        do {
            if (!liesLinie()) {
                return false;
            }
        } while (nimm(','));
        return nimm(']');
    }

    template <class Typ>
    bool liesObjekt(Typ& objekt) {
        bool erstes = true;
        return nimm('{') &&
               std::apply(
                   [&](auto... feld) { return (liesMitglied(feld.name, objekt.*(feld.kZeiger), erstes) && ...); },
                   gpxFelder<Typ>()) &&
               nimm('}');
    }

    template <class Wert>
    bool liesMitglied(std::string_view name, Wert& wert, bool& erstes) {
        const char* const nameAb = stelle + (erstes ? 1 : 2);
        const bool da = (erstes || *stelle == ',') && nameAb[-1] == '"' &&
                        std::memcmp(nameAb, name.data(), name.size()) == 0 && nameAb[name.size()] == '"' &&
                        nameAb[name.size() + 1] == ':';
        if (da) {
            stelle = nameAb + name.size() + 2;
            erstes = false;
        }
        if constexpr (kOptional<Wert>) {
            typename Wert::value_type neuer{};
            const bool gelungen = !da || lies(neuer);
            wert = da ? Wert(std::move(neuer)) : std::nullopt;
            return gelungen;
        } else {
            return da && lies(wert);
        }
    }
};

}  // namespace

Eintrag GpxMetadatenEigenform::lies(std::string_view bytes) {
    constexpr std::string_view mitte = R"(:{"pfad":)";
    gelesen_ = 0;
    Lauf lauf{bytes.data(), bau_};
    if (!lauf.nimm('"')) {
        return nullptr;
    }
    while (*(lauf.stelle = sucheBesonderes(lauf.stelle)) == '\\') {
        lauf.stelle += 2;
    }
    gelesen_ = static_cast<std::size_t>(lauf.stelle - bytes.data());
    if (!lauf.nimm('"')) {
        return nullptr;
    }
    const std::string_view schluessel = bytes.substr(0, gelesen_ + 1);
    if (bytes.size() < 2 * schluessel.size() + mitte.size()) {
        gelesen_ = bytes.size();
        return nullptr;
    }
    const char* const eintrag = lauf.stelle + 1;
    if (!lauf.nimm(mitte) || !lauf.nimm(schluessel)) {
        return nullptr;
    }
    lauf.stelle = eintrag;
    const bool gelungen = lauf.liesObjekt(entwurf_);
    gelesen_ = static_cast<std::size_t>(lauf.stelle - bytes.data());
    if (!gelungen) {
        return nullptr;
    }
    if (Eintrag bekannt = bekannte_ ? bekannte_(entwurf_.pfad) : nullptr; bekannt && bau_.gleicht(bekannt->skizze)) {
        entwurf_.skizze = bekannt->skizze;
        if (entwurf_ == *bekannt) {
            return bekannt;
        }
    }
    entwurf_.skizze = bau_.fertigIn(lager_);
    return std::make_shared<const GpxMetadaten>(std::move(entwurf_));
}

}  // namespace spurkiste
