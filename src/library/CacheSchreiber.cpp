#include "library/CacheSchreiber.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <optional>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "library/CacheAbgleich.h"
#include "library/CacheEigenform.h"
#include "library/JsonStuecke.h"
#include "track/GpxMetadatenJson.h"
#include "track/JsonText.h"

namespace spurkiste {

namespace {

/// The records in list order, of those with the same path only the last.
std::vector<Eintrag> ohneDoppelte(std::span<const Eintrag> eintraege) {
    std::unordered_set<std::string_view> gesehen(eintraege.size());
    std::vector<Eintrag> ergebnis;
    ergebnis.reserve(eintraege.size());
    for (std::size_t i = eintraege.size(); i-- > 0;) {
        if (gesehen.insert(eintraege[i]->pfad).second) {
            ergebnis.push_back(eintraege[i]);
        }
    }
    std::reverse(ergebnis.begin(), ergebnis.end());
    return ergebnis;
}

/// Where the bytes of records stand. Mostly they are asked for in the order of the file.
class Fundstellen {
  public:
    explicit Fundstellen(const CacheAbdruck* abdruck) : abdruck_(abdruck) {}

    const CacheAbdruck::Stelle* suche(const Eintrag& eintrag) {
        if (abdruck_ == nullptr) {
            return nullptr;
        }
        const auto& stellen = abdruck_->stellen;
        if (naechste_ >= stellen.size() || stellen[naechste_].eintrag != eintrag) {
            if (nummern_.empty()) {
                nummern_.reserve(stellen.size());
                for (std::size_t i = 0; i < stellen.size(); ++i) {
                    nummern_.emplace(stellen[i].eintrag.get(), i);
                }
            }
            const auto fund = nummern_.find(eintrag.get());
            if (fund == nummern_.end()) {
                return nullptr;
            }
            naechste_ = fund->second;
        }
        return &stellen[naechste_++];
    }

  private:
    const CacheAbdruck* abdruck_;
    std::size_t naechste_ = 0;
    std::unordered_map<const GpxMetadaten*, std::size_t> nummern_;
};

/// Puts the content together: new bytes in portions, old ones in runs as long as they come.
class Ausgabe {
  public:
    Ausgabe(CacheAbgleich& abgleich, const CacheAbdruck* vorher) : abgleich_(abgleich), fundstellen_(vorher) {}

    /// False when a number is not finite.
    bool haengeAn(const Eintrag& eintrag) {
        if (const auto* stelle = fundstellen_.suche(eintrag)) {
            nimmAltes(*stelle);
            return true;
        }
        schreibeAltes();
        const std::size_t vorher = puffer_.size();
        puffer_.append(stellen_.empty() ? "" : ",");
        const std::size_t anfang = puffer_.size();
        JsonText::haengeAn(puffer_, eintrag->pfad);
        puffer_ += ':';
        const auto ergebnis = GpxMetadatenJson::haengeAn(puffer_, *eintrag);
        // A record that could not be read back is left out: its file is read again each time, which is better than
        // one odd file that keeps all others from being cached.
        if (ergebnis != GpxMetadatenJson::Ergebnis::geschrieben || puffer_.size() - anfang > JsonStuecke::kHoechstens) {
            puffer_.resize(vorher);
            return ergebnis != GpxMetadatenJson::Ergebnis::nichtEndlich;
        }
        stellen_.push_back({eintrag, abgleich_.laenge() + anfang, puffer_.size() - anfang});
        if (puffer_.size() >= kPortion) {
            schreibeNeues();
        }
        return true;
    }

    std::vector<CacheAbdruck::Stelle> schliesse() {
        schreibeAltes();
        puffer_.append(CacheEigenform::kEnde);
        schreibeNeues();
        return std::move(stellen_);
    }

  private:
    // Small enough to stay in the processor's own cache: fresh memory costs more than the system calls it saves.
    static constexpr std::size_t kPortion = std::size_t{64} * 1024;

    void nimmAltes(const CacheAbdruck::Stelle& stelle) {
        constexpr std::uint64_t komma = 1;
        if (altesBis_ > altesAb_ && altesBis_ + komma != stelle.ab) {
            schreibeAltes();
        }
        if (altesBis_ == altesAb_) {
            puffer_.append(stellen_.empty() ? "" : ",");
            schreibeNeues();
            altesAb_ = stelle.ab;
        }
        stellen_.push_back({stelle.eintrag, abgleich_.laenge() + (stelle.ab - altesAb_), stelle.laenge});
        altesBis_ = stelle.ab + stelle.laenge;
    }

    void schreibeAltes() {
        if (altesBis_ > altesAb_) {
            abgleich_.uebernimm(altesAb_, altesBis_ - altesAb_);
        }
        altesAb_ = altesBis_ = 0;
    }

    void schreibeNeues() {
        abgleich_.haengeAn(puffer_);
        puffer_.clear();
    }

    CacheAbgleich& abgleich_;
    Fundstellen fundstellen_;
    std::vector<CacheAbdruck::Stelle> stellen_;
    std::string puffer_{CacheEigenform::kAnfang};  // new bytes
    std::uint64_t altesAb_ = 0;                    // or a run of old ones, never both
    std::uint64_t altesBis_ = 0;
};

}  // namespace

CacheSchreiber::Ergebnis CacheSchreiber::schreibe(const std::string& pfad, std::span<const Eintrag> eintraege,
                                                  const CacheAbdruck* vorher) {
    try {
        CacheAbgleich abgleich(pfad);
        const bool bekannt = vorher != nullptr && abgleich.stand() == vorher->stand;
        Ausgabe ausgabe(abgleich, bekannt ? vorher : nullptr);
        for (const Eintrag& eintrag : ohneDoppelte(eintraege)) {
            if (!ausgabe.haengeAn(eintrag)) {
                return {};
            }
        }
        auto stellen = ausgabe.schliesse();
        const bool neu = abgleich.schliesse();
        Ergebnis ergebnis{neu ? Ausgang::geschrieben : Ausgang::unveraendert, nullptr};
        if (abgleich.stand()) {
            ergebnis.abdruck =
                std::make_shared<const CacheAbdruck>(CacheAbdruck{*abgleich.stand(), std::move(stellen)});
        }
        return ergebnis;
    } catch (const std::system_error&) {
        return {};
    } catch (const std::bad_alloc&) {
        return {};
    }
}

}  // namespace spurkiste
