#include "library/JsonStuecke.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace spurkiste {

namespace {

/// Fits the processor's own cache together with what is made of it.
constexpr std::size_t kPortion = std::size_t{128} * 1024;

bool istLeerraum(char zeichen) {
    return zeichen == ' ' || zeichen == '\n' || zeichen == '\r' || zeichen == '\t';
}

constexpr int kText = 2;

/// By how much a character outside of strings changes the depth, or kText where a string begins.
constexpr std::array<int, 256> kSchritte = [] {
    std::array<int, 256> schritte{};
    schritte['{'] = schritte['['] = 1;
    schritte['}'] = schritte[']'] = -1;
    schritte['"'] = kText;
    return schritte;
}();

/// The closing quotation mark of a string from a position inside it, or where to go on when there is more to look at:
/// an escape at the edge is looked at again, together with what it escapes.
const char* sucheTextende(const char* stelle, const char* ende) {
    while (stelle != ende && *stelle != '"') {
        if (*stelle == '\\' && ende - stelle < 2) {
            break;
        }
        stelle += *stelle == '\\' ? 2 : 1;
    }
    return stelle;
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
        puffer_.resize(std::min(2 * ende_, kHoechstens) + polster_);
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
    std::ptrdiff_t tiefe = 0;
    bool imText = false;
    std::ptrdiff_t laenge = 0;
    do {
        const char* const anfang = puffer_.data() + anfang_;
        const char* const ende = puffer_.data() + ende_;
        const char* stelle = anfang + laenge;
        while (stelle != ende) {
            if (imText) {
                stelle = sucheTextende(stelle, ende);
                if (stelle == ende || *stelle != '"') {
                    break;
                }
                ++stelle;
                imText = false;
            } else {
                const int schritt = kSchritte[static_cast<unsigned char>(*stelle++)];
                if (schritt == 0) {
                    continue;
                }
                imText = schritt == kText;
                tiefe += imText ? 0 : schritt;
            }
            if (tiefe == 0 && !imText) {
                return static_cast<std::size_t>(stelle - anfang);
            }
        }
        laenge = stelle - anfang;
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
