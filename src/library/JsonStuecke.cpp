#include "library/JsonStuecke.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace spurkiste {

namespace {

/// Fits the processor's own cache together with what is made of it.
constexpr std::size_t kPortion = std::size_t{128} * 1024;

bool istLeerraum(char zeichen) {
    return zeichen == ' ' || zeichen == '\n' || zeichen == '\r' || zeichen == '\t';
}

}  // namespace

JsonStuecke::JsonStuecke(Quelle quelle, std::size_t polster)
    : quelle_(std::move(quelle)), polster_(polster), puffer_(kPortion + polster) {}

/// Moves what is left to the front, makes room and fetches. Positions relative to anfang_ stay what they are.
bool JsonStuecke::holeMehr() {
    if (anfang_ > 0) {
        std::memmove(puffer_.data(), puffer_.data() + anfang_, ende_ - anfang_);
        ende_ -= anfang_;
        anfang_ = 0;
    } else if (ende_ + polster_ == puffer_.size()) {
        if (ende_ >= kHoechstens) {
            return false;
        }
        puffer_.resize(2 * ende_ + polster_);
    }
    const std::size_t anzahl = quelle_(std::span(puffer_).subspan(ende_, puffer_.size() - polster_ - ende_));
    ende_ += anzahl;
    return anzahl > 0;
}

bool JsonStuecke::ueberspringeLeerraum() {
    for (;;) {
        while (anfang_ < ende_ && istLeerraum(puffer_[anfang_])) {
            ++anfang_;
        }
        if (anfang_ < ende_) {
            return true;
        }
        if (!holeMehr()) {
            return false;
        }
    }
}

bool JsonStuecke::nimm(char zeichen) {
    if (!ueberspringeLeerraum() || puffer_[anfang_] != zeichen) {
        return false;
    }
    ++anfang_;
    return true;
}

std::optional<std::string_view> JsonStuecke::wert() {
    if (!ueberspringeLeerraum()) {
        return std::nullopt;
    }
    const char erstes = puffer_[anfang_];
    const auto laenge = erstes == '{' || erstes == '[' || erstes == '"' ? klammerOderTextLaenge() : wortLaenge();
    if (!laenge || *laenge > kHoechstens) {
        return std::nullopt;
    }
    const std::string_view stueck(puffer_.data() + anfang_, *laenge);
    anfang_ += *laenge;
    return stueck;
}

bool JsonStuecke::amEnde() {
    return !ueberspringeLeerraum();
}

/// Counts brackets of both kinds alike: mixing them up is an error that the reader of the value finds.
std::optional<std::size_t> JsonStuecke::klammerOderTextLaenge() {
    std::size_t tiefe = 0;
    bool imText = false;
    std::size_t laenge = 0;
    do {
        const char* const anfang = puffer_.data() + anfang_;
        const char* const ende = puffer_.data() + ende_;
        const char* stelle = anfang + laenge;
        while (stelle != ende) {
            if (imText) {
                while (stelle != ende && *stelle != '"' && *stelle != '\\') {
                    ++stelle;
                }
                if (stelle == ende || (*stelle == '\\' && stelle + 1 == ende)) {
                    break;  // an escape at the edge is looked at again, together with what it escapes
                }
                if (*stelle == '\\') {
                    stelle += 2;
                    continue;
                }
                imText = false;
                ++stelle;
            } else {
                switch (*stelle++) {
                    case '"':
                        imText = true;
                        continue;
                    case '{':
                    case '[':
                        ++tiefe;
                        continue;
                    case '}':
                    case ']':
                        --tiefe;
                        break;
                    default:
                        continue;
                }
            }
            if (tiefe == 0) {
                return static_cast<std::size_t>(stelle - anfang);
            }
        }
        laenge = static_cast<std::size_t>(stelle - anfang);
    } while (holeMehr());
    return std::nullopt;
}

/// A number, true, false, null or nonsense. It may end with the text.
std::optional<std::size_t> JsonStuecke::wortLaenge() {
    constexpr std::string_view trenner = ",:]}[{\" \n\r\t";
    std::size_t laenge = 0;
    do {
        const std::string_view rest(puffer_.data() + anfang_ + laenge, ende_ - anfang_ - laenge);
        const auto stelle = rest.find_first_of(trenner);
        if (stelle != std::string_view::npos) {
            laenge += stelle;
            break;
        }
        laenge += rest.size();
    } while (holeMehr());
    return laenge > 0 ? std::optional(laenge) : std::nullopt;
}

}  // namespace spurkiste
