#include "base/Zeitpunkt.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "base/Zahl.h"

namespace spurkiste {

namespace {

constexpr std::int64_t kUnixBis2001 = 978307200;  // seconds from 1970-01-01 to 2001-01-01
constexpr std::int64_t kSekundenProTag = 86400;

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

bool istSchaltjahr(int jahr) {
    return (jahr % 4 == 0 && jahr % 100 != 0) || jahr % 400 == 0;
}

int tageImMonat(int jahr, int monat) {
    constexpr std::array<int, 12> tage = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return monat == 2 && istSchaltjahr(jahr) ? 29 : tage[static_cast<std::size_t>(monat - 1)];
}

/// Days from 1970-01-01, counted in years that begin in March so that the leap day comes last.
std::int64_t tageSeit1970(int jahr, int monat, int tag) {
    const int j = monat <= 2 ? jahr - 1 : jahr;
    const int aera = (j >= 0 ? j : j - 399) / 400;
    const int jahrDerAera = j - aera * 400;
    const int tagDesJahres = (153 * (monat > 2 ? monat - 3 : monat + 9) + 2) / 5 + tag - 1;
    const int tagDerAera = jahrDerAera * 365 + jahrDerAera / 4 - jahrDerAera / 100 + tagDesJahres;
    return static_cast<std::int64_t>(aera) * 146097 + tagDerAera - 719468;
}

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
    const bool moeglich = felder.zuEnde() && monat >= 1 && monat <= 12 && tag >= 1 && tag <= tageImMonat(jahr, monat) &&
                          stunde <= 23 && minute <= 59 && sekunde <= 59;
    if (!moeglich) {
        return std::nullopt;
    }
    const int amTag = stunde * 3600 + minute * 60 + sekunde - versatz;
    const std::int64_t ganze = tageSeit1970(jahr, monat, tag) * kSekundenProTag + amTag - kUnixBis2001;
    return Zeitpunkt{static_cast<double>(ganze) + bruch};
}

}  // namespace spurkiste
