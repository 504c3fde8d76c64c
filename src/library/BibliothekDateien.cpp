// What the library does to files that it already has, and the change of its folder.

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <exception>
#include <limits>
#include <new>
#include <system_error>
#include <utility>

#include "base/Dateien.h"
#include "base/Dateiumzug.h"
#include "base/Text.h"
#include "library/BibliothekLaeufe.h"
#include "track/GpxLeser.h"
#include "track/GpxSchreiber.h"

namespace spurkiste {

namespace {

constexpr std::string_view kPunktGpx = ".gpx";

/// The file's name, without extension, that the typed text asks for; nothing when it names nothing new.
std::optional<std::string> bereinigt(std::string_view getippt, const std::string& bisher) {
    std::string name(text::trimme(getippt));
    if (name.size() >= kPunktGpx.size() && text::klein(name.substr(name.size() - kPunktGpx.size())) == kPunktGpx) {
        name.resize(name.size() - kPunktGpx.size());
    }
    if (name.empty() || name == bisher) {
        return std::nullopt;
    }
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == ':'; }, '-');
    return name == bisher ? std::nullopt : std::optional(std::move(name));
}

std::string beschreibung(const std::exception& fehler) {
    const auto* systemfehler = dynamic_cast<const std::system_error*>(&fehler);
    return systemfehler != nullptr ? systemfehler->code().message() : fehler.what();
}

/// What became of one write: the record of the written file, or why there is none.
struct Ausgang {
    Eintrag eintrag;
    std::string fehler;
    std::optional<GpxUmkehr> umkehr;  ///< present when the file was written
};

Ausgang versucheSportart(GpxSportart art, const std::string& pfad) {
    Ausgang ausgang;
    try {
        ausgang.umkehr = GpxSchreiber::setzeSportart(art, pfad).umkehr;
        if (auto gelesen = GpxLeser::lese(pfad)) {
            ausgang.eintrag = std::make_shared<const GpxMetadaten>(std::move(*gelesen));
        } else {
            throw GpxSchreibausnahme(GpxSchreibfehler::nachSchreibenNichtLesbar);
        }
    } catch (const std::bad_alloc&) {
        ausgang.fehler = std::generic_category().message(ENOMEM);
    } catch (const std::exception& fehler) {
        ausgang.fehler = beschreibung(fehler);
    }
    return ausgang;
}

}  // namespace

std::optional<std::string> Bibliothek::benenneUm(const GpxMetadaten& eintrag, std::string_view neuerName) {
    const auto name = bereinigt(neuerName, eintrag.dateiName);
    if (!name) {
        return std::nullopt;
    }
    const std::string alt = eintrag.pfad;  // the record may go with the list that it is changed in
    const std::string neu = dateien::ordnerVon(alt).append(*name).append(kPunktGpx);
    if (const auto wurf = wuerfe_.find(neu); wurf != wuerfe_.end() && wurf->second != alt) {
        // The trash may still come to this path for a file that has left it.
        hinweis_.setze("Umbenennen fehlgeschlagen: " + std::generic_category().message(EBUSY));
        return std::nullopt;
    }
    if (!verschiebe(alt, neu, *name)) {
        return std::nullopt;
    }
    verlauf_.tue(Umzug{neu, alt, dateien::stand(neu)});
    zieheUm(alt, neu);
    return neu;
}

/// The library's part of a renaming: whatever is under way with the file finds it under its new path.
void Bibliothek::zieheUm(const std::string& alt, const std::string& neu) {
    for (const auto& wechsel : wechsel_) {
        if (wechsel->pfad == alt) {
            wechsel->pfad = neu;
        }
    }
    for (auto& [gefragt, jetzt] : wuerfe_) {
        if (jetzt == alt) {
            jetzt = neu;
        }
    }
    for (const auto& lauf : laeufe_) {
        lauf->lenkeUm(alt, neu);
    }
    trageUmbenennungNach(alt, neu);
    speichereCache();
}

/// The file's part of a renaming; false, with a notice, when it keeps its old path.
bool Bibliothek::verschiebe(const std::string& alt, const std::string& neu, const std::string& name) {
    if (text::klein(neu) != text::klein(alt) && dateien::gibtEs(neu)) {
        hinweis_.setze("Es gibt schon eine Datei „" + name + ".gpx“");
        return false;
    }
    try {
        dateien::verschiebe(alt, neu);
        return true;
    } catch (const std::system_error& fehler) {
        hinweis_.setze("Umbenennen fehlgeschlagen: " + fehler.code().message());
        return false;
    }
}

/// The list's part of a renaming. Published as two changes, since the path is what a record is known by and the name
/// only one of its texts: whoever follows records finds the known one under its new path first, still as it was, and
/// then, as after every other change, the same record with another text.
void Bibliothek::trageUmbenennungNach(const std::string& alt, const std::string& neu) {
    if (rechnetWer()) {
        protokoll_.umbenannt(alt, neu);
    }
    const auto stelle = verzeichnis_.stelle(alt);
    if (!stelle) {
        return;
    }
    const Eintrag umbenannt = Aenderungsprotokoll::unterPfad(*eintraege_.wert()[*stelle], neu);
    auto umgezogen = std::make_shared<GpxMetadaten>(*umbenannt);
    umgezogen->dateiName = eintraege_.wert()[*stelle]->dateiName;
    eintraege_.aendere([&](Eintraege& liste) {
        // A record of the new path speaks of a file that is gone, or the move would have failed.
        (void)verzeichnis_.entferne(liste, {neu});
        verzeichnis_.ersetze(liste, *verzeichnis_.stelle(alt), std::move(umgezogen));
    });
    eintraege_.aendere([&](Eintraege& liste) { verzeichnis_.ersetze(liste, *verzeichnis_.stelle(neu), umbenannt); });
}

void Bibliothek::setzeSportart(GpxSportart art, const GpxMetadaten& eintrag, Fertig fertig) {
    wechsel_.push_back(std::make_shared<Sportwechsel>(
        Sportwechsel{eintrag.pfad, art, generation_, std::move(fertig), verlauf_.beginne(), eintrag.pfad}));
    schreibeSportart(wechsel_.back());
}

void Bibliothek::schreibeSportart(const std::shared_ptr<Sportwechsel>& wechsel) {
    Ausfuehrer& schreiber = anschluesse_.schreiber != nullptr ? *anschluesse_.schreiber : anschluesse_.arbeiter;
    rueckweg_.hinUndZurueck(
        schreiber, [art = wechsel->art, pfad = wechsel->pfad] { return versucheSportart(art, pfad); },
        [this, wechsel, pfad = wechsel->pfad](const Ausgang& ausgang) {
            vermerke(*wechsel, ausgang.umkehr);
            if (!versucheNocheinmal(wechsel, pfad, ausgang.eintrag != nullptr)) {
                landeSportwechsel(wechsel, ausgang.eintrag, ausgang.fehler);
            }
            const bool schreibtWieder = std::find(wechsel_.begin(), wechsel_.end(), wechsel) != wechsel_.end();
            if (!schreibtWieder) {
                beendeSchritt(wechsel->schritt);
            }
        });
}

/// A file may get another name while its turn is being waited for, or in the middle of it; then what failed under the
/// old name is done under the new one, unless a later change of the same file does it anyway.
bool Bibliothek::versucheNocheinmal(const std::shared_ptr<Sportwechsel>& wechsel, const std::string& pfad,
                                    bool gelungen) {
    if (gelungen || wechsel->pfad == pfad) {
        return false;
    }
    const auto stelle = std::find(wechsel_.begin(), wechsel_.end(), wechsel);
    const bool ueberholt = std::any_of(stelle + 1, wechsel_.end(),
                                       [&](const auto& spaeterer) { return spaeterer->pfad == wechsel->pfad; });
    if (!ueberholt) {
        schreibeSportart(wechsel);
        return true;
    }
    wechsel_.erase(stelle);
    if (wechsel->fertig) {
        wechsel->fertig();
    }
    return true;
}

void Bibliothek::landeSportwechsel(const std::shared_ptr<Sportwechsel>& wechsel, Eintrag neuer,
                                   const std::string& fehler) {
    wechsel_.erase(std::find(wechsel_.begin(), wechsel_.end(), wechsel));
    if (wechsel->generation == generation_) {
        if (neuer == nullptr) {
            hinweis_.setze("Sportart nicht gespeichert: " + fehler);
        } else {
            fuegeEin(neuer->pfad == wechsel->pfad ? std::move(neuer)
                                                  : Aenderungsprotokoll::unterPfad(*neuer, wechsel->pfad));
            hinweis_.setze(std::nullopt);
            schliesseAb({false, std::move(wechsel->fertig)});
            return;
        }
    } else if (ladung_ && neuer &&
               dateien::kindPfad(ordner_.wert(), dateien::letzterTeil(wechsel->pfad)) == wechsel->pfad) {
        protokoll_.geaendert(wechsel->pfad);  // the look into the folder may have come before the write
    }
    if (wechsel->fertig) {
        wechsel->fertig();
    }
}

void Bibliothek::wechsleOrdner(const std::string& ordner) {
    assert(generation_ < std::numeric_limits<std::int64_t>::max());
    ++generation_;
    laeufe_.clear();
    ueberhole();
    ladung_ = std::make_shared<Ladung>();  // overtaken by the one that follows, and until then nothing is cached
    ordner_.setze(dateien::absolut(ordner));
    anschluesse_.einstellungen.schreibe(einstellung::kBibliothekOrdner, ordner_.wert());
    geoeffnet_.setze(false);
    verlauf_.vergiss();  // what it would do could not be seen
    setzeEintraege({}, {});
    rueckweg_.zurueck([this] { lade(); })();
}

}  // namespace spurkiste
