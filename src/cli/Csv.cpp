#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>

#include "base/Text.h"
#include "base/Zahl.h"
#include "cli/Ausgabe.h"
#include "track/GpxFelder.h"

namespace spurkiste::ausgabe {

namespace {

std::string zweistellig(unsigned zahl) {
    return (zahl < 10 ? "0" : "") + std::to_string(zahl);
}

/// "2024-09-21T06:15:00Z"; fractions of a second are cut. Instants come from files with four-digit years or from the
/// file system, so the year needs no sign.
std::string iso8601(Zeitpunkt zeit) {
    using std::chrono::days;
    const std::chrono::sys_seconds instant{std::chrono::seconds{zeit.alsUnix()}};
    const auto tag = std::chrono::floor<days>(instant);
    const std::chrono::year_month_day datum{tag};
    const std::chrono::hh_mm_ss uhr{instant - tag};
    const std::string jahr = std::to_string(static_cast<int>(datum.year()));
    const auto zahl = [](auto dauer) { return zweistellig(static_cast<unsigned>(dauer.count())); };
    return std::string(jahr.size() < 4 ? 4 - jahr.size() : 0, '0') + jahr + "-" +
           zweistellig(static_cast<unsigned>(datum.month())) + "-" + zweistellig(static_cast<unsigned>(datum.day())) +
           "T" + zahl(uhr.hours()) + ":" + zahl(uhr.minutes()) + ":" + zahl(uhr.seconds()) + "Z";
}

/// The text as a field that only shows something. Spreadsheets take what begins like a formula for one, quoted or not,
/// and what begins with an apostrophe for the text behind it (OWASP, "CSV Injection").
std::string entschaerft(std::string_view text) {
    constexpr std::array<std::string_view, 8> zeichen = {"=", "+", "-", "@", "＝", "＋", "－", "＠"};
    std::string sicher = text::einzeilig(text);
    const std::string_view anfang = text::trimme(sicher);
    const bool formel =
        std::any_of(zeichen.begin(), zeichen.end(), [&](std::string_view eines) { return anfang.starts_with(eines); });
    if (formel && !zahl::lies(anfang)) {
        sicher.insert(0, "'");
    }
    return sicher;
}

/// Builds one line, field by field.
class Csvzeile {
  public:
    explicit Csvzeile(Textform form) : form_(form) {}

    void nimm(std::string_view text) {
        trenne();
        if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
            zeile_ += text;
            return;
        }
        zeile_ += '"';
        for (const char zeichen : text) {
            if (zeichen == '"') {
                zeile_ += '"';
            }
            zeile_ += zeichen;
        }
        zeile_ += '"';
    }
    void nimm(double zahl) {
        zahl::Puffer puffer;
        nimm(zahl::schreibe(zahl, puffer));
    }
    void nimm(std::int64_t zahl) { nimm(std::string_view{std::to_string(zahl)}); }
    void nimm(bool wahr) { nimm(std::string_view{wahr ? "true" : "false"}); }
    void nimm(const std::string& text) { nimm(std::string_view{form_ == Textform::roh ? text : entschaerft(text)}); }
    void nimm(Zeitpunkt zeit) { nimm(std::string_view{iso8601(zeit)}); }
    template <typename T>
    void nimm(const std::optional<T>& wert) {
        if (wert) {
            nimm(*wert);
        } else {
            trenne();
        }
    }
    void nimm(const std::optional<Koordinate>& ort) {
        nimm(ort ? std::optional(ort->breite) : std::nullopt);
        nimm(ort ? std::optional(ort->laenge) : std::nullopt);
    }
    void nimm(const Selten<GpxWetter>& wetter) {
        const auto eines = [&](auto zeiger) {
            if (wetter) {
                nimm(*wetter.*zeiger);
            } else {
                trenne();
            }
        };
        std::apply([&](const auto&... feld) { (eines(feld.kZeiger), ...); }, kWetterFelder);
    }
    static void nimm(const Skizze& /*skizze*/) {}  // is no table

    /// The title of each column that the value of a field takes.
    void titel(std::string_view name, const std::optional<Koordinate>& /*ort*/) {
        nimm(std::string_view{std::string(name) + "Breite"});
        nimm(std::string_view{std::string(name) + "Laenge"});
    }
    void titel(std::string_view /*name*/, const Selten<GpxWetter>& /*wetter*/) {
        std::apply([&](const auto&... feld) { (this->nimm(feld.name), ...); }, kWetterFelder);
    }
    static void titel(std::string_view /*name*/, const Skizze& /*skizze*/) {}
    template <typename T>
    void titel(std::string_view name, const T& /*wert*/) {
        nimm(name);
    }

    std::string fertig() && { return std::move(zeile_.append("\r\n")); }

  private:
    void trenne() {
        if (begonnen_) {
            zeile_ += ',';
        }
        begonnen_ = true;
    }

    Textform form_;
    std::string zeile_;
    bool begonnen_ = false;
};

}  // namespace

void alsCsv(const Bibliothek::Eintraege& eintraege, Textform form, const Senke& senke) {
    const auto zeile = [&](auto nimm) {
        Csvzeile bau(form);
        std::apply([&](const auto&... feld) { (nimm(bau, feld), ...); }, kGpxFelder);
        senke(std::move(bau).fertig());
    };
    zeile([](Csvzeile& bau, const auto& feld) { bau.titel(feld.name, GpxMetadaten().*feld.kZeiger); });
    for (const Eintrag& eintrag : eintraege) {
        zeile([&](Csvzeile& bau, const auto& feld) { bau.nimm((*eintrag).*feld.kZeiger); });
    }
}

}  // namespace spurkiste::ausgabe
