#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "sicht/Filter.h"
#include "sicht/Spalten.h"
#include "track/GpxMetadaten.h"
#include "track/GpxSportart.h"

namespace spurkiste {

/// The texts of the main view in one language, and the language itself. A value.
struct Ansichtstexte {
    std::string sprache;                               ///< BCP 47; decides order, letter case and search
    std::array<std::string, 15> sportarten;            ///< labels in the order of GpxSportart::allCases()
    std::array<std::string, kSpalten.size()> spalten;  ///< column titles
    JeFilter<std::string> alle;                        ///< of each filter the choice of everything
    std::string routen;                                ///< the word after the number in the header, as written
    std::string dateien;                               ///< the word after the number in the status line
    std::string gesamt;                                ///< the word after the length in the status line

    /// The texts of the current language. Main thread, as it asks AppSprache.
    [[nodiscard]] static Ansichtstexte aktuelle();

    /// The text to show for a record's sport, given the sport that the file names: its label, else the file's own
    /// text, else the label of the suggestion, else an en dash. Lives as long as the record and these texts.
    [[nodiscard]] std::string_view sportAnzeige(const GpxMetadaten& eintrag,
                                                const std::optional<GpxSportart>& geschrieben) const;

    friend bool operator==(const Ansichtstexte&, const Ansichtstexte&) = default;
};

}  // namespace spurkiste
