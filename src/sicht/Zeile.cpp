#include "sicht/Zeile.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <variant>

#include "base/Text.h"
#include "sicht/Formate.h"

namespace spurkiste {

namespace {

constexpr std::size_t kUeblich = 256;  // units that nearly all rows need at most

constexpr std::string_view kRoutenzeichen = "point.topleft.down.curvedto.point.bottomright.up";

/// At most so many bytes of a text, and whole characters only.
std::string_view gekuerzt(std::string_view text) {
    if (text.size() <= Zeile::kLaengster) {
        return text;
    }
    std::size_t ende = Zeile::kLaengster;
    while (ende > 0 && (static_cast<unsigned char>(text[ende]) & 0xC0U) == 0x80U) {
        --ende;
    }
    return text.substr(0, ende);
}

void haengeAn(std::u16string& ziel, std::string_view text) {
    const auto istSchlicht = [](char zeichen) { return zeichen >= ' ' && zeichen <= '~'; };
    const auto kurz = gekuerzt(text);
    if (std::all_of(kurz.begin(), kurz.end(), istSchlicht)) {
        ziel.append(kurz.begin(), kurz.end());
    } else if (kurz == kStrich) {
        ziel += u'–';
    } else {
        ziel += text::utf16(text::einzeilig(kurz));
    }
}

void haengeAn(std::u16string& ziel, std::u16string_view text) {
    ziel += text;
}

}  // namespace

Zeile::Zeile(Eintrag eintrag, std::uint32_t kennung, std::optional<GpxSportart> geschrieben, std::string_view sportText)
    : eintrag_(std::move(eintrag)),
      pfadHash_(Pfadmenge::Glied::hash(eintrag_->pfad)),
      kennung_(kennung),
      geschrieben_(geschrieben),
      sport_(geschrieben ? geschrieben : eintrag_->sportVorschlag()) {
    static_assert(kSpalten.size() * kLaengster <= std::numeric_limits<std::uint16_t>::max());
    std::u16string texte;
    texte.reserve(kUeblich);
    for (std::size_t spalte = 0; spalte < kSpalten.size(); ++spalte) {
        std::visit([&](const auto& text) { haengeAn(texte, text); }, kSpalten[spalte].text(*eintrag_, sportText));
        enden_[spalte] = static_cast<std::uint16_t>(texte.size());
    }
    texte_.assign(texte);  // no larger than it must be: there are many rows
}

std::u16string_view Zeile::text(Spalte spalte) const {
    const auto stelle = static_cast<std::size_t>(spalte);
    const std::size_t anfang = stelle == 0 ? 0 : enden_[stelle - 1];
    return std::u16string_view(texte_).substr(anfang, enden_[stelle] - anfang);
}

std::u16string Zeile::vorleseText(Spalte spalte) const {
    return angaben(spalte).vorleseText(text(spalte), tooltip(spalte));
}

std::string_view Zeile::symbol() const {
    return geschrieben_ ? geschrieben_->symbol() : kRoutenzeichen;
}

}  // namespace spurkiste
