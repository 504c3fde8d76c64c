#include "library/CacheDienst.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

#include "library/Cache.h"

namespace spurkiste {

CacheDienst::~CacheDienst() {
    for (Stand& stand : wartende_) {
        schreiber_->fuehreAus([ordner = std::move(stand.ordner), eintraege = std::move(stand.eintraege)] {
            (void)Cache::schreibeNach(ordner, eintraege);
        });
    }
}

void CacheDienst::schreibe(const std::string& ordner, std::vector<Eintrag> eintraege, std::vector<Nachher> nachher) {
    auto stand = std::find_if(wartende_.begin(), wartende_.end(), [&](const Stand& s) { return s.ordner == ordner; });
    if (stand == wartende_.end()) {
        stand = wartende_.insert(wartende_.end(), Stand{ordner, {}, {}});
    }
    stand->eintraege = std::move(eintraege);
    std::move(nachher.begin(), nachher.end(), std::back_inserter(stand->nachher));
    beginne();
}

void CacheDienst::wennRuhig(Nachher dann) {
    if (schreibt_) {
        wennRuhig_.push_back(std::move(dann));
    } else {
        dann();
    }
}

void CacheDienst::beginne() {
    if (schreibt_ || wartende_.empty()) {
        return;
    }
    schreibt_ = true;
    const auto stand = std::make_shared<const Stand>(std::move(wartende_.front()));
    wartende_.pop_front();
    nachDiesem_ = stand->nachher;
    rueckweg_.hinUndZurueck(
        *schreiber_, [stand] { return Cache::schreibeNach(stand->ordner, stand->eintraege); },
        [this](bool) { lande(); });
}

void CacheDienst::lande() {
    schreibt_ = false;
    std::vector<Nachher> rufe = std::exchange(nachDiesem_, {});
    beginne();
    if (!schreibt_) {
        std::vector<Nachher> ruhe = std::exchange(wennRuhig_, {});
        std::move(ruhe.begin(), ruhe.end(), std::back_inserter(rufe));
    }
    for (const Nachher& ruf : rufe) {
        ruf();
    }
}

}  // namespace spurkiste
