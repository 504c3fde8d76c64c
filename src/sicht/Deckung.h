#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sicht/SkizzenGeometrie.h"

namespace spurkiste {

/// How much of each pixel of a picture the strokes of a round pen cover. Where strokes lie over each other the stronger
/// coverage counts, so they melt into one shape, however many they are, and each takes only as long as it is: a path of
/// the toolkit takes seconds for a hundred thousand points. Distances are in pixels, y grows downwards. One thread at a
/// time.
class Deckung {
  public:
    /// For a picture of this size, of which nothing is covered yet; `radius` is the pen's.
    Deckung(int breite, int hoehe, double radius);

    /// Sets the pen down: a dot, from which a line may go on. Coordinates must be finite.
    void setzeAn(const SkizzenGeometrie::Punkt& ort);

    /// Leads the pen on in a straight line from where it was; it must have been set down. Deviates by less than an
    /// eighth of a pixel: places that follow closer than that do not count.
    void fuehre(const SkizzenGeometrie::Punkt& ort);

    /// The coverage of a row's pixels, 255 where it is complete.
    [[nodiscard]] std::span<const std::uint8_t> zeile(int y) const;

  private:
    void schneideStempel();
    /// Whether the pen leaves a trace in the picture when its middle is there.
    [[nodiscard]] bool erreicht(const SkizzenGeometrie::Punkt& ort) const;
    void stemple(const SkizzenGeometrie::Punkt& ort);
    void verbinde(const SkizzenGeometrie::Punkt& a, const SkizzenGeometrie::Punkt& b);

    double radius_;
    int breite_;
    int hoehe_;
    double schrittweite_;  // of the pen along a line
    int halb_;             // of a stamp; the pen's middle may be so far outside of the picture
    int stempelbreite_;
    int schritt_;                        // from row to row
    std::vector<std::uint8_t> bild_;     // with room around the picture, so that no stamp reaches beyond
    std::vector<std::uint8_t> stempel_;  // the pen's coverage, row by row
    SkizzenGeometrie::Punkt stift_;      // where the pen is
    int gestempeltX_ = -1;               // where the last stamp is, in parts of a pixel
    int gestempeltY_ = -1;
};

}  // namespace spurkiste
