#include "base/Namensordnung.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

#include <unicode/coll.h>
#include <unicode/locid.h>

#include "base/Text.h"

namespace spurkiste::text {

namespace {

icu::Locale gebiet(std::string_view sprache) {
    UErrorCode fehler = U_ZERO_ERROR;
    const icu::Locale ort = icu::Locale::forLanguageTag(sprache, fehler);
    return U_SUCCESS(fehler) && ort.isBogus() == 0 ? ort : icu::Locale::getRoot();
}

}  // namespace

struct Namensordnung::Regeln {
    std::unique_ptr<icu::Collator> vergleich;  // absent only when ICU's data are: then the bytes themselves decide
};

Namensordnung::Namensordnung(std::string_view sprache) {
    UErrorCode fehler = U_ZERO_ERROR;
    std::unique_ptr<icu::Collator> vergleich(icu::Collator::createInstance(gebiet(sprache), fehler));
    if (vergleich) {
        vergleich->setStrength(icu::Collator::SECONDARY);
        vergleich->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_ON, fehler);
    }
    regeln_ = std::make_unique<const Regeln>(Regeln{std::move(vergleich)});
}

Namensordnung::Namensordnung(Namensordnung&& andere) noexcept = default;
Namensordnung& Namensordnung::operator=(Namensordnung&& andere) noexcept = default;
Namensordnung::~Namensordnung() = default;

std::string Namensordnung::schluessel(std::string_view text) const {
    if (!regeln_->vergleich) {
        return std::string(text);
    }
    const std::u16string zeichen = utf16(text);
    const auto schreibe = [&](char* ziel, std::size_t platz) {
        // NOLINTBEGIN(cppcoreguidelines-pro-type-reinterpret-cast): a sort key is bytes, and so is a string
        const auto bytes =
            regeln_->vergleich->getSortKey(zeichen.data(), static_cast<std::int32_t>(zeichen.size()),
                                           reinterpret_cast<std::uint8_t*>(ziel), static_cast<std::int32_t>(platz));
        // NOLINTEND(cppcoreguidelines-pro-type-reinterpret-cast)
        return static_cast<std::size_t>(std::max(bytes, 1)) - 1;  // without the closing zero
    };
    std::array<char, 256> puffer{};  // of the usual name, so that the key takes no more memory than it needs
    const auto bytes = schreibe(puffer.data(), puffer.size());
    if (bytes < puffer.size()) {
        return {puffer.data(), bytes};
    }
    std::string ergebnis(bytes + 1, '\0');
    schreibe(ergebnis.data(), ergebnis.size());
    ergebnis.pop_back();
    return ergebnis;
}

}  // namespace spurkiste::text
