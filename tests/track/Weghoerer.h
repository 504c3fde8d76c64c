#pragma once

#include <string_view>

#include "track/XmlLauf.h"

namespace spurkiste {

/// Hears where elements stand and forgets it.
class Weghoerer final : public XmlOrtung {
  public:
    void beginn(XmlBreite /*breite*/) override {}
    void anfang(std::string_view /*name*/, XmlBereich /*schild*/, std::string_view /*wortlaut*/,
                bool /*leer*/) override {}
    void ende(XmlBereich /*schild*/) override {}
};

}  // namespace spurkiste
