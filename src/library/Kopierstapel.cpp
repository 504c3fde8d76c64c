#include "library/Kopierstapel.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <new>
#include <optional>
#include <system_error>

#include "base/Dateien.h"
#include "base/Kopie.h"

namespace spurkiste {

namespace {

/// Does something and says why it could not be done; empty when it could.
template <typename Tue>
std::error_code versuche(const Tue& tue) {
    try {
        tue();
        return {};
    } catch (const std::system_error& fehler) {
        return fehler.code();
    } catch (const std::bad_alloc&) {
        return {ENOMEM, std::generic_category()};
    }
}

bool fehltEsAnNummern(const std::error_code& fehler) {
    return fehler.value() == EMFILE || fehler.value() == ENFILE;
}

/// Puts the copy into the folder, under the first free one of the source's names, and returns its path.
/// Throws std::system_error.
std::string stelleHin(dateien::Kopie& kopie, const std::string& ordner, const std::string& quelle) {
    const std::string name(dateien::letzterTeil(quelle));
    const std::string stamm(dateien::ohneEndung(name));
    std::string ziel = dateien::kindPfad(ordner, name);
    for (std::int64_t zaehler = 2; !kopie.stelleHin(ziel); ++zaehler) {
        ziel = dateien::kindPfad(ordner, stamm + " " + std::to_string(zaehler) + ".gpx");
    }
    return ziel;
}

}  // namespace

Kopierstapel Kopierstapel::kopiere(const std::string& ordner, const std::vector<std::string>& quellen,
                                   const std::atomic<bool>& abbruch) {
    constexpr std::int64_t genug = std::int64_t{16} << 20U;  // bytes that a slow disk writes in a second
    Kopierstapel stapel;
    std::deque<std::optional<dateien::Kopie>> unterwegs;
    std::int64_t bytes = 0;
    for (const std::string& quelle : quellen) {
        if (!unterwegs.empty() && (abbruch || bytes >= genug)) {
            break;
        }
        auto& kopie = unterwegs.emplace_back();
        const auto fehler = versuche([&] { kopie.emplace(quelle, ordner); });
        if (fehltEsAnNummern(fehler) && unterwegs.size() > 1) {  // those of this batch are free again after it
            unterwegs.pop_back();
            break;
        }
        stapel.kopien.push_back({quelle, {}, fehler ? fehler.message() : std::string()});
        bytes += kopie ? kopie->groesse() : 0;
    }
    for (std::size_t i = 0; i < unterwegs.size(); ++i) {
        Kopie& ergebnis = stapel.kopien[i];
        if (unterwegs[i]) {
            const auto fehler =
                versuche([&] { ergebnis.ziel = spurkiste::stelleHin(*unterwegs[i], ordner, ergebnis.quelle); });
            ergebnis.fehler = fehler ? fehler.message() : std::string();
            unterwegs[i].reset();
        }
    }
    dateien::sichereOrdner(ordner);
    stapel.rest.assign(quellen.begin() + static_cast<std::ptrdiff_t>(stapel.kopien.size()), quellen.end());
    return stapel;
}

}  // namespace spurkiste
