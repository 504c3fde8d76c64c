#pragma once

#include <cstddef>
#include <exception>
#include <memory>
#include <string_view>

#include <expat.h>

#include "track/XmlLauf.h"

namespace spurkiste {

/// An expat parser within our limits, for whoever hears its reports. No exception may pass through expat: it waits
/// until expat has returned. Bound to one thread.
class XmlExpat {
  public:
    XmlExpat(const XmlExpat&) = delete;
    XmlExpat& operator=(const XmlExpat&) = delete;

    /// Why the document ends where the parser is.
    [[nodiscard]] XmlFehler fehler() const;

    /// The line, from 1, of what is being reported or of the error.
    [[nodiscard]] std::size_t zeile() const;

  protected:
    /// `kodierung` overrules the document's declaration unless it is null; `selbst` goes to the handlers.
    /// Throws std::bad_alloc.
    XmlExpat(const char* kodierung, void* selbst);
    ~XmlExpat() = default;

    [[nodiscard]] XML_Parser parser() const { return parser_.get(); }

    /// Where in the parsed bytes the thing being reported stands; inside an entity's text, that is its reference.
    [[nodiscard]] XmlBereich stelle() const;

    /// The bytes that stand there. Only for what is parsed in XML_GetBuffer(); valid until the handler returns.
    [[nodiscard]] std::string_view wortlaut() const;

    /// Calls `meldung`. What it throws stops the parser and comes out of the next wirfGemerktes().
    template <typename Meldung>
    void melde(Meldung meldung) {
        try {
            meldung();
        } catch (...) {
            merke(std::current_exception());
        }
    }

    /// To be called as soon as expat has returned. Throws also std::bad_alloc, when the system had no more memory.
    void wirfGemerktes();

  private:
    void merke(std::exception_ptr ausnahme);

    struct Ende {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    std::unique_ptr<XML_ParserStruct, Ende> parser_;
    std::exception_ptr gemerkt_;
};

}  // namespace spurkiste
