#include "library/CacheEigenform.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cassert>
#include <cstring>
#include <iterator>
#include <utility>

#include "base/Gemeinsam.h"
#include "base/Seiten.h"
#include "library/JsonStuecke.h"

namespace spurkiste {

namespace {

using Stellen = std::vector<CacheAbdruck::Stelle>;

/// What one section came to. Its first record begins at `von`, the one after its last at `bis`, or the text ends there.
struct Abschnitt {
    std::uint64_t von = 0;
    std::uint64_t bis = 0;
    Stellen stellen;
};

/// Reads sections of a text, one after the other. One per thread.
class Abschnittleser {
  public:
    Abschnittleser(const CacheEigenform::Text& text, const GpxMetadatenEigenform::Bekannte& bekannte)
        : text_(text), lager_(lagerstueck(text.groesse)), eintraege_(lager_, bekannte) {}

    /// Reads every record that begins between `ab` and `grenze`, the first of them at `ab`. Nothing when what stands
    /// there is not our form.
    std::optional<Abschnitt> lies(std::uint64_t ab, std::uint64_t grenze) {
        fuelle(ab, grenze - ab);
        return liesEintraege(ab, grenze);
    }

    /// The same when the first record begins somewhere from `ab` on. A section without any is empty at `grenze`; it may
    /// be one whose only record begins at its very end.
    std::optional<Abschnitt> liesAbErstem(std::uint64_t ab, std::uint64_t grenze) {
        constexpr std::uint64_t davor = 2;  // the end of the record before
        fuelle(ab - davor, grenze - ab + davor);
        const auto erster = sucheEintrag();
        return erster && *erster < grenze ? liesEintraege(*erster, grenze) : Abschnitt{grenze, grenze, {}};
    }

  private:
    static constexpr std::uint64_t kAufEinmal = std::uint64_t{2}
                                                << 20;  // a gap between sections may be all of the text

    static std::size_t lagerstueck(std::uint64_t textgroesse) {
        constexpr std::size_t klein = std::size_t{128} * 1024;
        return textgroesse < 8 * Seiten::kGrosseSeite ? klein : Seiten::kGrosseSeite;
    }

    void fuelle(std::uint64_t ab, std::uint64_t anzahl) {
        constexpr std::uint64_t zugabe = 4096;  // a guess at what the last record needs
        ab_ = ab;
        bis_ = ab;
        holeMehr(std::min(anzahl, kAufEinmal) + zugabe);
    }

    /// Nobody asks for what stands before `stelle` any more.
    void vergissBis(std::uint64_t stelle) {
        std::copy(puffer_.begin() + static_cast<std::ptrdiff_t>(stelle - ab_),
                  puffer_.begin() + static_cast<std::ptrdiff_t>(bis_ - ab_), puffer_.begin());
        ab_ = stelle;
    }

    bool holeMehr(std::uint64_t anzahl) {
        const auto gefuellt = static_cast<std::size_t>(bis_ - ab_);
        const auto mehr = static_cast<std::size_t>(std::min(anzahl, text_.groesse - bis_));
        if (puffer_.size() < gefuellt + mehr + GpxMetadatenEigenform::kPolster) {
            puffer_.resize(gefuellt + mehr + GpxMetadatenEigenform::kPolster);
        }
        const std::size_t gelesen = text_.lies(bis_, std::span(puffer_).subspan(gefuellt, mehr));
        std::fill_n(puffer_.begin() + static_cast<std::ptrdiff_t>(gefuellt + gelesen), GpxMetadatenEigenform::kPolster,
                    '\0');
        bis_ += gelesen;
        return gelesen > 0;
    }

    [[nodiscard]] std::string_view ab(std::uint64_t stelle) const {
        return {puffer_.data() + (stelle - ab_), static_cast<std::size_t>(bis_ - stelle)};
    }

    /// Where the first record in the buffer begins. In valid JSON these bytes stand at the beginning of records alone:
    /// inside of a string a quotation mark has an escape, so the first one here ends a name and the others enclose
    /// one. In what is not valid they may mislead, but then the sections do not fit together.
    [[nodiscard]] std::optional<std::uint64_t> sucheEintrag() const {
        constexpr std::string_view beginn = R"(":{"pfad":")";
        constexpr std::string_view davor = R"(},")";
        const std::string_view inhalt = ab(ab_);
        for (auto stelle = inhalt.find(beginn); stelle != std::string_view::npos;
             stelle = inhalt.find(beginn, stelle + 1)) {
            const auto name = inhalt.substr(0, stelle).rfind(davor);
            if (name != std::string_view::npos) {
                return ab_ + name + davor.size() - 1;
            }
        }
        return std::nullopt;
    }

    Eintrag liesEintrag(std::uint64_t stelle) {
        Eintrag eintrag = eintraege_.lies(ab(stelle));
        while (!eintrag) {
            const auto vorhanden = bis_ - stelle;
            constexpr std::uint64_t mindestens = std::uint64_t{16} * 1024;
            const bool amRand = eintraege_.gelesen() + GpxMetadatenEigenform::kPolster > vorhanden;
            if (!amRand || vorhanden > JsonStuecke::kHoechstens) {
                return nullptr;
            }
            vergissBis(stelle);
            if (!holeMehr(std::max(vorhanden, mindestens))) {
                return nullptr;
            }
            eintrag = eintraege_.lies(ab(stelle));
        }
        return eintraege_.gelesen() > JsonStuecke::kHoechstens ? nullptr : eintrag;
    }

    std::optional<Abschnitt> liesEintraege(std::uint64_t von, std::uint64_t grenze) {
        Abschnitt abschnitt{von, von, {}};
        while (abschnitt.bis < grenze) {
            Eintrag eintrag = liesEintrag(abschnitt.bis);
            if (!eintrag) {
                return std::nullopt;
            }
            const std::uint64_t laenge = eintraege_.gelesen();
            abschnitt.stellen.push_back({std::move(eintrag), abschnitt.bis, laenge});
            const std::uint64_t danach = abschnitt.bis + laenge;
            if (danach + CacheEigenform::kEnde.size() > bis_ && bis_ < text_.groesse) {
                holeMehr(CacheEigenform::kEnde.size());
            }
            if (ab(danach) == CacheEigenform::kEnde && bis_ == text_.groesse) {
                abschnitt.bis = text_.groesse;
                break;
            }
            if (!ab(danach).starts_with(',') || danach + 1 == text_.groesse) {
                return std::nullopt;
            }
            abschnitt.bis = danach + 1;
        }
        return abschnitt;
    }

    const CacheEigenform::Text& text_;
    Skizze::Lager lager_;
    GpxMetadatenEigenform eintraege_;
    std::vector<char> puffer_;
    std::uint64_t ab_ = 0;  // of the buffer's bytes, in the text
    std::uint64_t bis_ = 0;
};

/// Puts the sections together. Where one begins behind the end of the one before, what lies between is read now.
std::optional<Stellen> fuegeZusammen(std::vector<Abschnitt>& abschnitte, const CacheEigenform::Text& text,
                                     Abschnittleser& leser) {
    Stellen stellen;
    std::size_t anzahl = 0;
    for (const Abschnitt& abschnitt : abschnitte) {
        anzahl += abschnitt.stellen.size();
    }
    stellen.reserve(anzahl);
    const auto haengeAn = [&stellen](Stellen& neue) {
        std::move(neue.begin(), neue.end(), std::back_inserter(stellen));
        Stellen().swap(neue);
    };
    std::uint64_t bis = CacheEigenform::kAnfang.size();
    for (Abschnitt& abschnitt : abschnitte) {
        if (abschnitt.stellen.empty()) {
            continue;
        }
        if (bis < abschnitt.von) {
            auto luecke = leser.lies(bis, abschnitt.von);
            if (!luecke) {
                return std::nullopt;
            }
            haengeAn(luecke->stellen);
            bis = luecke->bis;
        }
        if (bis != abschnitt.von) {
            return std::nullopt;
        }
        haengeAn(abschnitt.stellen);
        bis = abschnitt.bis;
    }
    if (bis < text.groesse) {
        auto rest = leser.lies(bis, text.groesse);
        if (!rest || rest->bis != text.groesse) {
            return std::nullopt;
        }
        haengeAn(rest->stellen);
    }
    return stellen;
}

}  // namespace

std::optional<Stellen> CacheEigenform::lies(const Text& text, const Helfer& helfer, std::size_t abschnitt) {
    assert(abschnitt > kAnfang.size());
    std::array<char, kAnfang.size() + kEnde.size()> rahmen{};
    if (text.groesse < rahmen.size() || text.lies(0, rahmen) < rahmen.size() ||
        std::memcmp(rahmen.data(), kAnfang.data(), kAnfang.size()) != 0) {
        return std::nullopt;
    }
    if (rahmen[kAnfang.size()] == '}') {
        const bool leer = text.groesse == rahmen.size() && rahmen.back() == '}';
        return leer ? std::optional<Stellen>(Stellen()) : std::nullopt;
    }
    std::vector<Abschnitt> abschnitte(static_cast<std::size_t>((text.groesse - 1) / abschnitt + 1));
    std::atomic<std::size_t> naechster = 0;
    std::atomic<bool> fremd = false;
    const auto arbeite = [&] {
        Abschnittleser leser(text, helfer.bekannte);
        for (std::size_t i = naechster++; i < abschnitte.size() && !fremd; i = naechster++) {
            const std::uint64_t ab = i == 0 ? kAnfang.size() : std::uint64_t{i} * abschnitt;
            const std::uint64_t grenze = std::min<std::uint64_t>(std::uint64_t{i + 1} * abschnitt, text.groesse);
            auto gelesen = i == 0 ? leser.lies(ab, grenze) : leser.liesAbErstem(ab, grenze);
            if (gelesen) {
                abschnitte[i] = std::move(*gelesen);
            } else {
                fremd = true;
            }
        }
    };
    const auto nuetzlich = std::min<std::size_t>(helfer.anzahl, abschnitte.size() - 1);
    arbeiteGemeinsam(helfer.ausfuehrer, static_cast<unsigned>(nuetzlich), arbeite);
    if (fremd) {
        return std::nullopt;
    }
    Abschnittleser leser(text, helfer.bekannte);
    return fuegeZusammen(abschnitte, text, leser);
}

}  // namespace spurkiste
