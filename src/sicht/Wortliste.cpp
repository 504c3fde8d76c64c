#include "sicht/Wortliste.h"

#include <utility>

#include "base/Text.h"

namespace spurkiste {

Wortliste::Nummer Wortliste::nimm(std::string_view text) {
    std::string wort = text::nfc(text);
    auto stelle = worte_.lower_bound(wort);
    if (stelle == worte_.end() || stelle->first != wort) {
        auto nummer = static_cast<Nummer>(eintraege_.size());
        if (frei_.empty()) {
            eintraege_.emplace_back();
        } else {
            nummer = frei_.back();
            frei_.pop_back();
        }
        stelle = worte_.emplace_hint(stelle, std::move(wort), nummer);
        eintraege_[nummer] = {stelle, 0};
    }
    ++eintraege_[stelle->second].anzahl;
    return stelle->second;
}

void Wortliste::lasse(Nummer nummer) {
    if (nummer != kKeine && --eintraege_[nummer].anzahl == 0) {
        worte_.erase(eintraege_[nummer].wort);
        frei_.push_back(nummer);
    }
}

Wortliste::Nummer Wortliste::suche(std::string_view text) const {
    const auto stelle = worte_.find(text::nfc(text));
    return stelle == worte_.end() ? kUnbekannt : stelle->second;
}

}  // namespace spurkiste
