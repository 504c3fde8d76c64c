#include "ui/teile/Bildvorrat.h"

#include <algorithm>
#include <utility>

#include "ui/teile/Symbole.h"

namespace spurkiste {

void Bildvorrat::zeichneSymbol(QPainter& maler, const QRectF& kasten, std::string_view name, const QColor& farbe) {
    const double verhaeltnis = maler.device()->devicePixelRatioF();
    const double seite = std::min(kasten.width(), kasten.height());
    const auto mache = [&] { return Symbole::bild(name, seite, farbe, verhaeltnis); };
    Symbole::zeichne(maler, kasten, seite, hole({name, seite, farbe.rgba(), verhaeltnis}, mache));
}

const QPixmap* Bildvorrat::suche(const Schluessel& schluessel) const {
    const auto platz =
        std::find_if(bilder_.begin(), bilder_.end(), [&](const Bild& bild) { return bild.schluessel == schluessel; });
    return platz == bilder_.end() ? nullptr : &platz->bild;
}

const QPixmap& Bildvorrat::merke(const Schluessel& schluessel, QPixmap bild) {
    // Only a long walk through odd names or screens fills it; then starting over is cheap.
    constexpr std::size_t kHoechstens = 256;
    if (bilder_.size() >= kHoechstens) {
        bilder_.clear();
    }
    return bilder_.emplace_back(Bild{schluessel, std::move(bild)}).bild;
}

}  // namespace spurkiste
