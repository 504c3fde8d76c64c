#pragma once

#include <QColor>
#include <optional>

#include "track/GpxSportart.h"

namespace spurkiste {

/// The fixed palette of the application: warm paper, ink, gold, and a colour family per group of sports. All colours
/// are opaque sRGB. A view takes its colours from here and from nowhere else. Any thread.
class KistePapier {
    static consteval ushort teil(double wert) {
        // NOLINTNEXTLINE(bugprone-incorrect-roundings): lround is not there at compile time; nothing is negative
        return static_cast<ushort>(wert * 0xffff + 0.5);
    }
    /// An opaque colour from its red, green and blue, each of 0 to 1, kept with 16 bits each.
    static consteval QColor farbe(double r, double g, double b) {
        return QColor(QColor::Rgb, 0xffff, teil(r), teil(g), teil(b));
    }

  public:
    KistePapier() = delete;

    static const QColor buehne;      ///< behind the content of window, panel and dialog
    static const QColor karte;       ///< cards, tiles, table, status line
    static const QColor eierschale;  ///< sketch card, circle of the empty panel
    static const QColor kapsel;      ///< fill of an inactive capsule
    static const QColor tinte;       ///< primary text
    static const QColor tinteLeise;  ///< secondary text
    static const QColor gravur;      ///< tertiary text and quiet icons
    static const QColor linie;       ///< hairlines, dividers, borders
    static const QColor gold;        ///< accent, and the colour of an unknown sport
    static const QColor goldDunkel;  ///< captions and their icons
    static const QColor orange;
    static const QColor gruen;  ///< also the start marker
    static const QColor violett;
    static const QColor rot;  ///< also the finish marker and notices
    static const QColor blau;
    static const QColor cyan;
    static const QColor auswahlband;  ///< laid over a selected row; the one colour that is not opaque

    /// The colour of a sport, or of no sport.
    [[nodiscard]] static QColor sportFarbe(const std::optional<GpxSportart>& art);

    /// The colour with an opacity of 0 to 1.
    [[nodiscard]] static QColor mitDeckkraft(QColor farbe, double deckkraft);
};

inline constexpr QColor KistePapier::buehne = farbe(0.973, 0.969, 0.969);
inline constexpr QColor KistePapier::karte = farbe(0.988, 0.984, 0.976);
inline constexpr QColor KistePapier::eierschale = farbe(0.925, 0.914, 0.886);
inline constexpr QColor KistePapier::kapsel = farbe(0.922, 0.91, 0.882);
inline constexpr QColor KistePapier::tinte = farbe(0.114, 0.114, 0.122);
inline constexpr QColor KistePapier::tinteLeise = farbe(0.44, 0.44, 0.46);
inline constexpr QColor KistePapier::gravur = farbe(0.55, 0.55, 0.57);
inline constexpr QColor KistePapier::linie = farbe(0.84, 0.82, 0.77);
inline constexpr QColor KistePapier::gold = farbe(0.78, 0.55, 0.08);
inline constexpr QColor KistePapier::goldDunkel = farbe(0.62, 0.47, 0.18);
inline constexpr QColor KistePapier::orange = farbe(0.953, 0.525, 0.082);
inline constexpr QColor KistePapier::gruen = farbe(0.243, 0.62, 0.25);
inline constexpr QColor KistePapier::violett = farbe(0.576, 0.22, 0.835);
inline constexpr QColor KistePapier::rot = farbe(0.78, 0.145, 0.145);
inline constexpr QColor KistePapier::blau = farbe(0.129, 0.396, 0.729);
inline constexpr QColor KistePapier::cyan = farbe(0.063, 0.502, 0.616);
inline constexpr QColor KistePapier::auswahlband = QColor(QColor::Rgb, teil(0.32), teil(0.57), teil(0.81), teil(0.96));

}  // namespace spurkiste
