#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "track/XmlLauf.h"

namespace spurkiste {

/// The fast way through what nearly every track is: a whole, well-formed document in UTF-8 with names in ASCII and
/// without a DTD. It checks all that expat checks and reports what expat would report, or says that the document is not
/// for it; it never says that one is broken. Bound to one thread, one object per document.
class XmlEilweg {
  public:
    /// So many bytes behind a document must be there and zero.
    static constexpr std::size_t kPolster = 16;

    /// `dokument` begins behind byte order mark and white space, and kPolster zero bytes follow it. An encoding that it
    /// declares must be UTF-8 or, with `kodierungEgal`, can be any. Both must live as long as this.
    XmlEilweg(std::string_view dokument, bool kodierungEgal, XmlEmpfaenger& empfaenger)
        : stelle_(dokument.data()),
          ende_(stelle_ + dokument.size()),
          kodierungEgal_(kodierungEgal),
          empfaenger_(empfaenger),
          gezaehltBis_(stelle_) {}

    /// Walks through the document. False when it is not for this way: then nothing that was reported counts.
    [[nodiscard]] bool lies();

    /// The line, from 1, of what is being reported or, afterwards, of the document's end.
    [[nodiscard]] std::size_t zeile();

  private:
    bool liesDeklaration();
    bool liesAngabe(std::string_view name, std::string_view& wert);
    bool liesUmgebung();
    bool liesInhalt();
    bool liesMarkierung();
    bool liesAnfang();
    bool liesAttribut();
    bool liesAttributwert();
    bool meldeAnfang(std::string_view name, bool leer);
    bool liesEnde();
    bool liesText();
    bool liesVerweis(std::string& ziel);
    bool ueberspringeAnweisung();
    bool ueberspringeKommentar();
    bool ueberspringeCdata();
    void ueberspringeLeerraum();
    bool nimm(std::string_view zeichen);
    std::string_view nimmName();
    void meldeText(const char* von, const char* bis);
    [[nodiscard]] std::string_view rest() const { return {stelle_, static_cast<std::size_t>(ende_ - stelle_)}; }

    /// More attributes in a tag, or elements in each other, than any track has. Within these limits no search in a tag
    /// grows beyond reason, and expat stays far from its limit of memory.
    static constexpr std::size_t kMeisteAttribute = 32;
    static constexpr std::size_t kGroessteTiefe = 256;

    const char* stelle_;  // what comes next; the null behind the document ends every search
    const char* ende_;
    bool kodierungEgal_;
    XmlEmpfaenger& empfaenger_;
    const char* ereignis_ = stelle_;  // where what is being reported begins
    const char* gezaehltBis_;         // how far line breaks are counted
    std::size_t zeile_ = 1;
    bool willText_ = false;
    std::vector<std::string_view> offen_;                      // the names of the open elements
    std::vector<XmlAttribut> attribute_;                       // of the tag that is being read
    std::array<std::string, kMeisteAttribute> umgeschrieben_;  // their values that are not as in the file
    std::string zeichen_;                                      // what a reference in text stands for
};

}  // namespace spurkiste
