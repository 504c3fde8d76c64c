#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace spurkiste {

class XmlBytestrom;

/// One attribute of an element start.
struct XmlAttribut {
    std::string_view name;  ///< as written, prefix included
    std::string_view wert;  ///< UTF-8, references replaced, line breaks and tabs made blanks

    friend bool operator==(const XmlAttribut&, const XmlAttribut&) = default;
};

/// The attributes of one element start in the order of the file, no name twice. Looks at what somebody else holds:
/// valid during the call that hands it over.
class XmlAttribute {
  public:
    explicit XmlAttribute(std::span<const XmlAttribut> alle) : alle_(alle) {}

    /// The value of the attribute whose name, as written in the file, is exactly this one.
    [[nodiscard]] std::optional<std::string_view> wert(std::string_view name) const {
        for (const XmlAttribut& attribut : alle_) {
            if (attribut.name == name) {
                return attribut.wert;
            }
        }
        return std::nullopt;
    }

    [[nodiscard]] std::span<const XmlAttribut> alle() const { return alle_; }

  private:
    std::span<const XmlAttribut> alle_;
};

/// Why a document was not read to its end.
enum class XmlFehler {
    keiner,
    endeFehlt,           ///< the bytes end before the document does
    falschesEnde,        ///< an end tag of another element
    unbekannteEntitaet,  ///< a reference to an entity that was never declared
    rest,                ///< something behind the document's end
    zuViel,              ///< it would take more memory or time than any track
    falschesZeichen,     ///< anything else that is no XML
};

/// Hears what an XmlLauf finds, in document order. Whatever it throws ends the run and comes out of it.
class XmlEmpfaenger {
  public:
    XmlEmpfaenger() = default;
    XmlEmpfaenger(const XmlEmpfaenger&) = delete;
    XmlEmpfaenger& operator=(const XmlEmpfaenger&) = delete;
    virtual ~XmlEmpfaenger() = default;

    /// An element begins. The name is as written, prefix included, UTF-8. Returns whether the text up to the next
    /// element start or end is wanted: not reporting it is a good part of the speed.
    virtual bool anfang(std::string_view name, const XmlAttribute& attribute) = 0;

    /// A piece of text, UTF-8, entities replaced; an element's text may come in many. CDATA sections are left out.
    virtual void text(std::string_view stueck) = 0;

    /// The innermost open element ends. Returns whether the text that follows is wanted.
    virtual bool ende() = 0;

    /// The walk is over; the line is that of the error or of the document's end.
    virtual void schluss(XmlFehler /*fehler*/) {}

  protected:
    /// The line, from 1, where what is being reported begins. Only during one of the calls above; costs time.
    [[nodiscard]] std::size_t zeile() const { return zeile_(); }

  private:
    friend class XmlLauf;
    std::function<std::size_t()> zeile_;
};

/// Where something stands in a document: bytes `von` up to but without `bis`.
struct XmlBereich {
    std::size_t von = 0;
    std::size_t bis = 0;

    friend bool operator==(const XmlBereich&, const XmlBereich&) = default;
};

/// How wide the characters of a document's markup are, for whoever writes some into it. All encodings that are read
/// have ASCII characters in one byte of their own value, except for UTF-16.
enum class XmlBreite { einByte, utf16le, utf16be };

/// Hears where a document's elements stand, in document order. Elements that only exist in the text of an entity
/// stand nowhere and are left out. Whatever it throws ends the run and comes out of it.
class XmlOrtung {
  public:
    XmlOrtung() = default;
    XmlOrtung(const XmlOrtung&) = delete;
    XmlOrtung& operator=(const XmlOrtung&) = delete;
    virtual ~XmlOrtung() = default;

    /// The walk begins, in a document whose characters are so wide.
    virtual void beginn(XmlBreite breite) = 0;

    /// An element begins; its name as written, UTF-8. `schild` is its start tag, or the whole element when that
    /// is `leer`, one tag for start and end; `wortlaut` are the tag's bytes.
    virtual void anfang(std::string_view name, XmlBereich schild, std::string_view wortlaut, bool leer) = 0;
    /// The innermost open element ends. `schild` is its end tag; empty when it has none.
    virtual void ende(XmlBereich schild) = 0;
};

/// A document that can be read from any place on: fills the buffer from a byte on and returns how many bytes came;
/// fewer than asked mean the end. Whatever it throws comes out of the function that it was given to.
using XmlInhalt = std::function<std::size_t(std::uint64_t stelle, std::span<char> puffer)>;

/// A document in memory, which must live as long.
[[nodiscard]] XmlInhalt xmlInhalt(std::string_view dokument);

/// Which readers an XmlLauf tries. The outcome is the same.
enum class XmlWeg {
    eiligVoran,  ///< a fast one for ordinary documents, and expat for those that it does not take
    nurExpat,    ///< to measure and test against
};

/// Walks through XML documents, as far as they are well-formed. Namespaces are not looked at, external entities and
/// DTDs never opened, and what a hostile document can make the XML library use is bounded in memory and time.
/// Holds a buffer that the next document uses again: keep one object per thread.
class XmlLauf {
  public:
    /// Fills the buffer and returns how many bytes came; fewer than asked mean the end.
    using Quelle = std::function<std::size_t(std::span<char>)>;

    /// Gives a receiver that has heard nothing yet. It is asked for a second one when the document turns out to be none
    /// for the fast reader: what the first one heard is then void.
    using Empfang = std::function<XmlEmpfaenger&()>;

    /// Documents up to this size are held in memory whole, since the XML library then saves itself an eighth of the
    /// work and the fast reader can begin anew. Larger ones, which no recorder writes in a day, pass through in small
    /// pieces.
    static constexpr std::size_t kAmStueck = std::size_t{8} << 20U;

    /// Reads at most `groesse` bytes, in pieces when they are more than `amStueck`, and reports to a receiver until
    /// the document ends or its first error; all that was reported until then counts.
    /// The encoding is that of a byte order mark or of UTF-16's zero bytes, else the declared one (UTF-8 and every
    /// encoding of one byte per character), else UTF-8. White space before the XML declaration is skipped.
    /// Returns whether the fast reader did it.
    bool lies(const Quelle& quelle, std::size_t groesse, const Empfang& empfang, std::size_t amStueck = kAmStueck,
              XmlWeg weg = XmlWeg::eiligVoran);

    /// Walks through a document that must be well-formed from its first byte to its last, and reports where its
    /// elements stand. Encodings and white space before the XML declaration as in lies(). False when it is not
    /// well-formed, or goes beyond what a hostile document may use; what was reported until then is void. The
    /// document passes through in small pieces, however large it is.
    [[nodiscard]] static bool orte(const XmlInhalt& dokument, XmlOrtung& empfaenger);

  private:
    class Zeilen;

    std::span<char> puffer(std::size_t groesse);
    static bool liesEilig(const XmlBytestrom& strom, std::span<const char> dokument, XmlEmpfaenger& empfaenger);

    std::vector<char> puffer_;
};

}  // namespace spurkiste
