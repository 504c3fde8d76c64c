#include "base/Zeitpunkt.h"

#include <chrono>
#include <cmath>
#include <cstddef>

#include "base/Zahl.h"

namespace spurkiste {

namespace {

constexpr std::int64_t kUnixBis2001 = 978307200;  // seconds from 1970-01-01 to 2001-01-01

bool istZiffer(char zeichen) {
    return zeichen >= '0' && zeichen <= '9';
}

/// Reads a text of fixed fields from its start; fails for good at the first mismatch.
class Felder {
  public:
    explicit Felder(std::string_view text) : rest_(text) {}

    int zahl(std::size_t stellen) {
        if (rest_.size() < stellen) {
            gut_ = false;
        }
        int wert = 0;
        for (std::size_t i = 0; gut_ && i < stellen; ++i) {
            gut_ = istZiffer(rest_[i]);
            wert = wert * 10 + (rest_[i] - '0');
        }
        if (gut_) {
            rest_.remove_prefix(stellen);
        }
        return gut_ ? wert : 0;
    }

    void zeichen(char erwartet) {
        gut_ = gut_ && rest_.starts_with(erwartet);
        if (gut_) {
            rest_.remove_prefix(1);
        }
    }

    [[nodiscard]] bool folgt(char zeichen) const { return gut_ && rest_.starts_with(zeichen); }

    /// The digits after a point as a number below 1; fails when there is none.
    double bruch() {
        std::size_t stellen = 0;
        std::int64_t zaehler = 0;
        double nenner = 1.0;
        while (gut_ && stellen < rest_.size() && istZiffer(rest_[stellen])) {
            if (stellen < 17) {  // more digits than a double has
                zaehler = zaehler * 10 + (rest_[stellen] - '0');
                nenner *= 10.0;
            }
            ++stellen;
        }
        gut_ = gut_ && stellen > 0;
        if (gut_) {
            rest_.remove_prefix(stellen);
        }
        return gut_ ? static_cast<double>(zaehler) / nenner : 0.0;
    }

    [[nodiscard]] bool gut() const { return gut_; }
    [[nodiscard]] bool zuEnde() const { return gut_ && rest_.empty(); }

  private:
    std::string_view rest_;
    bool gut_ = true;
};

}  // namespace

Zeitpunkt Zeitpunkt::ausUnix(std::int64_t sekunden, long nanosekunden) {
    // In doubles from the start: a file system may report any 64 bits, and a difference of integers could overflow.
    return {static_cast<double>(sekunden) - static_cast<double>(kUnixBis2001) +
            static_cast<double>(nanosekunden) * 1e-9};
}

std::int64_t Zeitpunkt::alsUnix() const {
    return zahl::ganz(std::floor(sekunden) + static_cast<double>(kUnixBis2001));
}

std::optional<Zeitpunkt> Zeitpunkt::ausIso8601(std::string_view text) {
    Felder felder(text);
    const int jahr = felder.zahl(4);
    felder.zeichen('-');
    const int monat = felder.zahl(2);
    felder.zeichen('-');
    const int tag = felder.zahl(2);
    felder.zeichen('T');
    const int stunde = felder.zahl(2);
    felder.zeichen(':');
    const int minute = felder.zahl(2);
    felder.zeichen(':');
    const int sekunde = felder.zahl(2);
    double bruch = 0.0;
    if (felder.folgt('.')) {
        felder.zeichen('.');
        bruch = felder.bruch();
    }
    int versatz = 0;
    if (felder.folgt('Z')) {
        felder.zeichen('Z');
    } else {
        const int vorzeichen = felder.folgt('-') ? -1 : 1;
        felder.zeichen(vorzeichen < 0 ? '-' : '+');
        const int stunden = felder.zahl(2);
        felder.zeichen(':');
        const int minuten = felder.zahl(2);
        if (stunden > 23 || minuten > 59) {
            return std::nullopt;
        }
        versatz = vorzeichen * (stunden * 3600 + minuten * 60);
    }
    const auto datum = std::chrono::year(jahr) / monat / tag;
    if (!felder.zuEnde() || !datum.ok() || stunde > 23 || minute > 59 || sekunde > 59) {
        return std::nullopt;
    }
    const std::chrono::sys_seconds mitternacht = std::chrono::sys_days(datum);
    const int amTag = stunde * 3600 + minute * 60 + sekunde - versatz;
    const std::int64_t ganze = mitternacht.time_since_epoch().count() + amTag - kUnixBis2001;
    return Zeitpunkt{static_cast<double>(ganze) + bruch};
}

}  // namespace spurkiste
