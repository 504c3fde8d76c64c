#include "track/GpxSpleisse.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

namespace spurkiste {

namespace {

constexpr std::size_t kZielTiefe = 2;  // below the root element
constexpr std::size_t kKindTiefe = 3;

using Nimm = std::function<void(GpxSpleisse::Spleiss)>;

std::string_view ohnePraefix(std::string_view name) {
    const auto doppelpunkt = name.find(':');
    return doppelpunkt == std::string_view::npos ? name : name.substr(doppelpunkt + 1);
}

/// What follows <type> in a track or a route.
bool folgtAufTyp(std::string_view name) {
    const auto wort = ohnePraefix(name);
    return wort == "extensions" || wort == "trkseg" || wort == "rtept";
}

/// A place where a <type> stands, as the walk through the file finds it.
struct Typ {
    XmlBereich schild;  ///< its start tag
    std::string name;   ///< as it is encoded
    bool leer = false;  ///< the start tag is all there is
    XmlBereich inhalt;  ///< between the tags, when it is not
};

/// A track or a route.
struct Ziel {
    XmlBereich schild;
    std::string name;  ///< as it is encoded
    bool leer = false;
    std::optional<Typ> typ;
    std::optional<std::size_t> folgendes;  ///< where the first element begins that the type comes before
    XmlBereich ende;                       ///< its end tag
};

/// Reads and writes markup of some encoding.
class Feder {
  public:
    Feder(const XmlInhalt& inhalt, XmlBreite breite, GpxSportart art)
        : inhalt_(&inhalt), breite_(breite), wert_(kodiert(art.rawValue())) {}

    /// The name in a start tag, as it is encoded.
    [[nodiscard]] std::string nameIn(std::string_view schild) const {
        const std::size_t schritt = zeichenbytes();
        std::size_t bis = schritt;
        for (; bis < schild.size(); bis += schritt) {
            const std::string_view zeichen = schild.substr(bis, schritt);
            constexpr std::string_view grenzen = " \t\r\n/>";
            if (std::any_of(grenzen.begin(), grenzen.end(), [&](char grenze) {
                    return zeichen == kodiert({&grenze, 1});
                })) {
                break;
            }
        }
        return std::string(schild.substr(schritt, bis - schritt));
    }

    /// The change that gives a target its type; nothing when it has it already.
    [[nodiscard]] std::optional<GpxSpleisse::Spleiss> spleiss(const Ziel& ziel) const {
        if (ziel.typ) {
            return fuelle(*ziel.typ);
        }
        const std::string name = std::string(praefix(ziel.name)) + kodiert("type");
        const std::string element = kodiert("<") + name + kodiert(">") + wert_ + kodiert("</") + name + kodiert(">");
        if (ziel.leer) {
            return oeffne(ziel.schild, ziel.name, element);
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
    [[nodiscard]] GpxSpleisse::Spleiss oeffne(XmlBereich schild, const std::string& name,
                                              const std::string& inhalt) const {
        return {{schild.bis - 2 * zeichenbytes(), schild.bis},
                kodiert(">") + inhalt + kodiert("</") + name + kodiert(">")};
    }

    [[nodiscard]] std::optional<GpxSpleisse::Spleiss> fuelle(const Typ& typ) const {
        if (typ.leer) {
            return oeffne(typ.schild, typ.name, wert_);
        }
        if (haeltWert(typ.inhalt)) {
            return std::nullopt;
        }
        return GpxSpleisse::Spleiss{typ.inhalt, wert_};
    }

    [[nodiscard]] bool haeltWert(XmlBereich bereich) const {
        if (bereich.bis - bereich.von != wert_.size()) {
            return false;
        }
        std::string bytes(wert_.size(), '\0');
        return (*inhalt_)(bereich.von, bytes) == bytes.size() && bytes == wert_;
    }

    const XmlInhalt* inhalt_;
    XmlBreite breite_;
    std::string wert_;
};

/// Hands over the change of each track and route of a file as soon as it ends.
class Sucher final : public XmlOrtung {
  public:
    Sucher(const XmlInhalt& inhalt, GpxSportart art, const Nimm& nimm) : inhalt_(inhalt), art_(art), nimm_(nimm) {}

    void beginn(XmlBreite breite) override { feder_.emplace(inhalt_, breite, art_); }

    void anfang(std::string_view name, XmlBereich schild, std::string_view wortlaut, bool leer) override {
        ++tiefe_;
        if (tiefe_ == kZielTiefe) {
            const auto wort = ohnePraefix(name);
            if (wort == "trk" || wort == "rte") {
                ziel_ = Ziel{schild, feder_->nameIn(wortlaut), leer, {}, {}, {}};
            }
        } else if (tiefe_ == kKindTiefe && ziel_) {
            if (!ziel_->typ && ohnePraefix(name) == "type") {
                ziel_->typ = Typ{schild, feder_->nameIn(wortlaut), leer, {schild.bis, schild.bis}};
                inTyp_ = true;
            } else if (!ziel_->folgendes && folgtAufTyp(name)) {
                ziel_->folgendes = schild.von;
            }
        }
    }

    void ende(XmlBereich schild) override {
        if (tiefe_ == kKindTiefe && inTyp_) {
            ziel_->typ->inhalt.bis = schild.von;
            inTyp_ = false;
        } else if (tiefe_ == kZielTiefe && ziel_) {
            ziel_->ende = schild;
            ++ziele_;
            if (auto spleiss = feder_->spleiss(*ziel_)) {
                nimm_(std::move(*spleiss));
            }
            ziel_.reset();
        }
        --tiefe_;
    }

    [[nodiscard]] std::size_t ziele() const { return ziele_; }

  private:
    const XmlInhalt& inhalt_;
    GpxSportart art_;
    const Nimm& nimm_;
    std::optional<Feder> feder_;
    std::size_t tiefe_ = 0;
    std::size_t ziele_ = 0;
    std::optional<Ziel> ziel_;  // that the walk is in
    bool inTyp_ = false;
};

/// Copies a document up to the changes that it is given, in file order, and puts these in.
class Umschrift {
  public:
    Umschrift(const XmlInhalt& inhalt, const std::function<void(std::string_view)>& senke)
        : inhalt_(inhalt), senke_(senke) {}

    void nimm(const GpxSpleisse::Spleiss& spleiss) {
        kopiere(spleiss.stelle.von);
        senke_(spleiss.text);
        stand_ = spleiss.stelle.bis;
    }

    void kopiere(std::size_t bis) {
        while (stand_ < bis) {
            const auto stueck = std::span(puffer_).first(std::min(puffer_.size(), bis - stand_));
            const std::size_t anzahl = inhalt_(stand_, stueck);
            senke_({stueck.data(), anzahl});
            stand_ += anzahl;
            if (anzahl < stueck.size()) {
                return;
            }
        }
    }

  private:
    static constexpr std::size_t kStueck = std::size_t{256} << 10U;

    const XmlInhalt& inhalt_;
    const std::function<void(std::string_view)>& senke_;
    std::vector<char> puffer_ = std::vector<char>(kStueck);
    std::size_t stand_ = 0;  // up to where the document is copied
};

}  // namespace

std::optional<GpxSpleisse> GpxSpleisse::berechne(const XmlInhalt& inhalt, GpxSportart art) {
    GpxSpleisse ergebnis{art, {}, true, 0};
    std::size_t platz = kHoechstens;
    const Nimm behalte = [&](Spleiss spleiss) {
        const std::size_t braucht = sizeof(Spleiss) + spleiss.text.size();
        ergebnis.alle = ergebnis.alle && braucht <= platz;
        if (ergebnis.alle) {
            platz -= braucht;
            ergebnis.spleisse.push_back(std::move(spleiss));
        }
    };
    Sucher sucher(inhalt, art, behalte);
    if (!XmlLauf::orte(inhalt, sucher)) {
        return std::nullopt;
    }
    ergebnis.ziele = sucher.ziele();
    return ergebnis;
}

void GpxSpleisse::wendeAn(const XmlInhalt& inhalt, const std::function<void(std::string_view)>& senke) const {
    Umschrift umschrift(inhalt, senke);
    if (alle) {
        for (const Spleiss& spleiss : spleisse) {
            umschrift.nimm(spleiss);
        }
    } else {
        const Nimm wende = [&](const Spleiss& spleiss) { umschrift.nimm(spleiss); };
        Sucher sucher(inhalt, art, wende);
        (void)XmlLauf::orte(inhalt, sucher);
    }
    umschrift.kopiere(std::numeric_limits<std::size_t>::max());
}

}  // namespace spurkiste
