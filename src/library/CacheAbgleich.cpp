#include "library/CacheAbgleich.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "base/Dateirechte.h"

namespace spurkiste {

namespace {

/// Fits the processor's own cache: fresh memory costs more than the system calls it saves.
constexpr std::uint64_t kPortion = std::uint64_t{256} * 1024;

}  // namespace

CacheAbgleich::CacheAbgleich(std::string pfad)
    : pfad_(std::move(pfad)),
      altes_(dateien::Leser::oeffne(pfad_, dateien::Verweise::lehneAb)),
      stand_(altes_ ? altes_->stand() : std::nullopt) {
    if (!stand_) {
        trenne();
    }
}

CacheAbgleich::~CacheAbgleich() = default;

void CacheAbgleich::haengeAn(std::string_view bytes) {
    if (!neues_ && !istGleich(bytes)) {
        trenne();
    }
    if (neues_) {
        neues_->schreibe(bytes);
    }
    laenge_ += bytes.size();
}

void CacheAbgleich::uebernimm(std::uint64_t ab, std::uint64_t laenge) {
    if (!neues_ && ab != laenge_) {
        trenne();
    }
    if (neues_) {
        kopiere(ab, laenge);
    }
    laenge_ += laenge;
}

bool CacheAbgleich::schliesse() {
    if (!neues_ && static_cast<std::uint64_t>(stand_->groesse) == laenge_ &&
        dateien::stand(pfad_, dateien::Verweise::lehneAb) == stand_) {
        dateien::verschliesseWieOrdner(dateien::ordnerVon(pfad_), altes_->nummer());
        return false;
    }
    if (!neues_) {
        trenne();
    }
    stand_ = neues_->stand();
    neues_->uebernimm();
    return true;
}

bool CacheAbgleich::istGleich(std::string_view bytes) {
    puffer_.resize(bytes.size());
    return altes_->liesAb(laenge_, puffer_) == bytes.size() && puffer_ == bytes;
}

void CacheAbgleich::trenne() {
    neues_ = std::make_unique<dateien::AtomareDatei>(pfad_);
    dateien::gibRechteDesOrdners(dateien::ordnerVon(pfad_), neues_->nummer());
    kopiere(0, laenge_);
}

void CacheAbgleich::kopiere(std::uint64_t ab, std::uint64_t anzahl) {
    while (anzahl > 0) {
        puffer_.resize(static_cast<std::size_t>(std::min(anzahl, kPortion)));
        if (altes_->liesAb(ab, puffer_) < puffer_.size()) {
            throw std::system_error(EIO, std::generic_category());  // somebody made it shorter
        }
        neues_->schreibe(puffer_);
        ab += puffer_.size();
        anzahl -= puffer_.size();
    }
}

}  // namespace spurkiste
