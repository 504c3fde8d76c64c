#include "track/GpxSpleisse.h"

#include <algorithm>

namespace spurkiste {

namespace {

constexpr std::size_t kZielTiefe = 2;  // below the root element
constexpr std::size_t kKindTiefe = 3;

std::string_view ohnePraefix(std::string_view name) {
    const auto doppelpunkt = name.find(':');
    return doppelpunkt == std::string_view::npos ? name : name.substr(doppelpunkt + 1);
}

/// What follows <type> in a track or a route.
bool folgtAufTyp(std::string_view name) {
    const auto wort = ohnePraefix(name);
    return wort == "extensions" || wort == "trkseg" || wort == "rtept";
}

/// A place where a <type> has to stand, as the walk through the file finds it.
struct Typ {
    XmlBereich schild;  ///< its start tag
    bool leer = false;  ///< the start tag is all there is
    XmlBereich inhalt;  ///< between the tags, when it is not
};

/// A track or a route.
struct Ziel {
    XmlBereich schild;
    bool leer = false;
    std::optional<Typ> typ;
    std::optional<std::size_t> folgendes;  ///< where the first element begins that the type comes before
    XmlBereich ende;                       ///< its end tag
};

/// Collects the tracks and routes of a file.
class Sucher final : public XmlOrtung {
  public:
    void anfang(std::string_view name, XmlBereich schild, bool leer) override {
        ++tiefe_;
        if (tiefe_ == kZielTiefe) {
            const auto wort = ohnePraefix(name);
            inZiel_ = wort == "trk" || wort == "rte";
            if (inZiel_) {
                ziele_.push_back({schild, leer, {}, {}, {}});
            }
        } else if (tiefe_ == kKindTiefe && inZiel_) {
            Ziel& ziel = ziele_.back();
            if (!ziel.typ && ohnePraefix(name) == "type") {
                ziel.typ = Typ{schild, leer, {schild.bis, schild.bis}};
                inTyp_ = true;
            } else if (!ziel.folgendes && folgtAufTyp(name)) {
                ziel.folgendes = schild.von;
            }
        }
    }

    void ende(XmlBereich schild) override {
        if (tiefe_ == kKindTiefe && inTyp_) {
            ziele_.back().typ->inhalt.bis = schild.von;
            inTyp_ = false;
        } else if (tiefe_ == kZielTiefe && inZiel_) {
            ziele_.back().ende = schild;
            inZiel_ = false;
        }
        --tiefe_;
    }

    [[nodiscard]] const std::vector<Ziel>& ziele() const { return ziele_; }

  private:
    std::size_t tiefe_ = 0;
    bool inZiel_ = false;
    bool inTyp_ = false;
    std::vector<Ziel> ziele_;
};

/// Writes markup into a document of some encoding.
class Feder {
  public:
    Feder(std::string_view inhalt, XmlBreite breite, GpxSportart art)
        : inhalt_(inhalt), breite_(breite), wert_(kodiert(art.rawValue())) {}

    /// The change that gives a target its type; nothing when it has it already.
    [[nodiscard]] std::optional<GpxSpleisse::Spleiss> spleiss(const Ziel& ziel) const {
        if (ziel.typ) {
            return fuelle(*ziel.typ);
        }
        const std::string name = std::string(praefix(nameIn(ziel.schild))) + kodiert("type");
        const std::string element = kodiert("<") + name + kodiert(">") + wert_ + kodiert("</") + name + kodiert(">");
        if (ziel.leer) {
            return oeffne(ziel.schild, element);
        }
        const std::size_t stelle = ziel.folgendes.value_or(ziel.ende.von);
        return GpxSpleisse::Spleiss{{stelle, stelle}, element};
    }

  private:
    [[nodiscard]] std::size_t zeichenbytes() const { return breite_ == XmlBreite::einByte ? 1 : 2; }

    [[nodiscard]] std::string kodiert(std::string_view ascii) const {
        if (breite_ == XmlBreite::einByte) {
            return std::string(ascii);
        }
        std::string weit;
        for (const char zeichen : ascii) {
            weit += breite_ == XmlBreite::utf16le ? std::string{zeichen, '\0'} : std::string{'\0', zeichen};
        }
        return weit;
    }

    [[nodiscard]] std::string_view bytes(XmlBereich bereich) const {
        return inhalt_.substr(bereich.von, bereich.bis - bereich.von);
    }

    /// The name in a start tag, as it is encoded.
    [[nodiscard]] std::string_view nameIn(XmlBereich schild) const {
        const std::size_t schritt = zeichenbytes();
        const std::string_view ganz = bytes(schild);
        std::size_t bis = schritt;
        for (; bis < ganz.size(); bis += schritt) {
            const std::string_view zeichen = ganz.substr(bis, schritt);
            constexpr std::string_view grenzen = " \t\r\n/>";
            if (std::any_of(grenzen.begin(), grenzen.end(), [&](char grenze) {
                    return zeichen == kodiert({&grenze, 1});
                })) {
                break;
            }
        }
        return ganz.substr(schritt, bis - schritt);
    }

    /// The prefix in a name, colon included, all as it is encoded. A colon with nothing before or behind it makes none.
    [[nodiscard]] std::string_view praefix(std::string_view name) const {
        const std::size_t schritt = zeichenbytes();
        const std::string doppelpunkt = kodiert(":");
        for (std::size_t i = schritt; i + schritt < name.size(); i += schritt) {
            if (name.substr(i, schritt) == doppelpunkt) {
                return name.substr(0, i + schritt);
            }
        }
        return {};
    }

    /// Makes an element of one tag one of two, with that between them.
    [[nodiscard]] GpxSpleisse::Spleiss oeffne(XmlBereich schild, const std::string& inhalt) const {
        const std::string name(nameIn(schild));
        return {{schild.bis - 2 * zeichenbytes(), schild.bis},
                kodiert(">") + inhalt + kodiert("</") + name + kodiert(">")};
    }

    [[nodiscard]] std::optional<GpxSpleisse::Spleiss> fuelle(const Typ& typ) const {
        if (typ.leer) {
            return oeffne(typ.schild, wert_);
        }
        if (bytes(typ.inhalt) == wert_) {
            return std::nullopt;
        }
        return GpxSpleisse::Spleiss{typ.inhalt, wert_};
    }

    std::string_view inhalt_;
    XmlBreite breite_;
    std::string wert_;
};

}  // namespace

std::optional<GpxSpleisse> GpxSpleisse::berechne(std::string_view inhalt, GpxSportart art) {
    Sucher sucher;
    const auto breite = XmlLauf::orte(inhalt, sucher);
    if (!breite) {
        return std::nullopt;
    }
    const Feder feder(inhalt, *breite, art);
    GpxSpleisse ergebnis;
    ergebnis.ziele = sucher.ziele().size();
    for (const Ziel& ziel : sucher.ziele()) {
        if (auto spleiss = feder.spleiss(ziel)) {
            ergebnis.spleisse.push_back(std::move(*spleiss));
        }
    }
    return ergebnis;
}

}  // namespace spurkiste
