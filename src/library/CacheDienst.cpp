#include "library/CacheDienst.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

#include "base/Dateien.h"
#include "library/Cache.h"
#include "library/CacheSchreiber.h"

namespace spurkiste {

namespace {

std::shared_ptr<const CacheAbdruck> schreibeDatei(const std::string& ordner, const std::vector<Eintrag>& eintraege,
                                                  const CacheAbdruck* vorher) {
    try {
        return CacheSchreiber::schreibe(dateien::kindPfad(ordner, Cache::kDateiname), eintraege, vorher).abdruck;
    } catch (const std::bad_alloc&) {
        return nullptr;  // the old file stays
    }
}

}  // namespace

CacheDienst::~CacheDienst() {
    for (Stand& stand : wartende_) {
        schreiber_->fuehreAus([ordner = std::move(stand.ordner), eintraege = std::move(stand.eintraege)] {
            (void)schreibeDatei(ordner, eintraege, nullptr);
        });
    }
}

std::shared_ptr<const CacheAbdruck> CacheDienst::abdruck(const std::string& ordner) const {
    return ordner == bekannterOrdner_ ? abdruck_ : nullptr;
}

void CacheDienst::merke(const std::string& ordner, std::shared_ptr<const CacheAbdruck> abdruck) {
    bekannterOrdner_ = ordner;
    abdruck_ = std::move(abdruck);
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
    Stand stand = std::move(wartende_.front());
    wartende_.pop_front();
    nachDiesem_ = std::move(stand.nachher);
    // The task alone holds what it needs, so that long lists are taken apart where it runs.
    auto vorher = abdruck(stand.ordner);
    abdruck_.reset();
    rueckweg_.hinUndZurueck(
        *schreiber_,
        [ordner = stand.ordner, eintraege = std::move(stand.eintraege), vorher = std::move(vorher)] {
            return schreibeDatei(ordner, eintraege, vorher.get());
        },
        [this, ordner = stand.ordner](const std::shared_ptr<const CacheAbdruck>& neuer) { lande(ordner, neuer); });
}

void CacheDienst::lande(const std::string& ordner, std::shared_ptr<const CacheAbdruck> abdruck) {
    merke(ordner, std::move(abdruck));
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
