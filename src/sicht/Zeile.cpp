#include "sicht/Zeile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <utility>

#include "base/Text.h"
#include "base/Zahl.h"
#include "sicht/Formate.h"

namespace spurkiste {

namespace {

constexpr std::string_view kRoutenzeichen = "point.topleft.down.curvedto.point.bottomright.up";

/// At most so many bytes of a text, and whole characters only.
std::string_view gekuerzt(std::string_view text) {
    if (text.size() <= Zeile::kLaengster) {
        return text;
    }
    std::size_t ende = Zeile::kLaengster;
    while (ende > 0 && (static_cast<unsigned char>(text[ende]) & 0xC0U) == 0x80U) {
        --ende;
    }
    return text.substr(0, ende);
}

void haengeAn(std::u16string& ziel, std::string_view text) {
    const auto istSchlicht = [](char zeichen) { return zeichen >= ' ' && zeichen <= '~'; };
    const auto kurz = gekuerzt(text);
    if (std::all_of(kurz.begin(), kurz.end(), istSchlicht)) {
        ziel.append(kurz.begin(), kurz.end());
    } else if (kurz == kStrich) {
        ziel += u'–';
    } else {
        ziel += text::utf16(text::einzeilig(kurz));
    }
}

std::string streckenText(double meter) {
    return std::isfinite(meter) ? Formate::strecke(meter) : std::string(kStrich);
}

std::string dauerText(double sekunden) {
    return sekunden > 0.0 && std::isfinite(sekunden) ? Formate::dauer(sekunden) : std::string(kStrich);
}

std::string anstiegText(double meter) {
    return meter > 0.0 ? std::to_string(zahl::ganz(meter)) + " m" : std::string(kStrich);
}

std::string koordinatenText(const std::optional<Koordinate>& ort) {
    const bool endlich = ort && std::isfinite(ort->breite) && std::isfinite(ort->laenge);
    return endlich ? Formate::koordinate(*ort) : std::string(kStrich);
}

}  // namespace

Zeile::Zeile(Eintrag eintrag, std::uint32_t kennung, std::optional<GpxSportart> geschrieben, std::string_view sportText)
    : eintrag_(std::move(eintrag)),
      kennung_(kennung),
      geschrieben_(geschrieben),
      sport_(geschrieben ? geschrieben : eintrag_->sportVorschlag()) {
    static_assert(kSpalten.size() * kLaengster <= std::numeric_limits<std::uint16_t>::max());
    const GpxMetadaten& e = *eintrag_;
    const std::array<std::string, kSpalten.size()> texte{
        e.dateiName,
        Formate::datumsFormat(e.anzeigeDatum()),
        std::string(sportText),
        streckenText(e.streckeMeter),
        dauerText(e.dauerSekunden),
        anstiegText(e.anstiegMeter),
        std::to_string(e.punkte),
        {},  // Ghost and type have two texts each
        {},
        e.startOrt ? *e.startOrt : koordinatenText(e.start),
        e.zielOrt ? *e.zielOrt : koordinatenText(e.ende),
    };
    std::size_t bytes = 0;
    for (const auto& einer : texte) {
        bytes += std::min(einer.size(), kLaengster);
    }
    texte_.reserve(bytes);  // UTF-16 needs no more units than UTF-8 bytes
    for (std::size_t spalte = 0; spalte < texte.size(); ++spalte) {
        haengeAn(texte_, texte[spalte]);
        enden_[spalte] = static_cast<std::uint16_t>(texte_.size());
    }
}

std::u16string_view Zeile::text(Spalte spalte) const {
    if (spalte == Spalte::ghost) {
        return eintrag_->hatZeitstempel ? u"✓" : u"–";
    }
    if (spalte == Spalte::art) {
        return eintrag_->rundkurs ? u"⟲ Rundkurs" : u"→ Strecke";
    }
    const auto stelle = static_cast<std::size_t>(spalte);
    const std::size_t anfang = stelle == 0 ? 0 : enden_[stelle - 1];
    return std::u16string_view(texte_).substr(anfang, enden_[stelle] - anfang);
}

Schriftfarbe Zeile::farbe(Spalte spalte) const {
    const auto tinteWenn = [](bool kraeftig) { return kraeftig ? Schriftfarbe::tinte : Schriftfarbe::tinteLeise; };
    switch (spalte) {
        case Spalte::datum:
            return tinteWenn(eintrag_->datum.has_value());
        case Spalte::sport:
            return tinteWenn(sportAusDatei());
        case Spalte::ghost:
            return eintrag_->hatZeitstempel ? Schriftfarbe::gruen : Schriftfarbe::tinteLeise;
        case Spalte::art:
            return Schriftfarbe::tinteLeise;
        case Spalte::start:
            return tinteWenn(eintrag_->startOrt.has_value());
        case Spalte::ziel:
            return tinteWenn(eintrag_->zielOrt.has_value());
        default:
            return Schriftfarbe::tinte;
    }
}

std::u16string Zeile::tooltip(Spalte spalte) const {
    switch (spalte) {
        case Spalte::datum:
            return eintrag_->datum ? u"Erster Zeitstempel der Spur" : u"Kein Zeitstempel — Dateidatum";
        case Spalte::sport:
            return sportAusDatei()
                       ? u"Sportart aus der GPX-Datei — wählen, um <type> zu ändern"
                       : u"Automatischer Vorschlag — wählen, um <type> dauerhaft in die GPX-Datei zu schreiben";
        case Spalte::ghost:
            return eintrag_->hatZeitstempel ? u"Zeitstempel vorhanden — Ghost-tauglich" : u"Keine Zeitstempel";
        case Spalte::start:
            return text::utf16(koordinatenText(eintrag_->start));
        case Spalte::ziel:
            return text::utf16(koordinatenText(eintrag_->ende));
        default:
            return {};
    }
}

std::u16string Zeile::vorleseText(Spalte spalte) const {
    switch (spalte) {
        case Spalte::sport:
            return u"Sportart " + std::u16string(text(spalte));
        case Spalte::ghost:
            return tooltip(spalte);
        default:
            return std::u16string(text(spalte));
    }
}

std::string_view Zeile::symbol() const {
    return geschrieben_ ? geschrieben_->symbol() : kRoutenzeichen;
}

}  // namespace spurkiste
