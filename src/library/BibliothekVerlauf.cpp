// How the library takes back what was done to its files, and does it again.

#include <algorithm>
#include <exception>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"
#include "library/BibliothekLaeufe.h"
#include "library/Verlaufstexte.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace spurkiste {

namespace texte = verlaufstexte;

/// One call of nimmZurueck(). Bound to the main thread.
struct Bibliothek::Ruecknahme {
    Richtung richtung = Richtung::zurueck;
    NachRuecknahme fertig;
    std::string ordner;           ///< the library's folder when the step was begun
    Verlauf::Schritt taten;       ///< what is still to be done
    Verlauf::Schritt gegentaten;  ///< the inverse of what has been done
    std::vector<std::string> pfade;
    std::vector<texte::Fehlschlag> fehlschlaege;
    std::optional<Tat> eine;  ///< of those that succeeded, the first one

    void gelang(const Tat& tat, Tat gegentat, std::string pfad) {
        if (!eine) {
            eine = tat;
        }
        gegentaten.push_back(std::move(gegentat));
        if (!pfad.empty()) {
            pfade.push_back(std::move(pfad));
        }
    }
};

namespace {

/// What became of a deed away from the main thread.
struct Ausgang {
    Tat tat;
    std::optional<Tat> gegentat;  ///< absent when it was not done
    std::string grund;            ///< why not
    Eintrag eintrag;              ///< the file as it is read now; null when it cannot be
};

Eintrag lies(const std::string& pfad) {
    try {
        auto gelesen = GpxLeser::lese(pfad);
        return gelesen ? std::make_shared<const GpxMetadaten>(std::move(*gelesen)) : nullptr;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

/// Why a file that has not the state any more is left alone; nothing when it has it.
std::optional<std::string> hindernis(const std::string& pfad, const std::optional<dateien::Stand>& stand) {
    const auto jetzt = dateien::stand(pfad);
    if (jetzt == stand) {
        return std::nullopt;
    }
    return jetzt ? texte::geaendert() : texte::verschwunden();
}

void tue(const Umschrift& umschrift, const Papierkorb* /*papierkorb*/, Ausgang& ausgang) {
    if (auto grund = hindernis(umschrift.pfad, umschrift.umkehr.stand)) {
        ausgang.grund = std::move(*grund);
    } else if (auto umkehr = GpxSchreiber::kehreUm(umschrift.umkehr, umschrift.pfad)) {
        ausgang.gegentat = Umschrift{umschrift.pfad, std::move(*umkehr)};
        ausgang.eintrag = lies(umschrift.pfad);
    } else {
        ausgang.grund = texte::geaendert();
    }
}

void tue(const Rueckholung& holung, const Papierkorb* papierkorb, Ausgang& ausgang) {
    const Papierkorb::Fund& fund = holung.fund;
    if (auto grund = hindernis(fund.ort, fund.stand)) {
        ausgang.grund = std::move(*grund);
    } else {
        papierkorb->holeZurueck(fund);
        ausgang.gegentat = Wegwurf{fund.pfad, dateien::stand(fund.pfad)};
        ausgang.eintrag = lies(fund.pfad);
    }
}

template <typename Art>
void versuche(const Art& art, const Papierkorb* papierkorb, Ausgang& ausgang) {
    try {
        tue(art, papierkorb, ausgang);
    } catch (const std::system_error& fehler) {
        ausgang.grund = texte::gescheitert(fehler.code().message());
    } catch (const std::exception& fehler) {
        ausgang.grund = texte::gescheitert(fehler.what());
    }
}

/// Does those deeds that must not keep the main thread waiting, and none of the others.
std::vector<Ausgang> fuehreAus(const Verlauf::Schritt& taten, const Papierkorb* papierkorb) {
    std::vector<Ausgang> ausgaenge;
    for (const Tat& tat : taten) {
        Ausgang ausgang{tat, std::nullopt, {}, nullptr};
        if (const auto* umschrift = std::get_if<Umschrift>(&tat)) {
            versuche(*umschrift, papierkorb, ausgang);
        } else if (const auto* holung = std::get_if<Rueckholung>(&tat)) {
            versuche(*holung, papierkorb, ausgang);
        } else {
            continue;
        }
        ausgaenge.push_back(std::move(ausgang));
    }
    return ausgaenge;
}

std::string pfadVon(const Tat& tat) {
    if (const auto* umschrift = std::get_if<Umschrift>(&tat)) {
        return umschrift->pfad;
    }
    return std::get<Rueckholung>(tat).fund.pfad;
}

}  // namespace

/// What a change of a sport leaves in the history: nothing when it changed no byte.
void Bibliothek::vermerke(const Sportwechsel& wechsel, const std::optional<GpxUmkehr>& umkehr) {
    if (!umkehr) {
        return;
    }
    if (umkehr->spleisse.empty()) {
        verlauf_.verfolge(Richtung::zurueck, wechsel.pfad, umkehr->vorher, umkehr->stand);
        return;
    }
    // A renaming that came later has seen the file as it was before.
    verlauf_.verfolge(Richtung::zurueck, wechsel.pfad, umkehr->vorher, umkehr->stand, wechsel.schritt);
    verlauf_.ergaenze(wechsel.schritt, Umschrift{wechsel.anfangs, *umkehr});
}

void Bibliothek::beendeSchritt(Verlauf::Nummer schritt) {
    verlauf_.beende(schritt);
    gehImVerlaufWeiter();
}

void Bibliothek::nimmZurueck(Richtung richtung, NachRuecknahme fertig) {
    auto ruecknahme = std::make_shared<Ruecknahme>();
    ruecknahme->richtung = richtung;
    ruecknahme->fertig = std::move(fertig);
    ruecknahmen_.push_back(std::move(ruecknahme));
    gehImVerlaufWeiter();
}

void Bibliothek::gehImVerlaufWeiter() {
    if (nimmtZurueck_ || ruecknahmen_.empty() || !verlauf_.ruht()) {
        return;
    }
    nimmtZurueck_ = true;
    const auto ruecknahme = ruecknahmen_.front();
    ruecknahmen_.pop_front();
    ruecknahme->ordner = ordner_.wert();
    auto taten = verlauf_.nimm(ruecknahme->richtung);
    if (!taten) {
        nimmtZurueck_ = false;
        if (ruecknahme->fertig) {
            ruecknahme->fertig({texte::nichts(ruecknahme->richtung), {}});
        }
        gehImVerlaufWeiter();
        return;
    }
    ruecknahme->taten = std::move(*taten);
    benenneZurueck(*ruecknahme);
    stelleWiederHer(ruecknahme);
}

/// The renamings of a step.
void Bibliothek::benenneZurueck(Ruecknahme& ruecknahme) {
    for (const Tat& tat : ruecknahme.taten) {
        const auto* umzug = std::get_if<Umzug>(&tat);
        if (umzug == nullptr) {
            continue;
        }
        auto grund = hindernis(umzug->von, umzug->stand);
        try {
            if (!grund) {
                dateien::verschiebe(umzug->von, umzug->nach);
            }
        } catch (const std::system_error& fehler) {
            grund = texte::gescheitert(fehler.code().message());
        }
        if (grund) {
            ruecknahme.fehlschlaege.push_back({umzug->von, std::move(*grund)});
        } else {
            ruecknahme.gelang(tat, Umzug{umzug->nach, umzug->von, umzug->stand}, umzug->nach);
            zieheUm(umzug->von, umzug->nach);
        }
    }
}

/// What of a step writes and reads files: behind all that is still to be written, and read at once.
void Bibliothek::stelleWiederHer(const std::shared_ptr<Ruecknahme>& ruecknahme) {
    const bool noetig = std::any_of(ruecknahme->taten.begin(), ruecknahme->taten.end(), [](const Tat& tat) {
        return std::holds_alternative<Umschrift>(tat) || std::holds_alternative<Rueckholung>(tat);
    });
    if (!noetig) {
        wirfWiederWeg(ruecknahme);
        return;
    }
    Ausfuehrer& schreiber = anschluesse_.schreiber != nullptr ? *anschluesse_.schreiber : anschluesse_.arbeiter;
    rueckweg_.hinUndZurueck(
        schreiber,
        [taten = ruecknahme->taten, papierkorb = anschluesse_.papierkorb] { return fuehreAus(taten, papierkorb); },
        [this, ruecknahme](const std::vector<Ausgang>& ausgaenge) {
            bool neues = false;
            for (const Ausgang& ausgang : ausgaenge) {
                const std::string pfad = pfadVon(ausgang.tat);
                if (!ausgang.gegentat) {
                    ruecknahme->fehlschlaege.push_back({pfad, ausgang.grund});
                    continue;
                }
                ruecknahme->gelang(ausgang.tat, *ausgang.gegentat, pfad);
                if (const auto* getan = std::get_if<Umschrift>(&ausgang.tat)) {
                    // The bytes of before, in another file: what comes next counts on those.
                    const auto& neu = std::get<Umschrift>(*ausgang.gegentat).umkehr.stand;
                    verlauf_.verfolge(ruecknahme->richtung, pfad, getan->umkehr.vorher, neu);
                }
                // Unless the file has got another name in this moment: who reads it then finds all of it.
                if (ausgang.eintrag && ordner_.wert() == ruecknahme->ordner && dateien::gibtEs(pfad)) {
                    fuegeEin(ausgang.eintrag);
                    neues = true;
                }
            }
            if (neues) {
                schliesseAb({false, {}});
            }
            wirfWiederWeg(ruecknahme);
        });
}

/// What of a step goes to the trash.
void Bibliothek::wirfWiederWeg(const std::shared_ptr<Ruecknahme>& ruecknahme) {
    std::unordered_map<std::string, Tat> wuerfe;
    std::vector<std::string> pfade;
    for (const Tat& tat : ruecknahme->taten) {
        const auto* wurf = std::get_if<Wegwurf>(&tat);
        if (wurf == nullptr) {
            continue;
        }
        if (auto grund = hindernis(wurf->pfad, wurf->stand)) {
            ruecknahme->fehlschlaege.push_back({wurf->pfad, std::move(*grund)});
        } else {
            wuerfe.emplace(wurf->pfad, tat);
            pfade.push_back(wurf->pfad);
        }
    }
    if (pfade.empty()) {
        beendeRuecknahme(*ruecknahme);
        return;
    }
    wirfWeg(std::move(pfade), [this, ruecknahme, wuerfe](const Papierkorb::Ergebnis& ergebnis) {
        for (const Papierkorb::Fund& fund : ergebnis.funde) {
            if (const auto wurf = wuerfe.find(fund.pfad); wurf != wuerfe.end()) {
                ruecknahme->gelang(wurf->second, Rueckholung{fund}, {});
            }
        }
        for (const auto& [pfad, tat] : wuerfe) {
            const auto& verschoben = ergebnis.verschoben;
            if (std::find(verschoben.begin(), verschoben.end(), pfad) == verschoben.end()) {
                ruecknahme->fehlschlaege.push_back(
                    {pfad, ergebnis.fehler ? texte::gescheitert(*ergebnis.fehler) : texte::verschwunden()});
            }
        }
        beendeRuecknahme(*ruecknahme);
    });
}

void Bibliothek::beendeRuecknahme(Ruecknahme& ruecknahme) {
    Zurueckgenommen ergebnis;
    if (ruecknahme.eine) {
        ergebnis.text = texte::getan(*ruecknahme.eine, ruecknahme.richtung, ruecknahme.gegentaten.size());
    }
    if (ordner_.wert() == ruecknahme.ordner) {
        verlauf_.legeAb(ruecknahme.richtung, std::move(ruecknahme.gegentaten));
        ergebnis.pfade = std::move(ruecknahme.pfade);
        if (!ruecknahme.fehlschlaege.empty()) {
            hinweis_.setze(texte::nichtGetan(ruecknahme.richtung, ruecknahme.fehlschlaege));
        }
    }
    nimmtZurueck_ = false;
    if (ruecknahme.fertig) {
        ruecknahme.fertig(ergebnis);
    }
    gehImVerlaufWeiter();
}

}  // namespace spurkiste
