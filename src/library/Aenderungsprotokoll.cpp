#include "library/Aenderungsprotokoll.h"

#include <algorithm>
#include <memory>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "base/Dateien.h"

namespace spurkiste {

void Aenderungsprotokoll::umbenannt(std::string alt, std::string neu) {
    schritte_.emplace_back(Umbenennung{std::move(alt), std::move(neu)});
}

void Aenderungsprotokoll::entfernt(std::vector<std::string> pfade) {
    schritte_.emplace_back(Entfernung{std::move(pfade)});
}

void Aenderungsprotokoll::eingetragen(Eintrag eintrag) {
    schritte_.emplace_back(std::move(eintrag));
}

void Aenderungsprotokoll::geaendert(std::string pfad) {
    schritte_.emplace_back(Aenderung{std::move(pfad)});
}

Eintrag Aenderungsprotokoll::unterPfad(const GpxMetadaten& eintrag, const std::string& pfad) {
    auto umbenannt = std::make_shared<GpxMetadaten>(eintrag);
    umbenannt->pfad = pfad;
    umbenannt->dateiName = dateien::ohneEndung(dateien::letzterTeil(pfad));
    return umbenannt;
}

/// Does to a list what was done to the library's own.
class Aenderungsprotokoll::AufListe {
  public:
    AufListe(std::vector<Eintrag>& eintraege, Pfadverzeichnis& verzeichnis)
        : eintraege_(eintraege), verzeichnis_(verzeichnis) {}

    bool operator()(const Umbenennung& u) {
        (void)verzeichnis_.entferne(eintraege_, {u.neu});
        const auto stelle = verzeichnis_.stelle(u.alt);
        if (stelle) {
            verzeichnis_.ersetze(eintraege_, *stelle, unterPfad(*eintraege_[*stelle], u.neu));
        }
        return stelle.has_value();
    }
    bool operator()(const Entfernung& e) { return verzeichnis_.entferne(eintraege_, e.pfade) > 0; }
    bool operator()(const Eintrag& eintrag) {
        verzeichnis_.fuegeEin(eintraege_, eintrag);
        return true;
    }
    bool operator()(const Aenderung& /*unbekannt*/) { return false; }

  private:
    std::vector<Eintrag>& eintraege_;
    Pfadverzeichnis& verzeichnis_;
};

/// The same where it is open what the list knows already. A record that had to go may have been that of another file
/// which came to the path: then the path is read once more, and a file that is not there gives no record.
class Aenderungsprotokoll::AufStand {
  public:
    explicit AufStand(Stand& stand) : stand_(stand), aufListe_(stand.eintraege, stand.verzeichnis) {}

    void operator()(const Umbenennung& u) {
        if (aufListe_(u)) {
            zuLesen_.insert(u.alt);
        } else {
            zuLesen_.insert(u.neu);
        }
    }
    void operator()(const Entfernung& e) {
        for (const std::string& pfad : e.pfade) {
            if (stand_.verzeichnis.stelle(pfad)) {
                zuLesen_.insert(pfad);
            }
        }
        (void)aufListe_(e);
    }
    void operator()(const Eintrag& eintrag) { (void)aufListe_(eintrag); }
    void operator()(const Aenderung& a) {
        (void)stand_.verzeichnis.entferne(stand_.eintraege, {a.pfad});
        zuLesen_.insert(a.pfad);
    }

    void schliesseAb() {
        for (const std::string& pfad : stand_.zuLesen) {
            zuLesen_.erase(pfad);
        }
        stand_.zuLesen.insert(stand_.zuLesen.end(), zuLesen_.begin(), zuLesen_.end());
    }

  private:
    Stand& stand_;
    AufListe aufListe_;
    std::set<std::string> zuLesen_;
};

void Aenderungsprotokoll::spieleNach(std::vector<Eintrag>& eintraege, Pfadverzeichnis& verzeichnis) const {
    AufListe auf(eintraege, verzeichnis);
    for (const Schritt& schritt : schritte_) {
        std::visit([&](const auto& s) { (void)auf(s); }, schritt);
    }
}

void Aenderungsprotokoll::spieleNach(Stand& stand) const {
    if (leer()) {
        return;
    }
    AufStand auf(stand);
    for (const Schritt& schritt : schritte_) {
        std::visit(auf, schritt);
    }
    auf.schliesseAb();
}

}  // namespace spurkiste
