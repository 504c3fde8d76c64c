#pragma once

#include <QColor>
#include <QPainter>
#include <QPixmap>
#include <QRectF>
#include <QRgb>
#include <string_view>
#include <vector>

namespace spurkiste {

/// The few small pictures that a list paints over and over, at hand without making a key text for each look-up.
/// Bound to the GUI thread.
class Bildvorrat {
  public:
    /// What a picture shows and how large it is.
    struct Schluessel {
        std::string_view was;  ///< of static lifetime
        double breite = 0.0;   ///< logical pixels
        QRgb farbe = 0;
        double verhaeltnis = 1.0;  ///< device pixels per logical one

        friend bool operator==(const Schluessel&, const Schluessel&) = default;
    };

    /// The picture, made by `mache` when it is not there. Valid until the next call.
    template <typename Mache>
    const QPixmap& hole(const Schluessel& schluessel, Mache mache) {
        if (const QPixmap* bild = suche(schluessel)) {
            return *bild;
        }
        return merke(schluessel, mache());
    }

    /// The icon centred in `kasten`, snapped to whole device pixels, as Symbole::zeichne() does it. `name` of static
    /// lifetime.
    void zeichneSymbol(QPainter& maler, const QRectF& kasten, std::string_view name, const QColor& farbe);

  private:
    struct Bild {
        Schluessel schluessel;
        QPixmap bild;
    };

    [[nodiscard]] const QPixmap* suche(const Schluessel& schluessel) const;
    const QPixmap& merke(const Schluessel& schluessel, QPixmap bild);

    std::vector<Bild> bilder_;  // a few dozen; comparing them in a row beats hashing
};

}  // namespace spurkiste
