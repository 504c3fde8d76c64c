#include "track/XmlLauf.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <utility>
#include <vector>

#include "track/XmlBytestrom.h"
#include "track/XmlEilweg.h"
#include "track/XmlExpat.h"

namespace spurkiste {

namespace {

/// Hands what expat finds to an XmlEmpfaenger.
class Zerleger final : private XmlExpat {
  public:
    using XmlExpat::fehler;
    using XmlExpat::zeile;

    Zerleger(XmlEmpfaenger& empfaenger, const char* kodierung) : XmlExpat(kodierung, this), empfaenger_(empfaenger) {
        XML_SetElementHandler(parser(), anfang, ende);
        XML_SetCdataSectionHandler(parser(), cdataAnfang, cdataEnde);
    }

    /// The whole document.
    void zerlege(std::span<const char> bytes) {
        XML_Parse(parser(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
        wirfGemerktes();
    }

    /// Room for the next piece, inside expat; empty when expat may have no more.
    std::span<char> raum(std::size_t groesse) {
        auto* bytes = static_cast<char*>(XML_GetBuffer(parser(), static_cast<int>(groesse)));
        wirfGemerktes();
        return {bytes, bytes == nullptr ? 0 : groesse};
    }

    /// The next piece, `anzahl` bytes in raum(). Returns whether more is wanted.
    bool zerlegeRaum(std::size_t anzahl, bool letztes) {
        const auto zustand = XML_ParseBuffer(parser(), static_cast<int>(anzahl), letztes ? XML_TRUE : XML_FALSE);
        wirfGemerktes();
        return zustand == XML_STATUS_OK && !letztes;
    }

  private:
    static Zerleger& aus(void* selbst) { return *static_cast<Zerleger*>(selbst); }

    static void XMLCALL anfang(void* selbst, const XML_Char* name, const XML_Char** attribute) {
        Zerleger& z = aus(selbst);
        z.melde([&] {
            z.nimm(attribute);
            z.willText(z.empfaenger_.anfang(name, XmlAttribute(z.attribute_)));
        });
    }
    static void XMLCALL ende(void* selbst, const XML_Char* /*name*/) {
        Zerleger& z = aus(selbst);
        z.melde([&] { z.willText(z.empfaenger_.ende()); });
    }
    static void XMLCALL text(void* selbst, const XML_Char* stueck, int laenge) {
        Zerleger& z = aus(selbst);
        z.melde([&] { z.empfaenger_.text({stueck, static_cast<std::size_t>(laenge)}); });
    }
    static void XMLCALL cdataAnfang(void* selbst) { XML_SetCharacterDataHandler(aus(selbst).parser(), nullptr); }
    static void XMLCALL cdataEnde(void* selbst) {
        Zerleger& z = aus(selbst);
        XML_SetCharacterDataHandler(z.parser(), z.willText_ ? text : nullptr);
    }

    /// From name, value, name, value and so on, closed by a null.
    void nimm(const XML_Char* const* paare) {
        attribute_.clear();
        for (; *paare != nullptr; paare += 2) {
            attribute_.push_back({paare[0], paare[1]});
        }
    }

    void willText(bool will) {
        if (will != willText_) {
            willText_ = will;
            XML_SetCharacterDataHandler(parser(), will ? text : nullptr);
        }
    }

    XmlEmpfaenger& empfaenger_;
    bool willText_ = false;
    std::vector<XmlAttribut> attribute_;  // of the element start that is being reported
};

/// Hands the places that expat finds to an XmlOrtung.
class Verorter final : private XmlExpat {
  public:
    Verorter(XmlOrtung& empfaenger, const char* kodierung, XmlBreite breite, std::size_t vorlauf)
        : XmlExpat(kodierung, this), empfaenger_(empfaenger), breite_(breite), vorlauf_(vorlauf) {
        XML_SetElementHandler(parser(), anfang, ende);
    }

    /// Whether the document, without what lies before it, is well-formed.
    bool zerlege(const XmlInhalt& dokument) {
        constexpr std::size_t haeppchen = std::size_t{256} << 10U;  // stays within the processor's cache
        for (std::uint64_t ab = vorlauf_;;) {
            auto* raum = static_cast<char*>(XML_GetBuffer(parser(), static_cast<int>(haeppchen)));
            wirfGemerktes();
            if (raum == nullptr) {
                return false;
            }
            const std::size_t anzahl = dokument(ab, {raum, haeppchen});
            ab += anzahl;
            const bool letztes = anzahl < haeppchen;
            const auto zustand = XML_ParseBuffer(parser(), static_cast<int>(anzahl), letztes ? XML_TRUE : XML_FALSE);
            wirfGemerktes();
            if (zustand != XML_STATUS_OK || letztes) {
                return zustand == XML_STATUS_OK;
            }
        }
    }

  private:
    static void XMLCALL anfang(void* selbst, const XML_Char* name, const XML_Char** /*attribute*/) {
        Verorter& v = *static_cast<Verorter*>(selbst);
        v.melde([&] { v.beginne(name); });
    }
    static void XMLCALL ende(void* selbst, const XML_Char* /*name*/) {
        Verorter& v = *static_cast<Verorter*>(selbst);
        v.melde([&] { v.beende(); });
    }

    [[nodiscard]] XmlBereich inDatei(XmlBereich bereich) const {
        return {bereich.von + vorlauf_, bereich.bis + vorlauf_};
    }

    [[nodiscard]] std::size_t zeichenbytes() const { return breite_ == XmlBreite::einByte ? 1 : 2; }

    /// The character that begins at a byte, when it is an ASCII one; else a null.
    [[nodiscard]] char zeichen(std::string_view bytes, std::size_t byte) const {
        if (byte + zeichenbytes() > bytes.size()) {
            return '\0';
        }
        switch (breite_) {
            case XmlBreite::utf16le:
                return bytes[byte + 1] == '\0' ? bytes[byte] : '\0';
            case XmlBreite::utf16be:
                return bytes[byte] == '\0' ? bytes[byte + 1] : '\0';
            default:
                return bytes[byte];
        }
    }

    void beginne(std::string_view name) {
        const std::string_view schild = wortlaut();
        const bool steht = zeichen(schild, 0) == '<';
        offen_.push_back(steht);
        if (steht) {
            const bool leer = zeichen(schild, schild.size() - 2 * zeichenbytes()) == '/';
            empfaenger_.anfang(name, inDatei(stelle()), schild, leer);
        }
    }

    void beende() {
        const bool steht = offen_.back();
        offen_.pop_back();
        if (steht) {
            empfaenger_.ende(inDatei(stelle()));
        }
    }

    XmlOrtung& empfaenger_;
    XmlBreite breite_;
    std::size_t vorlauf_;      // bytes before the document: byte order mark and white space
    std::vector<bool> offen_;  // of each open element, whether it stands in the document itself
};

}  // namespace

/// Lets a receiver ask for lines during a walk and not a moment longer.
class XmlLauf::Zeilen {
  public:
    Zeilen(XmlEmpfaenger& empfaenger, std::function<std::size_t()> zeile) : empfaenger_(empfaenger) {
        empfaenger_.zeile_ = std::move(zeile);
    }
    Zeilen(const Zeilen&) = delete;
    Zeilen& operator=(const Zeilen&) = delete;
    ~Zeilen() { empfaenger_.zeile_ = {}; }

  private:
    XmlEmpfaenger& empfaenger_;
};

/// Room for a document with zeros behind it.
std::span<char> XmlLauf::puffer(std::size_t groesse) {
    if (groesse + XmlEilweg::kPolster > puffer_.size()) {
        // Doubling, so that a folder of ever larger files does not touch fresh memory for each.
        const std::size_t neu = std::max(groesse, std::min(puffer_.size() * 2, kAmStueck));
        puffer_ = {};
        puffer_.resize(neu + XmlEilweg::kPolster);
    }
    return std::span(puffer_).first(groesse);
}

bool XmlLauf::liesEilig(const XmlBytestrom& strom, std::span<const char> dokument, XmlEmpfaenger& empfaenger) {
    XmlEilweg eilweg({dokument.data(), dokument.size()}, strom.kodierung() != nullptr, empfaenger);
    const Zeilen zeilen(empfaenger, [&] { return eilweg.zeile() + strom.uebersprungeneZeilen(); });
    if (!eilweg.lies()) {
        return false;
    }
    empfaenger.schluss(XmlFehler::keiner);
    return true;
}

bool XmlLauf::lies(const Quelle& quelle, std::size_t groesse, const Empfang& empfang, std::size_t amStueck,
                   XmlWeg weg) {
    assert(amStueck > 0 && amStueck <= kAmStueck);
    XmlBytestrom strom(quelle, groesse);
    std::span<char> ganz;
    if (groesse <= amStueck) {
        ganz = puffer(groesse);
        ganz = ganz.first(strom.lies(ganz));
        std::fill_n(ganz.data() + ganz.size(), XmlEilweg::kPolster, '\0');
        if (weg == XmlWeg::eiligVoran && strom.kannUtf8Sein() && liesEilig(strom, ganz, empfang())) {
            return true;
        }
    }
    XmlEmpfaenger& empfaenger = empfang();
    Zerleger zerleger(empfaenger, strom.kodierung());
    const Zeilen zeilen(empfaenger, [&] { return zerleger.zeile() + strom.uebersprungeneZeilen(); });
    if (groesse <= amStueck) {
        zerleger.zerlege(ganz);
    } else {
        constexpr std::size_t haeppchen = std::size_t{256} << 10U;  // stays within the processor's cache
        for (bool weiter = true; weiter;) {
            const auto raum = zerleger.raum(std::min(amStueck, haeppchen));
            const std::size_t anzahl = strom.lies(raum);
            weiter = !raum.empty() && zerleger.zerlegeRaum(anzahl, anzahl < raum.size());
        }
    }
    empfaenger.schluss(zerleger.fehler());
    return false;
}

XmlInhalt xmlInhalt(std::string_view dokument) {
    return [dokument](std::uint64_t stelle, std::span<char> puffer) {
        const std::size_t ab = std::min<std::uint64_t>(stelle, dokument.size());
        return dokument.copy(puffer.data(), puffer.size(), ab);
    };
}

bool XmlLauf::orte(const XmlInhalt& dokument, XmlOrtung& empfaenger) {
    std::uint64_t gelesen = 0;
    const Quelle quelle = [&](std::span<char> ziel) {
        const std::size_t anzahl = dokument(gelesen, ziel);
        gelesen += anzahl;
        return anzahl;
    };
    const XmlBytestrom strom(quelle, std::numeric_limits<std::size_t>::max());  // only looks at the first bytes
    constexpr std::size_t laengsteMarke = 3;
    std::array<char, laengsteMarke> danach{};
    const std::string_view blick(danach.data(), dokument(strom.vorlauf(), danach));
    if (blick.starts_with("\xEF\xBB\xBF") || blick.starts_with("\xFF\xFE") || blick.starts_with("\xFE\xFF")) {
        return false;  // expat would believe a second mark
    }
    empfaenger.beginn(strom.breite());
    Verorter verorter(empfaenger, strom.kodierung(), strom.breite(), strom.vorlauf());
    return verorter.zerlege(dokument);
}

}  // namespace spurkiste
