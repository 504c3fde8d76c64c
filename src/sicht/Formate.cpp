#include "sicht/Formate.h"

#include <array>
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
    std::string text = zahl::fest(meter / 1000.0, 1);
    text[text.size() - 2] = ',';
    return text + " km";
}

std::string Formate::koordinate(const Koordinate& ort) {
    return zahl::fest(ort.breite, 5) + ", " + zahl::fest(ort.laenge, 5);
}

}  // namespace spurkiste
