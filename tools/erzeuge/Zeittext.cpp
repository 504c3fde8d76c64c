#include "erzeuge/Zeittext.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>

namespace spurkiste::erzeuge {

void haengeGanz(std::string& text, std::int64_t zahl, int stellen) {
    std::array<char, 24> puffer;
    const std::uint64_t betrag = zahl < 0 ? 0U - static_cast<std::uint64_t>(zahl) : static_cast<std::uint64_t>(zahl);
    const auto ende = std::to_chars(puffer.data(), puffer.data() + puffer.size(), betrag).ptr;
    if (zahl < 0) {
        text += '-';
    }
    for (auto laenge = static_cast<int>(ende - puffer.data()); laenge < stellen; ++laenge) {
        text += '0';
    }
    text.append(puffer.data(), ende);
}

void haengeFest(std::string& text, double zahl, int stellen) {
    std::int64_t zehnerpotenz = 1;
    for (int i = 0; i < stellen; ++i) {
        zehnerpotenz *= 10;
    }
    const auto betrag =
        static_cast<std::int64_t>(std::floor(std::fabs(zahl) * static_cast<double>(zehnerpotenz) + 0.5));
    if (zahl < 0.0 && betrag != 0) {
        text += '-';
    }
    haengeGanz(text, betrag / zehnerpotenz);
    if (stellen > 0) {
        text += '.';
        haengeGanz(text, betrag % zehnerpotenz, stellen);
    }
}

void haengeZeit(std::string& text, std::int64_t sekundenSeit1970, std::string_view muster) {
    using namespace std::chrono;
    const sys_seconds zeit{seconds{sekundenSeit1970}};
    const auto tag = floor<days>(zeit);
    const year_month_day datum{tag};
    const auto uhr = (zeit - tag).count();
    for (const char zeichen : muster) {
        switch (zeichen) {
            case 'Y':
                haengeGanz(text, static_cast<int>(datum.year()), 4);
                break;
            case 'm':
                haengeGanz(text, static_cast<unsigned>(datum.month()), 2);
                break;
            case 'd':
                haengeGanz(text, static_cast<unsigned>(datum.day()), 2);
                break;
            case 'H':
                haengeGanz(text, uhr / 3600, 2);
                break;
            case 'M':
                haengeGanz(text, uhr / 60 % 60, 2);
                break;
            case 'S':
                haengeGanz(text, uhr % 60, 2);
                break;
            default:
                text += zeichen;
        }
    }
}

}  // namespace spurkiste::erzeuge
