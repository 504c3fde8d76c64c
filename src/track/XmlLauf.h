#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace spurkiste {

/// The attributes of one element start; valid during the call that hands them over.
class XmlAttribute {
  public:
    /// From name, value, name, value and so on, closed by a null.
    explicit XmlAttribute(const char* const* paare) : paare_(paare) {}

    /// The value of the attribute whose name, as written in the file, is exactly this one. UTF-8, entities replaced.
    [[nodiscard]] std::optional<std::string_view> wert(std::string_view name) const;

  private:
    const char* const* paare_;
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
};

/// One walk through an XML document, as far as it is well-formed. Namespaces are not looked at, external entities and
/// DTDs never opened, and what a hostile document can make the XML library use is bounded in memory and time.
/// Holds a buffer that the next document uses again: keep one object per thread.
class XmlLauf {
  public:
    /// Fills the buffer and returns how many bytes came; fewer than asked mean the end.
    using Quelle = std::function<std::size_t(std::span<char>)>;

    /// Documents up to this size are held in memory whole, since the XML library then saves itself an eighth of the
    /// work. Larger ones, which no recorder writes in a day, pass through in small pieces.
    static constexpr std::size_t kAmStueck = std::size_t{8} << 20U;

    /// Reads at most `groesse` bytes, in pieces when they are more than `amStueck`, and reports to `empfaenger` until
    /// the document ends or its first error; which of both is not told, since all that was reported counts.
    /// The encoding is that of a byte order mark or of UTF-16's zero bytes, else the declared one (UTF-8 and every
    /// encoding of one byte per character), else UTF-8. White space before the XML declaration is skipped.
    void lies(const Quelle& quelle, std::size_t groesse, XmlEmpfaenger& empfaenger, std::size_t amStueck = kAmStueck);

  private:
    std::span<char> puffer(std::size_t groesse);

    std::vector<char> puffer_;
};

}  // namespace spurkiste
