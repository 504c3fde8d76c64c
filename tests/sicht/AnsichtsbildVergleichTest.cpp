#include <algorithm>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/Namensordnung.h"
#include "base/Text.h"
#include "hilfe/Ansichtsbau.h"
#include "sicht/Ansichtsbild.h"

namespace spurkiste {

namespace {

using Texte = std::vector<std::string>;

// The picture the plain way: a pass over all records for the table and for every option list, and a stable sort.
namespace plan {

std::string sport(const GpxMetadaten& e, const Ansichtstexte& texte) {
    const auto art = e.nenntSport() ? GpxSportart::aus(e.sportRoh) : e.sportVorschlag();
    return art ? texte.sportarten[static_cast<std::size_t>(*art)] : e.nenntSport() ? *e.sportRoh : "–";
}

bool gleich(const std::optional<std::string>& filter, const std::optional<std::string>& wert) {
    return !filter || (wert && text::nfc(*filter) == text::nfc(*wert));
}

/// The text that a record has for a filter.
std::optional<std::string> wert(FilterFeld feld, const GpxMetadaten& e, const Ansichtstexte& texte) {
    switch (feld) {
        case FilterFeld::start:
            return e.startOrt;
        case FilterFeld::ziel:
            return e.zielOrt;
        case FilterFeld::sport:
            return sport(e, texte);
        case FilterFeld::ghost:
            return e.hatZeitstempel ? "Ghost-tauglich" : "ohne Zeitstempel";
        case FilterFeld::art:
            return e.rundkurs ? "Rundkurs" : "Strecke";
        default:
            return e.streckeMeter < 5000 ? "unter 5 km" : e.streckeMeter <= 20000 ? "5–20 km" : "über 20 km";
    }
}

bool findet(const GpxMetadaten& e, const std::string& suche, const std::string& sprache) {
    for (const auto& text : {std::optional(e.dateiName), e.spurName, e.startOrt, e.zielOrt}) {
        if (text && text::falte(*text, sprache).find(text::falte(suche, sprache)) != std::string::npos) {
            return true;
        }
    }
    return suche.empty();
}

std::vector<Eintrag> treffer(const std::vector<Eintrag>& alle, const Ansichtszustand& z, const Ansichtstexte& texte,
                             std::optional<FilterFeld> ausser) {
    std::vector<Eintrag> ergebnis;
    for (const auto& e : alle) {
        const bool passt = std::all_of(kFilter.begin(), kFilter.end(), [&](const Filterangaben& filter) {
            return ausser == *filter.feld || gleich(z.filter[filter.feld], wert(filter.feld, *e, texte));
        });
        if (passt && findet(*e, z.suche, texte.sprache)) {
            ergebnis.push_back(e);
        }
    }
    return ergebnis;
}

Texte optionen(FilterFeld feld, const std::vector<Eintrag>& treffer, const std::optional<std::string>& wahl,
               const Ansichtstexte& texte) {
    std::set<std::string> menge;
    for (const auto& e : treffer) {
        if (const auto text = wert(feld, *e, texte)) {
            menge.insert(text::nfc(*text));
        }
    }
    menge.erase("–");
    if (wahl) {
        menge.insert(text::nfc(*wahl));
    }
    if (feld < FilterFeld::ghost) {
        return {menge.begin(), menge.end()};
    }
    Texte faelle{"Ghost-tauglich", "ohne Zeitstempel", "Rundkurs", "Strecke", "unter 5 km", "5–20 km", "über 20 km"};
    std::erase_if(faelle, [&](const std::string& fall) { return !menge.contains(fall); });
    return faelle;
}

template <typename Wert>
int folge(const Wert& a, const Wert& b) {
    return a < b ? -1 : b < a ? 1 : 0;
}

int folge(Spalte spalte, const GpxMetadaten& a, const GpxMetadaten& b, const Ansichtstexte& texte,
          const text::Namensordnung& ordnung) {
    switch (spalte) {
        case Spalte::name:
            return folge(ordnung.schluessel(a.dateiName), ordnung.schluessel(b.dateiName));
        case Spalte::datum:
            return folge(a.anzeigeDatum(), b.anzeigeDatum());
        case Spalte::sport:
            return folge(ordnung.schluessel(sport(a, texte)), ordnung.schluessel(sport(b, texte)));
        case Spalte::laenge:
            return folge(a.streckeMeter, b.streckeMeter);
        case Spalte::zeit:
            return folge(a.dauerSekunden, b.dauerSekunden);
        case Spalte::anstieg:
            return folge(a.anstiegMeter, b.anstiegMeter);
        case Spalte::punkte:
            return folge(a.punkte, b.punkte);
        case Spalte::ghost:
            return folge(a.hatZeitstempel, b.hatZeitstempel);
        default:
            return folge(a.rundkurs, b.rundkurs);
    }
}

void sortiere(std::vector<Eintrag>& eintraege, const Sortierung& sortierung, const Ansichtstexte& texte) {
    const text::Namensordnung ordnung(texte.sprache);
    std::stable_sort(eintraege.begin(), eintraege.end(), [&](const Eintrag& a, const Eintrag& b) {
        for (const auto& [spalte, absteigend] : sortierung.vergleiche()) {
            if (const int ergebnis = folge(spalte, *a, *b, texte, ordnung); ergebnis != 0) {
                return (ergebnis < 0) != absteigend;
            }
        }
        return false;
    });
}

}  // namespace plan

/// Throws dice for records, states and changes of both.
class Wuerfel {
  public:
    explicit Wuerfel(unsigned saat) : zufall_(saat) {}

    std::size_t unter(std::size_t grenze) { return zufall_() % grenze; }

    template <typename Wert>
    Wert aus(std::initializer_list<Wert> werte) {
        return *(werte.begin() + unter(werte.size()));
    }

    std::optional<std::string> vielleicht(std::initializer_list<const char*> werte) {
        return unter(3) == 0 ? std::nullopt : std::optional<std::string>(aus(werte));
    }

    Eintrag eintrag(const std::string& pfad) {
        return eintragMit(pfad, [&](GpxMetadaten& e) {
            e.dateiName = aus({"Tour ", "tour ", "Übung ",
                               "U\xcc\x88"
                               "bung ",
                               "Isar ", "İzmir ", "SSS", "ß"});
            e.dateiName += std::to_string(unter(12));
            e.spurName = vielleicht({"Morgen", "See", "Zürich", "\xff"});
            e.startOrt = vielleicht({"Zürich", "Zu\xcc\x88rich", "Zug", "Ägeri", "alp", ""});
            e.zielOrt = vielleicht({"Zürich", "Bern", "alp See", "ıssız"});
            e.sportRoh = vielleicht({"", "running", "Yoga", "yoga", "–", "cycling", "ski"});
            e.datum = unter(2) == 0 ? std::nullopt : std::optional(Zeitpunkt{static_cast<double>(unter(4)) - 2.0});
            e.streckeMeter = aus({0.0, -0.0, 4999.9, 5000.0, 20000.0, 20000.1, 1e300, 36000.0});
            e.dauerSekunden = aus({0.0, 0.5, 3600.0});
            e.anstiegMeter = aus({0.0, -1.0, 800.0});
            e.punkte = aus<std::int64_t>({-5, 0, 3, std::int64_t{1} << 60});
            e.rundkurs = unter(2) == 0;
            e.hatZeitstempel = unter(2) == 0;
        });
    }

    void aendere(Ansichtszustand& z) {
        switch (unter(11)) {
            case 0:
                z.filter[FilterFeld::start] = vielleicht({"Zürich", "Zug", "fort", ""});
                break;
            case 1:
                z.filter[FilterFeld::ziel] = vielleicht({"Zu\xcc\x88rich", "alp See"});
                break;
            case 2:
                z.filter[FilterFeld::sport] = vielleicht({"Laufen", "Yoga", "–", "Correr"});
                break;
            case 3:
                z.filter[FilterFeld::ghost] = vielleicht({"Ghost-tauglich", "ohne Zeitstempel"});
                z.filter[FilterFeld::art] = vielleicht({"Rundkurs", "Strecke"});
                break;
            case 4:
                z.filter[FilterFeld::laenge] = vielleicht({"unter 5 km", "5–20 km", "über 20 km"});
                break;
            case 5:
                z.suche = aus({"", "", "z", "ZÜ", "p s", " ", "i", "I", "ß", "tour 1", "\xff"});
                break;
            case 6:
                z.setzeZurueck();
                break;
            case 7:
                z.auswahl = {"/bibliothek/" + std::to_string(unter(40)) + ".gpx"};
                break;
            default:
                z.sortierung.klicke(kSpalten[unter(kSpalten.size())].spalte);
        }
    }

    void aendere(std::vector<Eintrag>& eintraege) {
        const auto stelle = [&] { return eintraege.begin() + static_cast<std::ptrdiff_t>(unter(eintraege.size())); };
        switch (unter(eintraege.empty() ? 1 : 6)) {
            case 0:
                for (std::size_t i = eintraege.empty() ? 30 : unter(4); i > 0; --i) {
                    eintraege.push_back(eintrag(std::to_string(naechster_++)));
                }
                break;
            case 1:
                for (std::size_t i = unter(5); i > 0; --i) {
                    const auto ersetzter = stelle();
                    auto pfad = (*ersetzter)->pfad.substr(12);
                    *ersetzter = eintrag(pfad.substr(0, pfad.size() - 4));
                }
                break;
            case 2:
                eintraege.erase(stelle());
                break;
            case 3:
                std::shuffle(eintraege.begin(), eintraege.end(), zufall_);
                break;
            case 4:
                std::sort(eintraege.begin(), eintraege.end(),
                          [](const Eintrag& a, const Eintrag& b) { return a->pfad < b->pfad; });
                break;
            default:
                eintraege.resize(eintraege.size() - unter(std::min<std::size_t>(eintraege.size(), 8)));
        }
    }

  private:
    std::mt19937 zufall_;
    unsigned naechster_ = 0;
};

}  // namespace

TEST(AnsichtsbildVergleichTest, DasBildIstDasDesEinfachenWegsWasAuchImSpeicherLiegt) {
    auto umbenannt = texteIn("de");
    umbenannt.sportarten = {"Ciclismo", "Correr", "Moto",  "Coche", "Senderismo", "Andar", "BTT",  "Gravel",
                            "E-bici",   "Trail",  "Nadar", "Esquí", "Patín",      "Remo",  "Kayak"};
    for (unsigned saat = 0; saat < 40; ++saat) {
        Wuerfel wuerfel(saat);
        Zeilenspeicher speicher;
        std::vector<Eintrag> eintraege;
        Ansichtszustand zustand;
        Ansichtstexte texte = texteIn("de");
        std::map<std::string, std::uint32_t> kennungen;
        std::map<const GpxMetadaten*, std::shared_ptr<const Zeile>> zeilenDavor;
        for (int schritt = 0; schritt < 60; ++schritt) {
            SCOPED_TRACE(testing::Message() << "seed " << saat << ", step " << schritt);
            const bool andereSprache = wuerfel.unter(8) == 0;
            if (andereSprache) {
                texte = wuerfel.aus({texteIn("de"), umbenannt, texteIn("tr")});
                zeilenDavor.clear();
            } else if (wuerfel.unter(2) == 0) {
                wuerfel.aendere(eintraege);
            } else {
                wuerfel.aendere(zustand);
            }
            const auto bild = berechneAnsichtsbild(eintraege, zustand, texte, speicher);

            const auto ohne = [&](FilterFeld feld) { return plan::treffer(eintraege, zustand, texte, feld); };
            auto sichtbar = plan::treffer(eintraege, zustand, texte, std::nullopt);
            double summe = 0.0;
            for (const auto& e : sichtbar) {
                summe += e->streckeMeter;
            }
            plan::sortiere(sichtbar, zustand.sortierung, texte);
            std::vector<Eintrag> gezeigt;
            for (const auto& zeile : bild.zeilen) {
                gezeigt.push_back(zeile->eintrag());
                EXPECT_EQ(kennungen.try_emplace(zeile->eintrag()->pfad, zeile->kennung()).first->second,
                          zeile->kennung());
                EXPECT_EQ(zeilenDavor.try_emplace(zeile->eintrag().get(), zeile).first->second, zeile);
            }
            ASSERT_EQ(gezeigt, sichtbar);
            EXPECT_EQ(bild.anzahl, eintraege.size());
            EXPECT_EQ(bild.summeMeter, summe);
            for (const Filterangaben& filter : kFilter) {
                EXPECT_EQ(bild.optionen[filter.feld],
                          plan::optionen(filter.feld, ohne(filter.feld), zustand.filter[filter.feld], texte));
            }
            const auto gewaehlt = std::find_if(eintraege.begin(), eintraege.end(),
                                               [&](const Eintrag& e) { return zustand.auswahl.contains(e->pfad); });
            EXPECT_EQ(bild.ausgewaehlt, gewaehlt == eintraege.end() ? nullptr : *gewaehlt);
        }
    }
}

}  // namespace spurkiste
