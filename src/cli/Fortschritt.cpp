#include "cli/Fortschritt.h"

#include <algorithm>
#include <utility>

namespace spurkiste {

namespace {

constexpr std::size_t kBalken = 30;
constexpr const char* kZeilenanfang = "\r\x1b[K";  // and everything after it erased

}  // namespace

std::optional<std::string> Fortschritt::zeile(std::size_t offen) {
    ganzes_ = std::max(ganzes_, offen);
    if (ganzes_ == 0) {
        return std::nullopt;
    }
    const std::size_t gelesen = ganzes_ - offen;
    std::string text = std::to_string(gelesen) + " / " + std::to_string(ganzes_);
    if (breite_ > kBalken + text.size() + 3) {
        const std::size_t voll = kBalken * gelesen / ganzes_;
        text = "[" + std::string(voll, '=') + std::string(kBalken - voll, ' ') + "] " + text;
    }
    if (text == zuletzt_ || text.size() >= breite_) {
        return std::nullopt;
    }
    zuletzt_ = std::move(text);
    return kZeilenanfang + zuletzt_;
}

std::string Fortschritt::raeumeAuf() {
    return std::exchange(zuletzt_, {}).empty() ? "" : kZeilenanfang;
}

}  // namespace spurkiste
