#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <string_view>

#include "ui/teile/Bildvorrat.h"
#include "ui/teile/Schriftsatz.h"

namespace spurkiste {

/// Draws the small coloured capsule that shows a sport: its icon, its text, a magic wand when the sport is a suggestion
/// or missing, a chevron. It paints where it is told and answers how wide that gets; clicks are its user's business.
/// Takes the fonts of the language it is made in. Bound to the GUI thread.
class SportKapsel {
  public:
    static constexpr double kHoehe = 25.0;  ///< logical pixels

    struct Inhalt {
        std::u16string_view text;
        std::string_view symbol;  ///< name of the icon, of static lifetime; empty for none
        QColor farbe;             ///< of the sport
        bool ausDatei = false;    ///< whether the file names a sport, known or not
    };

    SportKapsel();

    /// How wide the capsule gets, in logical pixels. A text too long for `hoechstens` is shortened; icons never are.
    [[nodiscard]] double breite(const Inhalt& inhalt, double hoechstens);

    /// Draws the capsule, kHoehe high; `links` and `oben` are snapped to device pixels.
    void zeichne(QPainter& maler, double links, double oben, const Inhalt& inhalt, double hoechstens);

  private:
    Schriftsatz satz_;
    Bildvorrat bilder_;
};

}  // namespace spurkiste
