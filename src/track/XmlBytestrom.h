#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "track/XmlLauf.h"

namespace spurkiste {

/// Takes the bytes from a source, looks at the first ones, and hands out what belongs to the document: no byte order
/// mark and no white space before the declaration, which expat would reject. Bound to one thread.
class XmlBytestrom {
  public:
    /// Takes at most `groesse` bytes from the source, the first of them at once. The source must live as long.
    XmlBytestrom(const XmlLauf::Quelle& quelle, std::size_t groesse);

    /// The encoding that overrules the declaration; null when the declaration is to be believed.
    [[nodiscard]] const char* kodierung() const { return kodierung_; }

    /// Whether the document is in UTF-8 unless its declaration says otherwise and may.
    [[nodiscard]] bool kannUtf8Sein() const { return breite_ == 1; }

    /// How many bytes lie before the document: byte order mark and white space.
    [[nodiscard]] std::size_t vorlauf() const { return vorlauf_; }

    /// How many lines end in the white space that was passed over.
    [[nodiscard]] std::size_t uebersprungeneZeilen() const { return uebersprungeneZeilen_; }

    /// How wide the characters are.
    [[nodiscard]] XmlBreite breite() const;

    /// Fills the buffer; fewer bytes than asked mean the end.
    std::size_t lies(std::span<char> ziel);

  private:
    [[nodiscard]] std::string_view blick() const { return {kopf_.data() + von_, bis_ - von_}; }
    std::size_t hole(std::span<char> ziel);
    void fuelle();
    void erkenneBreite();
    void erkenneUtf16();
    bool ueberspringeLeerraum();

    const XmlLauf::Quelle& quelle_;
    std::size_t vorrat_;  // bytes that may still be taken from the source
    bool erschoepft_ = false;
    std::size_t vorlauf_ = 0;
    std::size_t uebersprungeneZeilen_ = 0;
    std::array<char, 1024> kopf_{};
    std::size_t von_ = 0;
    std::size_t bis_ = 0;
    const char* kodierung_ = nullptr;
    std::size_t breite_ = 1;         // bytes of a blank
    std::size_t zeichenStelle_ = 0;  // which of them is not zero
};

}  // namespace spurkiste
