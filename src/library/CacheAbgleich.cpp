#include "library/CacheAbgleich.h"

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

#include "base/Dateinummer.h"
#include "base/Dateirechte.h"

namespace spurkiste {

namespace {

/// Fits the processor's own cache: fresh memory costs more than the system calls it saves.
constexpr std::uint64_t kPortion = std::uint64_t{256} * 1024;

dateien::Dateinummer oeffneOrdner(const std::string& pfad) {
    return {dateien::ordnerVon(pfad), O_RDONLY | O_DIRECTORY};
}

/// Whether others than its owner may write to the folder: they keep the cache together then.
bool istGeteilt(const dateien::Dateinummer& ordner) {
    constexpr mode_t andereSchreiben = 0022;
    struct stat zustand {};
    return ::fstat(ordner.wert(), &zustand) == 0 && (zustand.st_mode & andereSchreiben) != 0;
}

/// Where somebody has been is for those alone who may change the folder.
void gibRechte(const std::string& pfad, const dateien::AtomareDatei& neues) {
    const auto ordner = oeffneOrdner(pfad);
    if (istGeteilt(ordner)) {
        dateien::uebernimmRechte(ordner.wert(), neues.nummer(), dateien::kLesenUndSchreiben);
    } else {
        dateien::uebernimmEigentuemer(ordner.wert(), neues.nummer());
    }
}

/// The same for a file that stays as it is and may be older than this rule, or than the folder's rights.
void verschliesse(const std::string& pfad, const dateien::Leser& altes) {
    constexpr mode_t andere = 0077;
    constexpr mode_t nurEigentuemer = 0600;
    struct stat zustand {};
    if (::fstat(altes.nummer(), &zustand) == 0 && (zustand.st_mode & andere) != 0 && !istGeteilt(oeffneOrdner(pfad))) {
        ::fchmod(altes.nummer(), nurEigentuemer);
    }
}

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
        verschliesse(pfad_, *altes_);
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
    gibRechte(pfad_, *neues_);
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
