#include "track/XmlLauf.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iterator>
#include <memory>
#include <new>
#include <string>

// expat declares the limits of its entity bomb protection only to those who know it was built with DTD support.
#define XML_DTD 1  // NOLINT(cppcoreguidelines-macro-usage)
#include <expat.h>

#include "base/Text.h"

namespace spurkiste {

namespace {

// --- What expat may use -------------------------------------------------------------------------------------------

// expat keeps every open element, every name it ever met and every unfinished tag: a file of nothing but "<a>" would
// take fifty times its size. Real tracks need less than a megabyte. When the limit is reached, expat is told that
// memory has run out, ends the walk, and what was read until then counts.
constexpr std::size_t kSpeichergrenze = std::size_t{256} << 20U;

// expat hands its allocator no context, so the count belongs to the thread. A parser lives and dies within one call.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local std::size_t vergeben = 0;

/// Stands in front of each block, since a block is given back without its size.
struct alignas(std::max_align_t) Blockkopf {
    std::size_t groesse;
};

// NOLINTBEGIN(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory): a C library's allocator

void* verlege(void* block, std::size_t groesse) {
    Blockkopf* kopf = block == nullptr ? nullptr : static_cast<Blockkopf*>(block) - 1;
    const std::size_t bisher = kopf == nullptr ? 0 : kopf->groesse;
    if (groesse > kSpeichergrenze || vergeben - bisher > kSpeichergrenze - groesse) {
        return nullptr;
    }
    auto* neu = static_cast<Blockkopf*>(std::realloc(kopf, sizeof(Blockkopf) + groesse));
    if (neu == nullptr) {
        return nullptr;
    }
    neu->groesse = groesse;
    vergeben = vergeben - bisher + groesse;
    return neu + 1;
}

void* nimm(std::size_t groesse) {
    return verlege(nullptr, groesse);
}

void gibZurueck(void* block) {
    if (block != nullptr) {
        Blockkopf* kopf = static_cast<Blockkopf*>(block) - 1;
        vergeben -= kopf->groesse;
        std::free(kopf);
    }
}

// NOLINTEND(cppcoreguidelines-no-malloc,cppcoreguidelines-owning-memory)

// --- The start of a document --------------------------------------------------------------------------------------

/// The name of the encoding in the XML declaration that the bytes begin with; empty without one.
std::string_view genannteKodierung(std::string_view bytes) {
    if (!bytes.starts_with("<?xml")) {
        return {};
    }
    constexpr std::string_view wort = "encoding";
    const auto stelle = bytes.substr(0, bytes.find("?>")).find(wort);
    if (stelle == std::string_view::npos) {
        return {};
    }
    const auto anfang = bytes.find_first_of("\"'", stelle + wort.size());
    if (anfang == std::string_view::npos) {
        return {};
    }
    const auto ende = bytes.find(bytes[anfang], anfang + 1);
    return ende == std::string_view::npos ? std::string_view() : bytes.substr(anfang + 1, ende - anfang - 1);
}

/// Takes the bytes from the source, looks at the first ones, and hands out what belongs to the document: no byte
/// order mark and no white space before the declaration, which expat would reject.
class Eingang {
  public:
    Eingang(const XmlLauf::Quelle& quelle, std::size_t groesse) : quelle_(quelle), vorrat_(groesse) {
        fuelle();
        erkenneBreite();
        while (ueberspringeLeerraum() && !erschoepft_) {
            fuelle();
        }
        fuelle();  // the declaration may lie behind white space: have all of it in view
        if (kodierung_ == nullptr && !kenntExpat(genannteKodierung(blick()))) {
            kodierung_ = "UTF-8";
        }
    }

    /// The encoding that overrules the declaration; null when the declaration is to be believed.
    [[nodiscard]] const char* kodierung() const { return kodierung_; }

    /// How many bytes the byte order mark has.
    [[nodiscard]] std::size_t marke() const { return marke_; }

    /// How many lines end in the white space that was passed over.
    [[nodiscard]] std::size_t uebersprungeneZeilen() const { return uebersprungeneZeilen_; }

    /// How wide the characters are.
    [[nodiscard]] XmlBreite breite() const {
        return breite_ == 1 ? XmlBreite::einByte : zeichenStelle_ == 0 ? XmlBreite::utf16le : XmlBreite::utf16be;
    }

    /// Fills the buffer; fewer bytes than asked mean the end.
    std::size_t lies(std::span<char> ziel) {
        const std::size_t ausKopf = std::min(ziel.size(), bis_ - von_);
        std::copy_n(kopf_.data() + von_, ausKopf, ziel.data());
        von_ += ausKopf;
        return ausKopf + hole(ziel.subspan(ausKopf));
    }

  private:
    [[nodiscard]] std::string_view blick() const { return {kopf_.data() + von_, bis_ - von_}; }

    std::size_t hole(std::span<char> ziel) {
        const std::span<char> erlaubt = ziel.first(std::min(ziel.size(), vorrat_));
        const std::size_t anzahl = erlaubt.empty() ? 0 : quelle_(erlaubt);
        vorrat_ -= anzahl;
        erschoepft_ = anzahl < erlaubt.size() || vorrat_ == 0;
        return anzahl;
    }

    void fuelle() {
        std::copy(kopf_.data() + von_, kopf_.data() + bis_, kopf_.data());
        bis_ -= von_;
        von_ = 0;
        bis_ += hole(std::span(kopf_).subspan(bis_));
    }

    /// Marks and zero bytes say more than the declaration, which many programs write without thinking.
    void erkenneBreite() {
        constexpr std::string_view leerOderSpitz = " \t\r\n<";
        const std::string_view bytes = blick();
        const auto beginnt = [&](std::size_t stelle, std::size_t null) {
            return bytes.size() >= 2 && bytes[null] == '\0' &&
                   leerOderSpitz.find(bytes[stelle]) != std::string_view::npos;
        };
        if (bytes.starts_with("\xEF\xBB\xBF")) {
            kodierung_ = "UTF-8";
            von_ = 3;
        } else if (const bool klein = bytes.starts_with("\xFF\xFE"); klein || beginnt(0, 1)) {
            kodierung_ = "UTF-16LE";
            von_ = klein ? 2 : 0;
        } else if (const bool gross = bytes.starts_with("\xFE\xFF"); gross || beginnt(1, 0)) {
            kodierung_ = "UTF-16BE";
            von_ = gross ? 2 : 0;
            zeichenStelle_ = 1;
        }
        marke_ = von_;
        breite_ = kodierung_ != nullptr && std::string_view(kodierung_) != "UTF-8" ? 2 : 1;
    }

    /// Returns whether nothing but white space was in view.
    bool ueberspringeLeerraum() {
        constexpr std::string_view leerraum = " \t\r\n";
        while (bis_ - von_ >= breite_) {
            const bool leer = leerraum.find(kopf_[von_ + zeichenStelle_]) != std::string_view::npos &&
                              (breite_ == 1 || kopf_[von_ + 1 - zeichenStelle_] == '\0');
            if (!leer) {
                return false;
            }
            uebersprungeneZeilen_ += kopf_[von_ + zeichenStelle_] == '\n' ? 1 : 0;
            von_ += breite_;
        }
        return true;
    }

    /// Whether expat reads this declared encoding, in bytes that are not UTF-16. Others ("utf8", a UTF-16 that the
    /// bytes contradict, whatever a program's author made up) are in practice UTF-8.
    static bool kenntExpat(std::string_view name) {
        return name.empty() || text::einByteZeichensatz(std::string(name)).has_value();
    }

    const XmlLauf::Quelle& quelle_;
    std::size_t vorrat_;  // bytes that may still be taken from the source
    bool erschoepft_ = false;
    std::size_t marke_ = 0;
    std::size_t uebersprungeneZeilen_ = 0;
    std::array<char, 1024> kopf_{};
    std::size_t von_ = 0;
    std::size_t bis_ = 0;
    const char* kodierung_ = nullptr;
    std::size_t breite_ = 1;         // bytes of a blank
    std::size_t zeichenStelle_ = 0;  // which of them is not zero
};

// --- The walk -----------------------------------------------------------------------------------------------------

/// Fills expat's table for an encoding that it does not have built in.
int XMLCALL fremdeKodierung(void* /*ohne*/, const XML_Char* name, XML_Encoding* kodierung) {
    const auto tabelle = text::einByteZeichensatz(name);
    if (!tabelle) {
        return XML_STATUS_ERROR;
    }
    std::copy(tabelle->begin(), tabelle->end(), std::begin(kodierung->map));
    kodierung->data = nullptr;
    kodierung->convert = nullptr;
    kodierung->release = nullptr;
    return XML_STATUS_OK;
}

XmlFehler fehlerAus(XML_Error nummer) {
    switch (nummer) {
        case XML_ERROR_NONE:
            return XmlFehler::keiner;
        case XML_ERROR_NO_ELEMENTS:
            return XmlFehler::endeFehlt;
        case XML_ERROR_UNCLOSED_TOKEN:
        case XML_ERROR_UNCLOSED_CDATA_SECTION:
            return XmlFehler::endeFehlt;
        case XML_ERROR_TAG_MISMATCH:
            return XmlFehler::falschesEnde;
        case XML_ERROR_UNDEFINED_ENTITY:
            return XmlFehler::unbekannteEntitaet;
        case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
            return XmlFehler::rest;
        case XML_ERROR_NO_MEMORY:
        case XML_ERROR_AMPLIFICATION_LIMIT_BREACH:
            return XmlFehler::zuViel;
        default:
            return XmlFehler::falschesZeichen;
    }
}

/// An expat parser within our limits. No exception may pass through expat: it waits until expat has returned.
class Expat {
  public:
    Expat(const Expat&) = delete;
    Expat& operator=(const Expat&) = delete;

  protected:
    Expat(const char* kodierung, void* selbst) {
        constexpr XML_Memory_Handling_Suite speicher = {nimm, verlege, gibZurueck};
        parser_.reset(XML_ParserCreate_MM(kodierung, &speicher, nullptr));
        if (!parser_) {
            throw std::bad_alloc();
        }
        XML_SetUserData(parser(), selbst);
        XML_SetUnknownEncodingHandler(parser(), fremdeKodierung, nullptr);
        // Tracks have no use for entities of their own: a small factor ends a bomb early in large files, too.
        XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser(), 4.0F);
    }
    ~Expat() = default;

    [[nodiscard]] XML_Parser parser() const { return parser_.get(); }

    template <typename Meldung>
    void melde(Meldung meldung) {
        try {
            meldung();
        } catch (...) {
            gemerkt_ = std::current_exception();
            XML_SetElementHandler(parser(), nullptr, nullptr);
            XML_SetCharacterDataHandler(parser(), nullptr);
            XML_SetCdataSectionHandler(parser(), nullptr, nullptr);
            XML_StopParser(parser(), XML_FALSE);
        }
    }

    void wirfGemerktes() {
        if (gemerkt_) {
            std::rethrow_exception(gemerkt_);
        }
    }

  private:
    struct Ende {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    std::unique_ptr<XML_ParserStruct, Ende> parser_;
    std::exception_ptr gemerkt_;
};

/// Hands what expat finds to an XmlEmpfaenger.
class Zerleger final : private Expat {
  public:
    Zerleger(XmlEmpfaenger& empfaenger, const char* kodierung) : Expat(kodierung, this), empfaenger_(empfaenger) {
        XML_SetElementHandler(parser(), anfang, ende);
        XML_SetCdataSectionHandler(parser(), cdataAnfang, cdataEnde);
    }

    /// The line, from 1, of what is being reported or of the error.
    [[nodiscard]] std::size_t zeile() const { return XML_GetCurrentLineNumber(parser()); }

    [[nodiscard]] XmlFehler fehler() const { return fehlerAus(XML_GetErrorCode(parser())); }

    /// The whole document.
    void zerlege(std::span<const char> bytes) {
        XML_Parse(parser(), bytes.data(), static_cast<int>(bytes.size()), XML_TRUE);
        wirfGemerktes();
    }

    /// Room for the next piece, inside expat; empty when expat may have no more.
    std::span<char> raum(std::size_t groesse) {
        auto* bytes = static_cast<char*>(XML_GetBuffer(parser(), static_cast<int>(groesse)));
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
        z.melde([&] { z.willText(z.empfaenger_.anfang(name, XmlAttribute(attribute))); });
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

    void willText(bool will) {
        if (will != willText_) {
            willText_ = will;
            XML_SetCharacterDataHandler(parser(), will ? text : nullptr);
        }
    }

    XmlEmpfaenger& empfaenger_;
    bool willText_ = false;
};

/// Hands the places that expat finds to an XmlOrtung.
class Verorter final : private Expat {
  public:
    /// `dokument` without its byte order mark, which has `marke` bytes.
    Verorter(XmlOrtung& empfaenger, const char* kodierung, std::string_view dokument, XmlBreite breite,
             std::size_t marke)
        : Expat(kodierung, this), empfaenger_(empfaenger), dokument_(dokument), breite_(breite), marke_(marke) {
        XML_SetElementHandler(parser(), anfang, ende);
    }

    /// Whether the document is well-formed.
    bool zerlege() {
        constexpr std::size_t haeppchen = std::size_t{1} << 30U;  // expat counts in int
        std::string_view rest = dokument_;
        for (;;) {
            const std::string_view stueck = rest.substr(0, haeppchen);
            rest.remove_prefix(stueck.size());
            const auto zustand = XML_Parse(parser(), stueck.data(), static_cast<int>(stueck.size()),
                                           rest.empty() ? XML_TRUE : XML_FALSE);
            wirfGemerktes();
            if (zustand != XML_STATUS_OK || rest.empty()) {
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

    /// Where in the document expat is; inside an entity's text, that is its reference.
    [[nodiscard]] XmlBereich stelle() const {
        const auto von = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser()));
        return {von, von + static_cast<std::size_t>(XML_GetCurrentByteCount(parser()))};
    }

    [[nodiscard]] XmlBereich mitMarke(XmlBereich bereich) const { return {bereich.von + marke_, bereich.bis + marke_}; }

    [[nodiscard]] std::size_t zeichenbytes() const { return breite_ == XmlBreite::einByte ? 1 : 2; }

    /// The character that begins at a byte, when it is an ASCII one; else a null.
    [[nodiscard]] char zeichen(std::size_t byte) const {
        if (byte + zeichenbytes() > dokument_.size()) {
            return '\0';
        }
        switch (breite_) {
            case XmlBreite::utf16le:
                return dokument_[byte + 1] == '\0' ? dokument_[byte] : '\0';
            case XmlBreite::utf16be:
                return dokument_[byte] == '\0' ? dokument_[byte + 1] : '\0';
            default:
                return dokument_[byte];
        }
    }

    void beginne(std::string_view name) {
        const XmlBereich schild = stelle();
        const bool steht = zeichen(schild.von) == '<';
        offen_.push_back(steht);
        if (steht) {
            empfaenger_.anfang(name, mitMarke(schild), zeichen(schild.bis - 2 * zeichenbytes()) == '/');
        }
    }

    void beende() {
        const bool steht = offen_.back();
        offen_.pop_back();
        if (steht) {
            empfaenger_.ende(mitMarke(stelle()));
        }
    }

    XmlOrtung& empfaenger_;
    std::string_view dokument_;
    XmlBreite breite_;
    std::size_t marke_;
    std::vector<bool> offen_;  // of each open element, whether it stands in the document itself
};

}  // namespace

std::optional<std::string_view> XmlAttribute::wert(std::string_view name) const {
    for (const char* const* paar = paare_; *paar != nullptr; paar += 2) {
        if (name == *paar) {
            return paar[1];
        }
    }
    return std::nullopt;
}

std::span<char> XmlLauf::puffer(std::size_t groesse) {
    if (groesse > puffer_.size()) {
        // Doubling, so that a folder of ever larger files does not touch fresh memory for each.
        const std::size_t neu = std::max(groesse, std::min(puffer_.size() * 2, kAmStueck));
        puffer_ = {};
        puffer_.resize(neu);
    }
    return std::span(puffer_).first(groesse);
}

XmlAusgang XmlLauf::lies(const Quelle& quelle, std::size_t groesse, XmlEmpfaenger& empfaenger, std::size_t amStueck) {
    assert(amStueck > 0 && amStueck <= kAmStueck);
    Eingang eingang(quelle, groesse);
    Zerleger zerleger(empfaenger, eingang.kodierung());
    const auto zeile = [&] { return zerleger.zeile() + eingang.uebersprungeneZeilen(); };
    const auto ausgang = [&] { return XmlAusgang{zerleger.fehler(), zeile()}; };
    const auto vergissZeile = [](XmlEmpfaenger* e) { e->zeile_ = {}; };
    const std::unique_ptr<XmlEmpfaenger, decltype(vergissZeile)> wacht(&empfaenger, vergissZeile);
    empfaenger.zeile_ = zeile;
    if (groesse <= amStueck) {
        const auto ganz = puffer(groesse);
        zerleger.zerlege(ganz.first(eingang.lies(ganz)));
        return ausgang();
    }
    constexpr std::size_t haeppchen = std::size_t{256} << 10U;  // stays within the processor's cache
    for (bool weiter = true; weiter;) {
        const auto raum = zerleger.raum(std::min(amStueck, haeppchen));
        const std::size_t anzahl = eingang.lies(raum);
        weiter = !raum.empty() && zerleger.zerlegeRaum(anzahl, anzahl < raum.size());
    }
    return ausgang();
}

std::optional<XmlBreite> XmlLauf::orte(std::string_view dokument, XmlOrtung& empfaenger) {
    std::string_view rest = dokument;
    const Quelle quelle = [&](std::span<char> ziel) {
        const std::size_t anzahl = rest.copy(ziel.data(), ziel.size());
        rest.remove_prefix(anzahl);
        return anzahl;
    };
    const Eingang eingang(quelle, dokument.size());  // only looks at the first bytes
    const std::string_view ohneMarke = dokument.substr(eingang.marke());
    if (ohneMarke.starts_with("\xEF\xBB\xBF") || ohneMarke.starts_with("\xFF\xFE") ||
        ohneMarke.starts_with("\xFE\xFF")) {
        return std::nullopt;  // expat would believe a second mark
    }
    Verorter verorter(empfaenger, eingang.kodierung(), ohneMarke, eingang.breite(), eingang.marke());
    return verorter.zerlege() ? std::optional(eingang.breite()) : std::nullopt;
}

}  // namespace spurkiste
