#include "sicht/Formate.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <ctime>

#include "base/Zahl.h"

namespace spurkiste {

namespace {

std::string nachMuster(Zeitpunkt zeit, const char* muster) {
    const std::time_t sekunden = zeit.alsUnix();
    std::tm teile{};
    if (::localtime_r(&sekunden, &teile) == nullptr) {
        return "–";  // a year beyond the calendar's 32 bits
    }
    std::array<char, 32> puffer{};
    return {puffer.data(), std::strftime(puffer.data(), puffer.size(), muster, &teile)};
}

std::string zweistellig(long long zahl) {
    return (zahl < 10 ? "0" : "") + std::to_string(zahl);
}

}  // namespace

std::string Formate::datumsFormat(Zeitpunkt zeit) {
    return nachMuster(zeit, "%d.%m.%y");
}

std::string Formate::datumZeitFormat(Zeitpunkt zeit) {
    return nachMuster(zeit, "%d.%m.%y %H:%M");
}

std::string Formate::dauer(double sekunden) {
    const long long n = zahl::ganz(std::round(sekunden));
    const auto rest = zweistellig(n % 60);
    if (n < 3600) {
        return std::to_string(n / 60) + ":" + rest;
    }
    return std::to_string(n / 3600) + ":" + zweistellig(n / 60 % 60) + ":" + rest;
}

std::string Formate::strecke(double meter) {
    if (meter < 1000.0) {
        return std::to_string(zahl::ganz(meter)) + " m";
    }
    constexpr double unsinnig = 1e15;  // as many digits as there are would be wider than any screen
    if (meter >= unsinnig) {
        std::array<char, 16> puffer{};
        const auto [ende, fehler] = std::to_chars(puffer.data(), puffer.data() + puffer.size(), meter / 1000.0,
                                                  std::chars_format::scientific, 0);
        return std::string(puffer.data(), ende) + " km";
    }
    std::string text = zahl::fest(meter / 1000.0, 1);
    text[text.size() - 2] = ',';
    return text + " km";
}

std::string Formate::koordinate(const Koordinate& ort) {
    return zahl::fest(ort.breite, 5) + ", " + zahl::fest(ort.laenge, 5);
}

}  // namespace spurkiste
