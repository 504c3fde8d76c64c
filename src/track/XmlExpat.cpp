// expat declares the limits of its entity bomb protection only to those who know it was built with DTD support.
#define XML_DTD 1  // NOLINT(cppcoreguidelines-macro-usage)
#include "track/XmlExpat.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <new>
#include <utility>

#include "base/Text.h"

namespace spurkiste {

namespace {

// expat keeps every open element, every name it ever met and every unfinished tag: a file of nothing but "<a>" would
// take fifty times its size. Real tracks need less than a megabyte. When the limit is reached, expat is told that
// memory has run out, ends the walk, and what was read until then counts.
constexpr std::size_t kSpeichergrenze = std::size_t{256} << 20U;

// expat hands its allocator no context, so the count belongs to the thread. A parser lives and dies within one call.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local std::size_t vergeben = 0;

// Whether the system, not the limit, has refused memory: that says nothing of the document.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
thread_local bool verweigert = false;

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
        verweigert = true;
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

}  // namespace

XmlExpat::XmlExpat(const char* kodierung, void* selbst) {
    verweigert = false;
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

// Newer versions of expat have wider positions and call the others deprecated.
#if XML_MAJOR_VERSION > 2 || (XML_MAJOR_VERSION == 2 && XML_MINOR_VERSION >= 9)

std::size_t XmlExpat::zeile() const {
    return XML_GetCurrentLineNumber64(parser());
}

XmlBereich XmlExpat::stelle() const {
    const auto von = static_cast<std::size_t>(XML_GetCurrentByteIndex64(parser()));
    return {von, von + XML_GetCurrentByteCount64(parser())};
}

using Position = std::int64_t;
using Groesse = std::uint64_t;
constexpr auto kEingabe = XML_GetInputContext64;

#else

std::size_t XmlExpat::zeile() const {
    return XML_GetCurrentLineNumber(parser());
}

XmlBereich XmlExpat::stelle() const {
    const auto von = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser()));
    return {von, von + static_cast<std::size_t>(XML_GetCurrentByteCount(parser()))};
}

using Position = int;
using Groesse = int;
constexpr auto kEingabe = XML_GetInputContext;

#endif

std::string_view XmlExpat::wortlaut() const {
    Position ab = 0;
    Groesse groesse = 0;
    const char* puffer = kEingabe(parser(), &ab, &groesse);
    if (puffer == nullptr) {
        return {};
    }
    const XmlBereich dort = stelle();
    return std::string_view(puffer, static_cast<std::size_t>(groesse))
        .substr(static_cast<std::size_t>(ab), dort.bis - dort.von);
}

XmlFehler XmlExpat::fehler() const {
    switch (XML_GetErrorCode(parser())) {
        case XML_ERROR_NONE:
            return XmlFehler::keiner;
        case XML_ERROR_NO_ELEMENTS:
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

void XmlExpat::merke(std::exception_ptr ausnahme) {
    gemerkt_ = std::move(ausnahme);
    XML_SetElementHandler(parser(), nullptr, nullptr);
    XML_SetCharacterDataHandler(parser(), nullptr);
    XML_SetCdataSectionHandler(parser(), nullptr, nullptr);
    XML_StopParser(parser(), XML_FALSE);
}

void XmlExpat::wirfGemerktes() {
    if (gemerkt_) {
        std::rethrow_exception(gemerkt_);
    }
    if (verweigert) {
        throw std::bad_alloc();
    }
}

}  // namespace spurkiste
