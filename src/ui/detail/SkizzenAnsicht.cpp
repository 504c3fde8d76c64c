#include "ui/detail/SkizzenAnsicht.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

#include "sicht/Deckung.h"
#include "sicht/SkizzenGeometrie.h"
#include "ui/teile/KistePapier.h"
#include "ui/teile/Papier.h"
#include "ui/teile/Schatten.h"
#include "ui/teile/Schrift.h"
#include "ui/teile/Schriftsatz.h"
#include "ui/teile/Symbole.h"

namespace spurkiste {

namespace {

constexpr double kRadius = 17;
constexpr double kInnen = 10;  // from the card's edge to the drawing surface

/// Lays a colour over an opaque or premultiplied pixel, 0 to 255 of it.
void lege(QRgb& pixel, QRgb farbe, int anteil) {
    constexpr int ganz = 255;
    const auto mische = [&](int neu, int alt) { return (neu * anteil + alt * (ganz - anteil) + ganz / 2) / ganz; };
    pixel = qRgba(mische(qRed(farbe), qRed(pixel)), mische(qGreen(farbe), qGreen(pixel)),
                  mische(qBlue(farbe), qBlue(pixel)), mische(ganz, qAlpha(pixel)));
}

/// What the pens of a sketch cover of a picture.
struct Striche {
    Deckung saum;
    Deckung linien;
    Deckung punkte;
};

/// The lines with their seams, and the lone points, on a picture of this size in device pixels.
Striche ziehe(const SkizzenGeometrie& geometrie, const QSize& groesse, double verhaeltnis) {
    // Logical pixels.
    constexpr double saumbreite = 5;
    constexpr double linienbreite = 2.4;
    constexpr double punktdurchmesser = 4;
    const auto stift = [&](double breite) {
        return Deckung(groesse.width(), groesse.height(), breite / 2 * verhaeltnis);
    };
    Striche striche{stift(saumbreite), stift(linienbreite), stift(punktdurchmesser)};
    for (std::size_t nummer = 0; nummer < geometrie.linien().linien(); ++nummer) {
        const auto linie = geometrie.linien().linie(nummer);
        for (std::size_t i = 0; i < linie.size(); ++i) {
            const auto ort = geometrie.bild(linie[i]);
            const SkizzenGeometrie::Punkt pixel{verhaeltnis * (ort.x + kInnen), verhaeltnis * (ort.y + kInnen)};
            if (linie.size() == 1) {
                striche.punkte.setzeAn(pixel);
            } else if (i == 0) {
                striche.saum.setzeAn(pixel);
                striche.linien.setzeAn(pixel);
            } else {
                striche.saum.fuehre(pixel);
                striche.linien.fuehre(pixel);
            }
        }
    }
    return striche;
}

/// Lays golden lines on light seams into the drawing surface of the picture.
void lege(QImage& bild, const Striche& striche) {
    constexpr double saumDeckkraft = 0.84;
    const QRgb weiss = qRgb(255, 255, 255);
    const QRgb gold = KistePapier::gold.rgb();
    const auto rand = static_cast<std::size_t>(std::ceil(kInnen * bild.devicePixelRatio()));
    const std::size_t ende = std::max(static_cast<std::size_t>(bild.width()), rand) - rand;
    for (int y = static_cast<int>(rand); y < bild.height() - static_cast<int>(rand); ++y) {
        auto* ziel = reinterpret_cast<QRgb*>(bild.scanLine(y));
        const auto unten = striche.saum.zeile(y);
        const auto oben = striche.linien.zeile(y);
        const auto auchOben = striche.punkte.zeile(y);
        for (std::size_t x = rand; x < ende; ++x) {
            const int deckend = std::max(oben[x], auchOben[x]);
            if (unten[x] > 0 && deckend < 255) {
                lege(ziel[x], weiss, static_cast<int>(saumDeckkraft * unten[x] + 0.5));
            }
            if (deckend > 0) {
                lege(ziel[x], gold, deckend);
            }
        }
    }
}

/// A dot, if there is one, with the painter's pen around it.
void tupfe(QPainter& maler, const std::optional<SkizzenGeometrie::Punkt>& mitte, double durchmesser,
           const QColor& farbe) {
    if (mitte) {
        maler.setBrush(farbe);
        maler.drawEllipse(QPointF(mitte->x, mitte->y), durchmesser / 2, durchmesser / 2);
    }
}

}  // namespace

SkizzenAnsicht::SkizzenAnsicht(QWidget* eltern) : QWidget(eltern) {
    setFixedHeight(kHoehe);
    setToolTip(QStringLiteral("Start grün, Ziel rot"));
}

void SkizzenAnsicht::zeige(const Eintrag& eintrag) {
    if (eintrag_ != eintrag) {
        eintrag_ = eintrag;
        setAccessibleName(eintrag && eintrag->rundkurs ? QStringLiteral("RUNDKURS") : QStringLiteral("STRECKE"));
        setAccessibleDescription(toolTip());
        bild_ = {};
        update();
    }
}

void SkizzenAnsicht::zeichneSchatten(QPainter& maler, const QRect& karte) {
    Schatten{KistePapier::mitDeckkraft(Qt::black, 0.05), 10, 3}.zeichne(maler, karte, kRadius);
}

void SkizzenAnsicht::paintEvent(QPaintEvent* /*ereignis*/) {
    const double verhaeltnis = devicePixelRatioF();
    const QSize geraet = (QSizeF(size()) * verhaeltnis).toSize();
    if (bild_.size() != geraet) {  // scrolling need not paint it anew
        bild_ = QImage(geraet, QImage::Format_ARGB32_Premultiplied);
        bild_.setDevicePixelRatio(verhaeltnis);
        male();
    }
    QPainter(this).drawImage(0, 0, bild_);
}

void SkizzenAnsicht::male() {
    const QRectF karte(rect());
    bild_.fill(Qt::transparent);
    {
        QPainter maler(&bild_);
        papier::form(maler, karte, kRadius, KistePapier::eierschale,
                     KistePapier::mitDeckkraft(KistePapier::gold, 0.48));
    }
    if (!eintrag_) {
        return;
    }
    const QRectF flaeche = karte.adjusted(kInnen, kInnen, -kInnen, -kInnen);
    const auto geometrie = SkizzenGeometrie::berechne(*eintrag_, flaeche.width(), flaeche.height());
    lege(bild_, ziehe(geometrie, bild_.size(), bild_.devicePixelRatio()));
    QPainter maler(&bild_);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.save();
    maler.setClipRect(flaeche);
    maler.translate(flaeche.topLeft());
    maler.setPen(Qt::NoPen);
    tupfe(maler, geometrie.fleck(), 6, KistePapier::gold);
    maler.setPen(QPen(Qt::white, 1));
    tupfe(maler, geometrie.start(), 8, KistePapier::gruen);
    tupfe(maler, geometrie.ende(), 8, KistePapier::rot);
    maler.restore();
    maleMarke(maler);
}

void SkizzenAnsicht::maleMarke(QPainter& maler) const {
    constexpr double einzug = 12;
    constexpr double hoehe = 25;
    constexpr double rand = 10;
    constexpr double abstand = 6;
    constexpr double symbol = 13;
    Schriftsatz satz(Schrift::mach(9.5, QFont::Bold, 1.3));
    const double textbreite = satz.breite(accessibleName());
    const QRectF kapsel(einzug, einzug, 2 * rand + symbol + abstand + textbreite, hoehe);
    papier::form(maler, kapsel, hoehe / 2, KistePapier::mitDeckkraft(KistePapier::karte, 0.88), Qt::transparent);
    Symbole::zeichne(maler, QRectF(kapsel.left() + rand, kapsel.center().y() - symbol / 2, symbol, symbol), "map",
                     KistePapier::goldDunkel);
    maler.setPen(KistePapier::goldDunkel);
    satz.zeichne(maler, QRectF(kapsel.left() + rand + symbol + abstand, kapsel.top(), textbreite, hoehe), Qt::AlignLeft,
                 accessibleName());
}

}  // namespace spurkiste
