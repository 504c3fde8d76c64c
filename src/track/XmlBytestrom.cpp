#include "track/XmlBytestrom.h"

#include <algorithm>
#include <string>

#include "base/Text.h"

namespace spurkiste {

namespace {

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

/// Whether expat reads this declared encoding, in bytes that are not UTF-16. Others ("utf8", a UTF-16 that the bytes
/// contradict, whatever a program's author made up) are in practice UTF-8.
bool kenntExpat(std::string_view name) {
    return name.empty() || text::einByteZeichensatz(std::string(name)).has_value();
}

}  // namespace

XmlBytestrom::XmlBytestrom(const XmlLauf::Quelle& quelle, std::size_t groesse) : quelle_(quelle), vorrat_(groesse) {
    fuelle();
    erkenneBreite();
    while (ueberspringeLeerraum() && !erschoepft_) {
        fuelle();
    }
    fuelle();  // the declaration may lie behind white space: have all of it in view
    if (kodierung_ == nullptr) {
        erkenneUtf16();  // which expat finds even behind blanks of one byte
    }
    if (kodierung_ == nullptr && !kenntExpat(genannteKodierung(blick()))) {
        kodierung_ = "UTF-8";
    }
}

XmlBreite XmlBytestrom::breite() const {
    return breite_ == 1 ? XmlBreite::einByte : zeichenStelle_ == 0 ? XmlBreite::utf16le : XmlBreite::utf16be;
}

std::size_t XmlBytestrom::lies(std::span<char> ziel) {
    const std::size_t ausKopf = std::min(ziel.size(), bis_ - von_);
    std::copy_n(kopf_.data() + von_, ausKopf, ziel.data());
    von_ += ausKopf;
    return ausKopf + hole(ziel.subspan(ausKopf));
}

std::size_t XmlBytestrom::hole(std::span<char> ziel) {
    const std::span<char> erlaubt = ziel.first(std::min(ziel.size(), vorrat_));
    const std::size_t anzahl = erlaubt.empty() ? 0 : quelle_(erlaubt);
    vorrat_ -= anzahl;
    erschoepft_ = anzahl < erlaubt.size() || vorrat_ == 0;
    return anzahl;
}

void XmlBytestrom::fuelle() {
    std::copy(kopf_.data() + von_, kopf_.data() + bis_, kopf_.data());
    bis_ -= von_;
    von_ = 0;
    bis_ += hole(std::span(kopf_).subspan(bis_));
}

/// Marks and zero bytes say more than the declaration, which many programs write without thinking.
void XmlBytestrom::erkenneBreite() {
    if (blick().starts_with("\xEF\xBB\xBF")) {
        kodierung_ = "UTF-8";
        vorlauf_ = von_ = 3;
    } else {
        erkenneUtf16();
    }
}

void XmlBytestrom::erkenneUtf16() {
    constexpr std::string_view leerOderSpitz = " \t\r\n<";
    constexpr std::size_t weite = 2;
    const std::string_view bytes = blick();
    const auto beginnt = [&](std::size_t stelle, std::size_t null) {
        return bytes.size() >= 2 && bytes[null] == '\0' && leerOderSpitz.find(bytes[stelle]) != std::string_view::npos;
    };
    const bool klein = bytes.starts_with("\xFF\xFE");
    const bool gross = bytes.starts_with("\xFE\xFF");
    if (klein || beginnt(0, 1)) {
        kodierung_ = "UTF-16LE";
    } else if (gross || beginnt(1, 0)) {
        kodierung_ = "UTF-16BE";
        zeichenStelle_ = 1;
    } else {
        return;
    }
    breite_ = weite;
    if (klein || gross) {
        von_ += weite;
        vorlauf_ += weite;
    }
}

/// Returns whether nothing but white space was in view.
bool XmlBytestrom::ueberspringeLeerraum() {
    constexpr std::string_view leerraum = " \t\r\n";
    while (bis_ - von_ >= breite_) {
        const bool leer = leerraum.find(kopf_[von_ + zeichenStelle_]) != std::string_view::npos &&
                          (breite_ == 1 || kopf_[von_ + 1 - zeichenStelle_] == '\0');
        if (!leer) {
            return false;
        }
        uebersprungeneZeilen_ += kopf_[von_ + zeichenStelle_] == '\n' ? 1 : 0;
        von_ += breite_;
        vorlauf_ += breite_;
    }
    return true;
}

}  // namespace spurkiste
